#include "shell/relayout.h"

#include <windows.h>

#include <aygshell.h>
#include <commctrl.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cwchar>

namespace {

// Mark of a window class or resource that is named by a number.
constexpr WORD kNumberFollows = 0xFFFF;
constexpr WORD kClassButton = 0x80;
constexpr WORD kClassStatic = 0x82;
constexpr WORD kClassListBox = 0x83;
constexpr WORD kClassComboBox = 0x85;

// A text or, marked by kNumberFollows, a number.
struct NameOrNumber {
    const WCHAR* pszName;  // null when it is a number
    WORD wNumber;
};

// Reads the parts of a dialog template one after another (DLGTEMPLATE and its items, in their packed form).
class TemplateReader {
  public:
    explicit TemplateReader(const void* start) : m_next(static_cast<const BYTE*>(start)) {}

    template <typename Header>
    const Header& Take() {
        const auto* header = reinterpret_cast<const Header*>(m_next);
        m_next += sizeof(Header);
        return *header;
    }
    NameOrNumber TakeName() {
        if (*Words() == kNumberFollows) {
            Take<WORD>();
            return {nullptr, Take<WORD>()};
        }
        const auto* name = reinterpret_cast<const WCHAR*>(m_next);
        m_next += (wcslen(name) + 1) * sizeof(WCHAR);
        return {name, 0};
    }
    // Its first word counts the bytes that follow; 0 counts as the word itself.
    void SkipCreationData() {
        const WORD bytes = Take<WORD>();
        m_next += bytes;
    }
    void AlignToItem() {
        const auto address = reinterpret_cast<std::uintptr_t>(m_next);
        m_next += (sizeof(DWORD) - address % sizeof(DWORD)) % sizeof(DWORD);
    }

