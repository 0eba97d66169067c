#include "tests/screens/reader/control_texts.h"

#include <commctrl.h>

#include <cwchar>
#include <iterator>
#include <string>

namespace screens {
namespace {

constexpr UINT kAnswerWithin_ms = 5000;
constexpr UINT kGetMenu = 0x01E1;  // MN_GETHMENU
constexpr wchar_t kMenuClass[] = L"#32768";
// A mark with the gap behind it, and the frame of a button on either side, as the system draws them.
constexpr LONG kMark = 13, kButtonFrame = 2;
constexpr LONG kGroupIndent = 7;

class MeasuringDC {
  public:
    explicit MeasuringDC(HFONT font) : dc_(CreateCompatibleDC(nullptr)) {
        SelectObject(dc_, font != nullptr ? font : GetStockObject(SYSTEM_FONT));
    }
    ~MeasuringDC() { DeleteDC(dc_); }
    MeasuringDC(const MeasuringDC&) = delete;
    MeasuringDC& operator=(const MeasuringDC&) = delete;

    SIZE Measure(const std::wstring& text, UINT format, LONG width = 0) const {
        RECT box = {0, 0, width, 0};
        if (text.empty()) return {};
        DrawTextW(dc_, text.c_str(), static_cast<int>(text.size()), &box, format | DT_CALCRECT);
        return {box.right, box.bottom};
    }

  private:
    HDC dc_;
};

std::wstring TextOf(HWND window) {
    wchar_t text[1024] = L"";
    Ask(window, WM_GETTEXT, std::size(text), reinterpret_cast<LPARAM>(text));
    return text;
}

HFONT FontOf(HWND window) {
    return reinterpret_cast<HFONT>(Ask(window, WM_GETFONT));
}

RECT ClientOf(HWND window) {
    RECT client = {};
    GetClientRect(window, &client);
    return client;
}

void Add(HWND window, const char* what, const std::wstring& text, SIZE need, LONG width, LONG height,
         std::vector<Item>& items) {
    Item item;
    item.kind = Kind::kText;
    item.window = reinterpret_cast<std::uint64_t>(window);
    item.className = what;
    item.id = GetDlgCtrlID(window);
    item.style = static_cast<std::uint32_t>(GetWindowLongW(window, GWL_STYLE));
    GetWindowRect(window, &item.place);
    item.need = need;
    item.room = {0, 0, width, height};
    item.text = ToUtf8(text);
    items.push_back(std::move(item));
}

void AddStatic(HWND window, DWORD style, std::vector<Item>& items) {
    struct Row {
        DWORD kind;
        UINT format;
    };
    constexpr Row kRows[] = {{SS_LEFT, DT_WORDBREAK | DT_EXPANDTABS},
                             {SS_CENTER, DT_WORDBREAK | DT_EXPANDTABS},
                             {SS_RIGHT, DT_WORDBREAK | DT_EXPANDTABS},
                             {SS_SIMPLE, DT_SINGLELINE},
                             {SS_LEFTNOWORDWRAP, DT_EXPANDTABS}};
    for (const Row& row : kRows) {
        if (row.kind != (style & SS_TYPEMASK)) continue;
        UINT format = row.format;
        if ((style & SS_NOPREFIX) != 0) format |= DT_NOPREFIX;
        if ((style & SS_EDITCONTROL) != 0) format |= DT_EDITCONTROL;
        const RECT client = ClientOf(window);
        const std::wstring text = TextOf(window);
        Add(window, "static", text, MeasuringDC(FontOf(window)).Measure(text, format, client.right),
            client.right, client.bottom, items);
    }
}

void AddButton(HWND window, DWORD style, std::vector<Item>& items) {
    const DWORD type = style & BS_TYPEMASK;
    if (type == BS_OWNERDRAW) return;
    const MeasuringDC dc(FontOf(window));
    const LONG half = dc.Measure(L"0", DT_SINGLELINE).cx / 2;
    const RECT client = ClientOf(window);
    LONG width = client.right - 2 * kButtonFrame, height = client.bottom - 2 * kButtonFrame;
    if (type == BS_GROUPBOX) {
        width = client.right - 2 * kGroupIndent;
        height = client.bottom;
    } else if (type != BS_PUSHBUTTON && type != BS_DEFPUSHBUTTON) {
        width = client.right - kMark - half;
        height = client.bottom;
    }
    const std::wstring text = TextOf(window);
    Add(window, "button", text, dc.Measure(text, DT_SINGLELINE), width, height, items);
}

void AddEdit(HWND window, DWORD, std::vector<Item>& items) {
    RECT inside = {};
    Ask(window, EM_GETRECT, 0, reinterpret_cast<LPARAM>(&inside));
    const std::wstring text = TextOf(window);
    Add(window, "edit", text,
        MeasuringDC(FontOf(window)).Measure(text, DT_SINGLELINE | DT_NOPREFIX | DT_EDITCONTROL),
        inside.right - inside.left, inside.bottom - inside.top, items);
}

void AddRows(HWND window, const char* what, LONG lowest, LONG room, std::vector<Item>& items) {
    Item item;
    item.kind = Kind::kRows;
    item.window = reinterpret_cast<std::uint64_t>(window);
    item.className = what;
    item.id = GetDlgCtrlID(window);
    item.need.cy = lowest;
    item.room = {0, 0, 0, room};
    items.push_back(std::move(item));
}

void AddListBox(HWND window, DWORD, std::vector<Item>& items) {
    const MeasuringDC dc(FontOf(window));
    const RECT client = ClientOf(window);
    const auto height = static_cast<LONG>(Ask(window, LB_GETITEMHEIGHT));
    LONG lowest = 0;
    for (LRESULT row = Ask(window, LB_GETTOPINDEX), count = Ask(window, LB_GETCOUNT); row < count; ++row) {
        RECT place = {};
        Ask(window, LB_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
        if (place.top >= client.bottom) break;
        lowest = place.bottom;
        wchar_t text[512] = L"";
        Ask(window, LB_GETTEXT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(text));
        Add(window, "listbox", text, dc.Measure(text, DT_SINGLELINE | DT_NOPREFIX), client.right - 1, height,
            items);
        MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&place), 2);
        items.back().place = place;
    }
    AddRows(window, "listbox", lowest, client.bottom, items);
}

// Where a text of a list's stands. What it takes is told where it is drawn (drawn_texts.h).
void AddCell(HWND window, const char* what, const std::wstring& text, RECT place, std::vector<Item>& items) {
    Add(window, what, text, {}, 0, 0, items);
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&place), 2);
    items.back().place = place;
}

