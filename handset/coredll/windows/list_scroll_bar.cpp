#include "handset/coredll/windows/list_scroll_bar.h"

#include <commctrl.h>

#include <algorithm>
#include <cstdint>
#include <memory>

#include "handset/base/module_edge.h"
#include "handset/base/owned.h"
#include "handset/coredll/drawing/pixels.h"

namespace coredll {
namespace {

constexpr wchar_t kBarProperty[] = L"KoraHandset.ScrollBar";
constexpr UINT_PTR kRepeatTimer = 0x4B53;
constexpr UINT kFirstRepeat_ms = 300, kRepeat_ms = 60;  // of real time: it is a hand that holds
constexpr int kLeastThumb_px = 8;

// The colour of a picture seen from afar.
COLORREF GroundOf(HBITMAP picture) {
    Pixels pixels;
    const handset::OwnedMemoryDC dc(CreateCompatibleDC(nullptr));
    if (!ReadPixels(dc.get(), picture, &pixels) || pixels.values.empty()) return GetSysColor(COLOR_SCROLLBAR);
    std::uint64_t red = 0, green = 0, blue = 0;
    for (const std::uint32_t pixel : pixels.values) {
        red += (pixel >> 16) & 0xFF;
        green += (pixel >> 8) & 0xFF;
        blue += pixel & 0xFF;
    }
    const auto mean = [&](std::uint64_t sum) { return static_cast<BYTE>(sum / pixels.values.size()); };
    return RGB(mean(red), mean(green), mean(blue));
}

// Its parts along the bar, in pixels from the bar's upper end.
struct Parts {
    int arrow = 0;  // each
    int thumbTop = 0, thumbBottom = 0;
    int end = 0;
};

class CListScrollBar {
  public:
    CListScrollBar(HWND list, WNDPROC listProcedure) : list_(list), listProcedure_(listProcedure) {}

    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    [[nodiscard]] WNDPROC ListProcedure() const { return listProcedure_; }

  private:
    LRESULT Host(UINT message, WPARAM wParam, LPARAM lParam) const {
        return CallWindowProcW(listProcedure_, list_, message, wParam, lParam);
    }
    // Of the window, from its own corner. Empty when there is no bar now.
    [[nodiscard]] RECT Place() const;
    [[nodiscard]] SCROLLINFO Info() const;
    [[nodiscard]] Parts PartsNow(const RECT& place) const;
    [[nodiscard]] int AlongBar(POINT screen) const;
    [[nodiscard]] bool IsStillPainted() const;
    void Paint();
    void Press(POINT screen);
    void Step() const;
    void Drag(POINT screen) const;
    void Release();
    void ScrollTo(int row) const;

