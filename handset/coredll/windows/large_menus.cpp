#include "handset/coredll/windows/large_menus.h"

#include <algorithm>
#include <iterator>

#include "handset/base/module_edge.h"
#include "handset/coredll/windows/large_font.h"

namespace coredll {
namespace {

// Above and below an entry's letters, at the usual size.
constexpr int kAround_px = 3;
constexpr UINT kNoText = MFT_BITMAP | MFT_OWNERDRAW | MFT_SEPARATOR;

// Of the menu that is open on this thread.
thread_local CLargeMenus* t_menus = nullptr;

LRESULT CALLBACK MenuOwnerProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) try {
    CLargeMenus* const menus = t_menus;
    if (menus == nullptr) return DefWindowProcW(window, message, wParam, lParam);
    if (message == WM_MEASUREITEM && menus->OnMeasure(*reinterpret_cast<MEASUREITEMSTRUCT*>(lParam)))
        return TRUE;
    if (message == WM_DRAWITEM && menus->OnDraw(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam)))
        return TRUE;
    const LRESULT answer = menus->PassOn(window, message, wParam, lParam);
    // What the program has put there just now.
    if (message == WM_INITMENUPOPUP && t_menus == menus) menus->OnPopup(reinterpret_cast<HMENU>(wParam));
    return answer;
} catch (...) {
    return handset::EdgeAnswer<LRESULT>();
}

MENUITEMINFOW Asked(UINT mask) {
    MENUITEMINFOW info = {};
    info.cbSize = sizeof info;
    info.fMask = mask;
    return info;
}

std::wstring TextAt(HMENU menu, UINT position) {
    wchar_t text[256] = L"";
    GetMenuStringW(menu, position, text, static_cast<int>(std::size(text)), MF_BYPOSITION);
    return text;
}

int MarkWidth(int scale) {
    return scale * GetSystemMetrics(SM_CXMENUCHECK);
}

// One of the system's signs, in the colours of `dc`. They come in black on white.
void DrawSign(HDC dc, const RECT& place, UINT sign) {
    const int width = place.right - place.left, height = place.bottom - place.top;
    const handset::OwnedMemoryDC from(CreateCompatibleDC(dc));
    const handset::OwnedBitmap bitmap(CreateBitmap(width, height, 1, 1, nullptr));
    const handset::CSelectedObject selected(from.get(), bitmap.get());
    RECT whole = {0, 0, width, height};
    DrawFrameControl(from.get(), &whole, DFC_MENU, sign);
    BitBlt(dc, place.left, place.top, width, height, from.get(), 0, 0, SRCCOPY);
}

struct Colours {
    int ground, text;
};
Colours ColoursOf(UINT state) {
    if ((state & (ODS_GRAYED | ODS_DISABLED)) != 0)
        return {(state & ODS_SELECTED) != 0 ? COLOR_HIGHLIGHT : COLOR_MENU, COLOR_GRAYTEXT};
    if ((state & ODS_SELECTED) != 0) return {COLOR_HIGHLIGHT, COLOR_HIGHLIGHTTEXT};
    return {COLOR_MENU, COLOR_MENUTEXT};
}

RECT InTheMiddle(LONG left, const RECT& row, int size) {
    const LONG top = (row.top + row.bottom - size) / 2;
    return {left, top, left + size, top + size};
}

}  // namespace

CLargeMenus::CLargeMenus(HMENU menu, HWND window, int scale) : scale_(scale) {
    if (scale <= 1 || t_menus != nullptr || GetWindowThreadProcessId(window, nullptr) != GetCurrentThreadId())
        return;
    font_ = LargeFont(HostFont(&NONCLIENTMETRICSW::lfMenuFont), scale);
    try {
        Take(menu);
    } catch (...) {
        for (const Entry& entry : entries_) GiveBack(entry);
        throw;
    }
    window_ = window;
    t_menus = this;
    before_ = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(MenuOwnerProc)));
}

CLargeMenus::~CLargeMenus() {
    if (window_ == nullptr) return;
    for (const Entry& entry : entries_) GiveBack(entry);
    SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(before_));
    t_menus = nullptr;
}

LRESULT CLargeMenus::PassOn(HWND window, UINT message, WPARAM wParam, LPARAM lParam) const {
    return CallWindowProcW(before_, window, message, wParam, lParam);
}

void CLargeMenus::OnPopup(HMENU menu) {
    Take(menu);
}