void AddRow(HWND list, LRESULT row, LRESULT columns, std::vector<Item>& items) {
    for (int column = 0; column < columns; ++column) {
        RECT place = {LVIR_LABEL, column, 0, 0};
        Ask(list, LVM_GETSUBITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
        wchar_t text[512] = L"";
        LVITEMW item = {};
        item.iSubItem = column;
        item.pszText = text;
        item.cchTextMax = static_cast<int>(std::size(text));
        Ask(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
        AddCell(list, "listview", text, place, items);
    }
}

void AddListView(HWND window, DWORD style, std::vector<Item>& items) {
    const RECT client = ClientOf(window);
    const auto heads = reinterpret_cast<HWND>(Ask(window, LVM_GETHEADER));
    LONG lowest = 0;
    const bool rows = (style & LVS_TYPEMASK) == LVS_REPORT;
    for (LRESULT row = Ask(window, LVM_GETTOPINDEX), count = Ask(window, LVM_GETITEMCOUNT);
         rows && row < count; ++row) {
        RECT place = {LVIR_BOUNDS, 0, 0, 0};
        Ask(window, LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
        if (place.top >= client.bottom) break;
        lowest = place.bottom;
        if (lowest <= client.bottom) AddRow(window, row, Ask(heads, HDM_GETITEMCOUNT), items);
    }
    AddRows(window, "listview", lowest, client.bottom, items);
}

void AddHeader(HWND window, DWORD, std::vector<Item>& items) {
    for (LRESULT at = 0, count = Ask(window, HDM_GETITEMCOUNT); at < count; ++at) {
        RECT place = {};
        wchar_t text[256] = L"";
        HDITEMW item = {};
        item.mask = HDI_TEXT;
        item.pszText = text;
        item.cchTextMax = static_cast<int>(std::size(text));
        Ask(window, HDM_GETITEMRECT, static_cast<WPARAM>(at), reinterpret_cast<LPARAM>(&place));
        Ask(window, HDM_GETITEMW, static_cast<WPARAM>(at), reinterpret_cast<LPARAM>(&item));
        AddCell(window, "header", text, place, items);
    }
}

HFONT SystemFont(LOGFONTW NONCLIENTMETRICSW::*which) {
    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    return CreateFontIndirectW(&(metrics.*which));
}

void AddMenu(HWND window, std::vector<Item>& items) {
    const auto menu = reinterpret_cast<HMENU>(Ask(window, kGetMenu));
    const HFONT font = SystemFont(&NONCLIENTMETRICSW::lfMenuFont);
    {
        const MeasuringDC dc(font);
        const LONG mark = GetSystemMetrics(SM_CXMENUCHECK);
        for (int at = 0; at < GetMenuItemCount(menu); ++at) {
            wchar_t text[256] = L"";
            RECT place = {};
            if (GetMenuStringW(menu, static_cast<UINT>(at), text, std::size(text), MF_BYPOSITION) == 0)
                continue;
            GetMenuItemRect(nullptr, menu, static_cast<UINT>(at), &place);
            const bool opens = GetSubMenu(menu, at) != nullptr;
            Add(window, "menu item", text, dc.Measure(text, DT_SINGLELINE),
                place.right - place.left - mark - (opens ? mark : 0), place.bottom - place.top, items);
            items.back().place = place;
            items.back().style = GetMenuState(menu, static_cast<UINT>(at), MF_BYPOSITION);
        }
    }
    DeleteObject(font);
}

void AddCaption(HWND window, DWORD style, std::vector<Item>& items) {
    if ((style & WS_CAPTION) != WS_CAPTION) return;
    RECT place = {};
    GetWindowRect(window, &place);
    const HFONT font = SystemFont(&NONCLIENTMETRICSW::lfCaptionFont);
    const LONG button = (style & WS_SYSMENU) != 0 ? GetSystemMetrics(SM_CXSIZE) : 0;
    const std::wstring text = TextOf(window);
    Add(window, "caption", text, MeasuringDC(font).Measure(text, DT_SINGLELINE | DT_NOPREFIX),
        place.right - place.left - 2 * GetSystemMetrics(SM_CXFIXEDFRAME) - 2 * kButtonFrame - button,
        GetSystemMetrics(SM_CYCAPTION), items);
    DeleteObject(font);
}

// A box's title that the handset draws.
void AddTitle(HWND window, DWORD, std::vector<Item>& items) {
    AddCell(window, "caption", TextOf(window), ClientOf(window), items);
}

struct ClassRow {
    const wchar_t* name;
    void (*add)(HWND window, DWORD style, std::vector<Item>& items);
};
constexpr ClassRow kClasses[] = {
    {L"Static", AddStatic},
    {L"Button", AddButton},
    {L"Edit", AddEdit},
    {L"ListBox", AddListBox},
    {L"SysListView32", AddListView},
    {L"SysHeader32", AddHeader},
    {L"KoraHandset.BoxTitle", AddTitle},
};

}  // namespace

LRESULT Ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    DWORD_PTR answer = 0;
    SendMessageTimeoutW(window, message, wParam, lParam, SMTO_ABORTIFHUNG, kAnswerWithin_ms, &answer);
    return static_cast<LRESULT>(answer);
}

void AddTexts(HWND window, std::vector<Item>& items) {
    wchar_t name[64] = L"";
    GetClassNameW(window, name, static_cast<int>(std::size(name)));
    const auto style = static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE));
    if (std::wcscmp(name, kMenuClass) == 0) AddMenu(window, items);
    AddCaption(window, style, items);
    for (const ClassRow& row : kClasses) {
        if (_wcsicmp(name, row.name) == 0) row.add(window, style, items);
    }
}

}  // namespace screens