  private:
    const WORD* Words() const { return reinterpret_cast<const WORD*>(m_next); }
    const BYTE* m_next;
};

struct TemplateItem {
    HWND control;
    DWORD style;
    RECT units;   // dialog units
    WORD wClass;  // 0 for a class that is not predefined
    NameOrNumber text;
};

// The fixed part, menu, class and title, and with DS_SETFONT the font's size and name.
WORD SkipTemplateHead(TemplateReader& reader) {
    const auto& head = reader.Take<DLGTEMPLATE>();
    for (int name = 0; name < 3; ++name) reader.TakeName();
    if ((head.style & DS_SETFONT) != 0) {
        reader.Take<WORD>();
        reader.TakeName();
    }
    return head.cdit;
}

TemplateItem TakeItem(TemplateReader& reader, HWND dialog) {
    reader.AlignToItem();
    const auto& head = reader.Take<DLGITEMTEMPLATE>();
    TemplateItem item = {};
    item.control = GetDlgItem(dialog, head.id);
    item.style = head.style;
    item.units = {head.x, head.y, head.x + head.cx, head.y + head.cy};
    item.wClass = reader.TakeName().wNumber;
    item.text = reader.TakeName();
    reader.SkipCreationData();
    return item;
}

// Calls `action` for every item of the template that the dialog has as a control.
template <typename Action>
void ForEachItem(const void* dialogTemplate, HWND dialog, Action action) {
    TemplateReader reader(dialogTemplate);
    const WORD count = SkipTemplateHead(reader);
    for (WORD at = 0; at < count; ++at) {
        const TemplateItem item = TakeItem(reader, dialog);
        if (item.control != nullptr) action(item);
    }
}

RECT InPixels(HWND dialog, const RECT& units) {
    RECT place = units;
    MapDialogRect(dialog, &place);
    return place;
}

// Moves every control to where `placeOf` has it, all in one step.
template <typename PlaceOf>
void MoveControls(const void* dialogTemplate, HWND dialog, PlaceOf placeOf) {
    HDWP moves = BeginDeferWindowPos(static_cast<const DLGTEMPLATE*>(dialogTemplate)->cdit);
    ForEachItem(dialogTemplate, dialog, [&](const TemplateItem& item) {
        if (moves == nullptr) return;
        const RECT place = placeOf(item);
        moves = DeferWindowPos(moves, item.control, nullptr, place.left, place.top, place.right - place.left,
                               place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
    });
    if (moves != nullptr) EndDeferWindowPos(moves);
}

// --- Over the whole window ---------------------------------------------------------------------------------

// What the menu bar leaves of the dialog's client area, whose foot it keeps: when the dialog is told of its
// new size, the bar still lies where it was. On the device it is no part of the dialog.
SIZE RoomOf(HWND dialog) {
    RECT client = {}, bar = {};
    GetClientRect(dialog, &client);
    const HWND menuBar = SHFindMenuBar(dialog);
    if (menuBar != nullptr && IsChild(dialog, menuBar)) GetWindowRect(menuBar, &bar);
    return {client.right, client.bottom - (bar.bottom - bar.top)};
}

bool IsIcon(const TemplateItem& item) {
    return item.wClass == kClassStatic && (item.style & SS_TYPEMASK) == SS_ICON;
}

bool IsList(const TemplateItem& item) {
    if (item.wClass == kClassListBox) return true;
    WCHAR name[32] = L"";
    GetClassNameW(item.control, name, ARRAYSIZE(name));
    return wcscmp(name, WC_LISTVIEWW) == 0;
}

struct Stretch {
    LONG nWidth, nOf;  // a length across the dialog becomes nWidth in nOf
    LONG nExtraRows;   // those of the list
    LONG nListBottom;  // what begins there or below goes down

    LONG Across(LONG x) const { return (x * nWidth + nOf / 2) / nOf; }
    RECT Of(const TemplateItem& item, RECT place) const {
        // An icon has its own size.
        const LONG width = IsIcon(item) ? place.right - place.left : Across(place.right) - Across(place.left);
        place.left = Across(place.left);
        place.right = place.left + width;
        if (IsList(item)) {
            place.bottom += nExtraRows;
        } else if (place.top >= nListBottom) {
            OffsetRect(&place, 0, nExtraRows);
        }
        return place;
    }
};

// --- As a template has it ----------------------------------------------------------------------------------

HANDLE ExchangeImage(HWND control, UINT kind, HANDLE image) {
    return reinterpret_cast<HANDLE>(
        SendMessageW(control, STM_SETIMAGE, kind, reinterpret_cast<LPARAM>(image)));
}

// A static's picture, loaded anew. On the device the control keeps the picture that it is given.
void ReloadImage(HINSTANCE module, const TemplateItem& item) {
    const WCHAR* name = MAKEINTRESOURCEW(item.text.wNumber);
    if ((item.style & SS_TYPEMASK) == SS_ICON) {
        DestroyIcon(static_cast<HICON>(ExchangeImage(item.control, IMAGE_ICON, LoadIconW(module, name))));
    } else if ((item.style & SS_TYPEMASK) == SS_BITMAP) {
        DeleteObject(ExchangeImage(item.control, IMAGE_BITMAP, LoadBitmapW(module, name)));
    }
}

void RefreshText(HINSTANCE, const TemplateItem& item) {
    if (item.text.pszName == nullptr) return;
    SetDlgItemTextW(GetParent(item.control), GetDlgCtrlID(item.control), item.text.pszName);
}

void RefreshStatic(HINSTANCE module, const TemplateItem& item) {
    if (item.text.pszName == nullptr) {
        ReloadImage(module, item);
    } else {
        RefreshText(module, item);
    }
}

template <UINT get, UINT set>
void ShowSelection(HINSTANCE, const TemplateItem& item) {
    SendMessageW(item.control, set, static_cast<WPARAM>(SendMessageW(item.control, get, 0, 0)), 0);
}

struct RefreshRow {
    WORD wClass;
    void (*refresh)(HINSTANCE, const TemplateItem&);
};

// clang-format off
constexpr RefreshRow kRefreshes[] = {
    {kClassButton,   RefreshText},
    {kClassStatic,   RefreshStatic},
    {kClassListBox,  ShowSelection<LB_GETCURSEL, LB_SETCURSEL>},
    {kClassComboBox, ShowSelection<CB_GETCURSEL, CB_SETCURSEL>},
};
// clang-format on

void Refresh(HINSTANCE module, const TemplateItem& item) {
    for (const RefreshRow& row : kRefreshes) {
        if (row.wClass == item.wClass) row.refresh(module, item);
    }
}

// A loaded resource is its own memory on the device: there is no lock. Null when it is not there.
const void* LoadTemplate(HINSTANCE module, UINT templateId) {
    const HRSRC resource = FindResourceW(module, MAKEINTRESOURCEW(templateId), RT_DIALOG);
    return resource == nullptr ? nullptr : LoadResource(module, resource);
}

}  // namespace

void FillDialog(HINSTANCE module, HWND dialog, UINT templateId) {
    const auto* dialogTemplate = static_cast<const DLGTEMPLATE*>(LoadTemplate(module, templateId));
    if (dialogTemplate == nullptr) return;
    const SIZE room = RoomOf(dialog);
    const RECT whole = InPixels(dialog, {0, 0, dialogTemplate->cx, dialogTemplate->cy});
    if (whole.right <= 0) return;
    Stretch stretch = {std::max(room.cx, whole.right), whole.right, 0, whole.bottom};
    ForEachItem(dialogTemplate, dialog, [&](const TemplateItem& item) {
        if (!IsList(item)) return;
        stretch.nExtraRows = std::max(room.cy - whole.bottom, LONG{0});
        stretch.nListBottom = InPixels(dialog, item.units).bottom;
    });
    MoveControls(dialogTemplate, dialog,
                 [&](const TemplateItem& item) { return stretch.Of(item, InPixels(dialog, item.units)); });
    InvalidateRect(dialog, nullptr, TRUE);
}

int RelayoutDialog(HINSTANCE module, HWND dialog, UINT templateId) {
    const void* dialogTemplate = LoadTemplate(module, templateId);
    if (dialogTemplate == nullptr) return 0;
    MoveControls(dialogTemplate, dialog,
                 [dialog](const TemplateItem& item) { return InPixels(dialog, item.units); });
    ForEachItem(dialogTemplate, dialog, [module](const TemplateItem& item) { Refresh(module, item); });
    // A frame around other controls is transparent: moving it leaves its old lines behind.
    RedrawWindow(dialog, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    return 1;
}