void CLargeMenus::Take(HMENU menu) {
    for (int at = 0; at < GetMenuItemCount(menu); ++at) {
        const auto position = static_cast<UINT>(at);
        MENUITEMINFOW info = Asked(MIIM_FTYPE | MIIM_DATA | MIIM_SUBMENU);
        if (!GetMenuItemInfoW(menu, position, TRUE, &info)) continue;
        if (info.hSubMenu != nullptr) Take(info.hSubMenu);
        if ((info.fType & kNoText) != 0) continue;
        entries_.push_back({menu, TextAt(menu, position), info.fType, info.dwItemData});
        info.fMask = MIIM_FTYPE | MIIM_DATA;
        info.fType |= MFT_OWNERDRAW;
        info.dwItemData = reinterpret_cast<ULONG_PTR>(&entries_.back());
        SetMenuItemInfoW(menu, position, TRUE, &info);
    }
}

// Wherever it is by now.
void CLargeMenus::GiveBack(const Entry& entry) const {
    for (int at = 0; at < GetMenuItemCount(entry.menu); ++at) {
        MENUITEMINFOW info = Asked(MIIM_FTYPE | MIIM_DATA);
        if (!GetMenuItemInfoW(entry.menu, static_cast<UINT>(at), TRUE, &info)) continue;
        if (info.dwItemData != reinterpret_cast<ULONG_PTR>(&entry)) continue;
        info.fType = entry.type;
        info.dwItemData = entry.data;
        SetMenuItemInfoW(entry.menu, static_cast<UINT>(at), TRUE, &info);
    }
}

const CLargeMenus::Entry* CLargeMenus::Find(ULONG_PTR data) const {
    const auto found = std::find_if(entries_.begin(), entries_.end(), [data](const Entry& entry) {
        return reinterpret_cast<ULONG_PTR>(&entry) == data;
    });
    return found == entries_.end() ? nullptr : &*found;
}

bool CLargeMenus::OnMeasure(MEASUREITEMSTRUCT& measure) const {
    const Entry* const entry = measure.CtlType == ODT_MENU ? Find(measure.itemData) : nullptr;
    if (entry == nullptr) return false;
    const handset::OwnedMemoryDC dc(CreateCompatibleDC(nullptr));
    const handset::CSelectedObject selected(dc.get(), font_.get());
    RECT room = {};
    DrawTextW(dc.get(), entry->text.c_str(), -1, &room, DT_SINGLELINE | DT_EXPANDTABS | DT_CALCRECT);
    // A mark before the text, the sign of a further menu behind it.
    measure.itemWidth = static_cast<UINT>(room.right + 2 * MarkWidth(scale_));
    measure.itemHeight = static_cast<UINT>(room.bottom + scale_ * kAround_px);
    return true;
}

bool CLargeMenus::OnDraw(const DRAWITEMSTRUCT& draw) const {
    const Entry* const entry = draw.CtlType == ODT_MENU ? Find(draw.itemData) : nullptr;
    if (entry == nullptr) return false;
    const RECT& row = draw.rcItem;
    const Colours colours = ColoursOf(draw.itemState);
    const int mark = MarkWidth(scale_);
    const int saved = SaveDC(draw.hDC);
    FillRect(draw.hDC, &row, GetSysColorBrush(colours.ground));
    SetTextColor(draw.hDC, GetSysColor(colours.text));
    SetBkColor(draw.hDC, GetSysColor(colours.ground));
    if ((draw.itemState & ODS_CHECKED) != 0) {
        const bool dot = (entry->type & MFT_RADIOCHECK) != 0;
        DrawSign(draw.hDC, InTheMiddle(row.left, row, mark), dot ? DFCS_MENUBULLET : DFCS_MENUCHECK);
    }
    MENUITEMINFOW info = Asked(MIIM_DATA | MIIM_SUBMENU);
    for (int at = 0; at < GetMenuItemCount(entry->menu); ++at) {
        if (GetMenuItemInfoW(entry->menu, static_cast<UINT>(at), TRUE, &info) &&
            info.dwItemData == draw.itemData && info.hSubMenu != nullptr)
            DrawSign(draw.hDC, InTheMiddle(row.right - mark, row, mark), DFCS_MENUARROW);
    }
    SelectObject(draw.hDC, font_.get());
    SetBkMode(draw.hDC, TRANSPARENT);
    RECT place = {row.left + mark, row.top, row.right - mark, row.bottom};
    const UINT keys = (draw.itemState & ODS_NOACCEL) != 0 ? DT_HIDEPREFIX : 0;
    DrawTextW(draw.hDC, entry->text.c_str(), -1, &place, DT_SINGLELINE | DT_EXPANDTABS | DT_VCENTER | keys);
    RestoreDC(draw.hDC, saved);
    // The host would draw its own small sign of a further menu over this.
    ExcludeClipRect(draw.hDC, row.left, row.top, row.right, row.bottom);
    return true;
}

}  // namespace coredll
