#include "shell/relayout.h"

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

HDWP DeferMove(HDWP moves, HWND dialog, const TemplateItem& item) {
    if (moves == nullptr) return nullptr;
    RECT place = item.units;
    MapDialogRect(dialog, &place);
    return DeferWindowPos(moves, item.control, nullptr, place.left, place.top, place.right - place.left,
                          place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

void MoveControls(const void* dialogTemplate, HWND dialog) {
    HDWP moves = BeginDeferWindowPos(static_cast<const DLGTEMPLATE*>(dialogTemplate)->cdit);
    ForEachItem(dialogTemplate, dialog,
                [&](const TemplateItem& item) { moves = DeferMove(moves, dialog, item); });
    if (moves != nullptr) EndDeferWindowPos(moves);
}

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

}  // namespace

int RelayoutDialog(HINSTANCE module, HWND dialog, UINT templateId) {
    const HRSRC resource = FindResourceW(module, MAKEINTRESOURCEW(templateId), RT_DIALOG);
    if (resource == nullptr) return 0;
    // A loaded resource is its own memory on the device: there is no lock.
    const void* dialogTemplate = LoadResource(module, resource);
    if (dialogTemplate == nullptr) return 0;
    MoveControls(dialogTemplate, dialog);
    ForEachItem(dialogTemplate, dialog, [module](const TemplateItem& item) { Refresh(module, item); });
    // A frame around other controls is transparent: moving it leaves its old lines behind.
    RedrawWindow(dialog, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    return 1;
}