    HWND list_;
    WNDPROC listProcedure_;
    bool coloured_ = false;
    ScrollBarColours colours_ = {};
    SCROLLINFO painted_ = {};
    // What the stylus does: it steps by so many rows, over and over, or it holds the thumb at that distance
    // from its upper end.
    bool held_ = false;
    int step_ = 0;
    int grip_ = 0;
};

RECT CListScrollBar::Place() const {
    if ((GetWindowLongW(list_, GWL_STYLE) & WS_VSCROLL) == 0) return {};
    RECT window = {}, client = {};
    GetWindowRect(list_, &window);
    GetClientRect(list_, &client);
    MapWindowPoints(list_, nullptr, reinterpret_cast<POINT*>(&client), 2);
    RECT place = {client.right, client.top, client.right + GetSystemMetrics(SM_CXVSCROLL), client.bottom};
    OffsetRect(&place, -window.left, -window.top);
    return place;
}

SCROLLINFO CListScrollBar::Info() const {
    SCROLLINFO info = {};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    GetScrollInfo(list_, SB_VERT, &info);
    return info;
}

Parts CListScrollBar::PartsNow(const RECT& place) const {
    const SCROLLINFO info = Info();
    const int length = place.bottom - place.top;
    Parts parts;
    parts.end = length;
    parts.arrow = std::min(GetSystemMetrics(SM_CYVSCROLL), length / 2);
    const int track = length - 2 * parts.arrow, all = info.nMax - info.nMin + 1;
    const int page = static_cast<int>(info.nPage), rest = all - page;
    parts.thumbTop = parts.thumbBottom = parts.arrow;
    if (all <= 0 || rest <= 0) return parts;
    const int thumb = std::min(track, std::max(kLeastThumb_px, track * page / all));
    parts.thumbTop = parts.arrow + (track - thumb) * (info.nPos - info.nMin) / rest;
    parts.thumbBottom = parts.thumbTop + thumb;
    return parts;
}

void FillArrow(HDC dc, const RECT& box, bool up, HBRUSH brush) {
    const int middle = (box.left + box.right) / 2, rows = (box.right - box.left) / 4;
    const int top = (box.top + box.bottom - rows) / 2;
    for (int row = 0; row < rows; ++row) {
        const int half = up ? row : rows - 1 - row;
        const RECT line = {middle - half - 1, top + row, middle + half + 1, top + row + 1};
        FillRect(dc, &line, brush);
    }
}

// The host draws its own whenever it likes, and with it one of the arrows.
bool CListScrollBar::IsStillPainted() const {
    const RECT place = Place();
    if (IsRectEmpty(&place)) return true;
    const SCROLLINFO now = Info();
    if (now.nPos != painted_.nPos || now.nPage != painted_.nPage || now.nMin != painted_.nMin ||
        now.nMax != painted_.nMax)
        return false;
    const HDC dc = GetWindowDC(list_);
    const auto isTrack = [&](LONG y) {
        const COLORREF corner = GetPixel(dc, place.left, y);
        return corner == CLR_INVALID || corner == colours_.track;
    };
    const bool painted = isTrack(place.top) && isTrack(place.bottom - 1);
    ReleaseDC(list_, dc);
    return painted;
}

void CListScrollBar::Paint() {
    const RECT place = Place();
    painted_ = Info();
    if (IsRectEmpty(&place)) return;
    const Parts parts = PartsNow(place);
    const handset::OwnedBrush track(CreateSolidBrush(colours_.track)),
        thumb(CreateSolidBrush(colours_.thumb));
    const HDC dc = GetWindowDC(list_);
    const LONG top = place.top;
    const RECT above = {place.left, top, place.right, top + parts.thumbTop};
    const RECT below = {place.left, top + parts.thumbBottom, place.right, place.bottom};
    FillRect(dc, &above, track.get());
    FillRect(dc, &below, track.get());
    const RECT sides[] = {{place.left, above.bottom, place.left + 2, below.top},
                          {place.right - 2, above.bottom, place.right, below.top}};
    for (const RECT& side : sides) FillRect(dc, &side, track.get());
    const RECT middle = {place.left + 2, above.bottom, place.right - 2, below.top};
    FillRect(dc, &middle, thumb.get());
    FillArrow(dc, {place.left, top, place.right, top + parts.arrow}, true, thumb.get());
    FillArrow(dc, {place.left, place.bottom - parts.arrow, place.right, place.bottom}, false, thumb.get());
    ReleaseDC(list_, dc);
}

int CListScrollBar::AlongBar(POINT screen) const {
    RECT window = {};
    GetWindowRect(list_, &window);
    return static_cast<int>(screen.y - window.top - Place().top);
}

// A list scrolls by pixels and stands at whole rows.
void CListScrollBar::ScrollTo(int row) const {
    const SCROLLINFO info = Info();
    const int last = std::max(info.nMin, info.nMax - static_cast<int>(info.nPage) + 1);
    RECT first = {LVIR_BOUNDS, 0, 0, 0};
    Host(LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&first));
    const int rows = std::clamp(row, info.nMin, last) - info.nPos;
    if (rows != 0) Host(LVM_SCROLL, 0, rows * (first.bottom - first.top));
}

void CListScrollBar::Press(POINT screen) {
    const Parts parts = PartsNow(Place());
    const int at = AlongBar(screen), page = std::max(1, static_cast<int>(Info().nPage));
    held_ = true;
    SetCapture(list_);
    if (at >= parts.thumbTop && at < parts.thumbBottom) {
        step_ = 0;
        grip_ = at - parts.thumbTop;
        return;
    }
    if (at < parts.thumbTop) step_ = at < parts.arrow ? -1 : -page;
    if (at >= parts.thumbBottom) step_ = at >= parts.end - parts.arrow ? 1 : page;
    Step();
    SetTimer(list_, kRepeatTimer, kFirstRepeat_ms, nullptr);
}

void CListScrollBar::Step() const {
    ScrollTo(Info().nPos + step_);
}

void CListScrollBar::Drag(POINT screen) const {
    const Parts parts = PartsNow(Place());
    const SCROLLINFO info = Info();
    const int rest = info.nMax - info.nMin + 1 - static_cast<int>(info.nPage);
    const int room = parts.end - 2 * parts.arrow - (parts.thumbBottom - parts.thumbTop);
    if (room <= 0 || rest <= 0) return;
    const int top = std::clamp(AlongBar(screen) - grip_ - parts.arrow, 0, room);
    ScrollTo(info.nMin + (top * rest + room / 2) / room);
}

void CListScrollBar::Release() {
    held_ = false;
    KillTimer(list_, kRepeatTimer);
}

POINT PointOf(LPARAM lParam) {
    return {static_cast<SHORT>(LOWORD(lParam)), static_cast<SHORT>(HIWORD(lParam))};
}

LRESULT CListScrollBar::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == LVM_SETBKIMAGEW) {
        const auto* const image = reinterpret_cast<const LVBKIMAGEW*>(lParam);
        coloured_ =
            image != nullptr && (image->ulFlags & LVBKIF_SOURCE_HBITMAP) != 0 && image->hbm != nullptr;
        if (coloured_) colours_ = ScrollBarColoursOn(GroundOf(image->hbm));
    }
    if (!coloured_) return Host(message, wParam, lParam);

    const bool onBar = wParam == HTVSCROLL && (message == WM_NCLBUTTONDOWN || message == WM_NCLBUTTONDBLCLK);
    if (onBar) {
        Press(PointOf(lParam));
    } else if (held_ && message == WM_MOUSEMOVE) {
        POINT at = PointOf(lParam);
        ClientToScreen(list_, &at);
        if (step_ == 0) Drag(at);
    } else if (held_ && message == WM_LBUTTONUP) {
        ReleaseCapture();
    } else if (message == WM_TIMER && wParam == kRepeatTimer) {
        SetTimer(list_, kRepeatTimer, kRepeat_ms, nullptr);
        Step();
    } else {
        if (message == WM_CAPTURECHANGED) Release();
        const LRESULT result = Host(message, wParam, lParam);
        if (message == WM_NCPAINT || !IsStillPainted()) Paint();
        return result;
    }
    Paint();
    return 0;
}

LRESULT CALLBACK ListProc(HWND list, UINT message, WPARAM wParam, LPARAM lParam) try {
    auto* const bar = static_cast<CListScrollBar*>(GetPropW(list, kBarProperty));
    if (bar == nullptr) return DefWindowProcW(list, message, wParam, lParam);
    if (message != WM_NCDESTROY) return bar->Handle(message, wParam, lParam);
    const std::unique_ptr<CListScrollBar> owned(bar);
    RemovePropW(list, kBarProperty);
    return CallWindowProcW(bar->ListProcedure(), list, message, wParam, lParam);
} catch (...) {
    return handset::EdgeAnswer<LRESULT>();
}

}  // namespace

void DrawScrollBarLikePicture(HWND list) {
    const auto hosts = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(list, GWLP_WNDPROC));
    auto bar = std::make_unique<CListScrollBar>(list, hosts);
    if (!SetPropW(list, kBarProperty, bar.get())) return;
    bar.release();
    SetWindowLongPtrW(list, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(ListProc));
}

}  // namespace coredll
