#include "handset/coredll/windows/dialog_keys.h"

#include <windows.h>

#include <commctrl.h>

#include <cwctype>
#include <iterator>

#include "handset/base/module_edge.h"
#include "handset/base/window_class.h"

namespace coredll {
namespace {

using handset::HasClass;

constexpr wchar_t kDialogClass[] = L"#32770";

thread_local HHOOK t_hook = nullptr;
thread_local int t_dialogs = 0;

// How far the arrows have gone round the fields of a picker, which says of none that it is the last one.
struct Round {
    HWND picker = nullptr;
    WPARAM arrow = 0;
    int steps = 0;
};
thread_local Round t_round;

bool IsArrow(WPARAM key) {
    return key == VK_UP || key == VK_DOWN || key == VK_LEFT || key == VK_RIGHT;
}
bool IsBack(WPARAM arrow) {
    return arrow == VK_UP || arrow == VK_LEFT;
}
bool IsUpright(WPARAM arrow) {
    return arrow == VK_UP || arrow == VK_DOWN;
}
bool IsHeld(int key) {
    return (GetKeyState(key) & 0x8000) != 0;
}

LONG StyleOf(HWND window) {
    return GetWindowLongW(window, GWL_STYLE);
}

// What becomes of a key.
enum class Key {
    kHosts,  // the host's dialog and the control do with it what they always do
    kDone,
    kWalks,  // to the next control
};

// --- Buttons ---

bool IsMark(HWND button) {
    const LONG type = StyleOf(button) & BS_TYPEMASK;
    return type == BS_CHECKBOX || type == BS_AUTOCHECKBOX || type == BS_3STATE || type == BS_AUTO3STATE ||
           type == BS_RADIOBUTTON || type == BS_AUTORADIOBUTTON;
}

bool StandsBehind(HWND window, HWND other) {
    for (HWND next = other; (next = GetWindow(next, GW_HWNDNEXT)) != nullptr;) {
        if (next == window) return true;
    }
    return false;
}

// Whether the choice has a further button in that direction, without going round.
bool GroupGoesOn(HWND button, bool back) {
    const HWND next = GetNextDlgGroupItem(GetParent(button), button, back);
    if (next == nullptr || next == button) return false;
    return back ? StandsBehind(button, next) : StandsBehind(next, button);
}

Key OnButton(HWND button, WPARAM key) {
    if (key == VK_RETURN) {
        if (!IsMark(button)) return Key::kHosts;
        SendMessageW(button, BM_CLICK, 0, 0);
        return Key::kDone;
    }
    const bool choice = (SendMessageW(button, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON) != 0;
    return choice && GroupGoesOn(button, IsBack(key)) ? Key::kHosts : Key::kWalks;
}

// --- Fields ---

// Whether the field's up and down turn its value.
bool HasArrowsOfItsOwn(HWND field) {
    for (HWND spin = nullptr;
         (spin = FindWindowExW(GetParent(field), spin, UPDOWN_CLASSW, nullptr)) != nullptr;) {
        if ((StyleOf(spin) & UDS_ARROWKEYS) != 0 &&
            reinterpret_cast<HWND>(SendMessageW(spin, UDM_GETBUDDY, 0, 0)) == field)
            return true;
    }
    return false;
}

Key OnEdit(HWND field, WPARAM key) {
    if (key == VK_RETURN || (StyleOf(field) & ES_MULTILINE) != 0) return Key::kHosts;
    if (IsUpright(key)) return HasArrowsOfItsOwn(field) ? Key::kHosts : Key::kWalks;
    DWORD from = 0, to = 0;
    SendMessageW(field, EM_GETSEL, reinterpret_cast<WPARAM>(&from), reinterpret_cast<LPARAM>(&to));
    const DWORD end = IsBack(key) ? 0 : static_cast<DWORD>(GetWindowTextLengthW(field));
    return from == to && to == end ? Key::kWalks : Key::kHosts;
}

int FieldsOf(HWND picker) {
    wchar_t text[64] = L"";
    GetWindowTextW(picker, text, static_cast<int>(std::size(text)));
    int fields = 0;
    for (const wchar_t* at = text; *at != L'\0'; ++at) {
        const bool begins = at == text || std::iswalnum(at[-1]) == 0;
        if (std::iswalnum(*at) != 0 && begins) ++fields;
    }
    return fields;
}

Key OnPicker(HWND picker, WPARAM key) {
    if (!IsArrow(key) || IsUpright(key)) return Key::kHosts;
    if (t_round.picker != picker || t_round.arrow != key) t_round = {picker, key, 0};
    // One host begins before the first field, another on it.
    return ++t_round.steps <= FieldsOf(picker) ? Key::kHosts : Key::kWalks;
}

// --- Lists ---

Key OnListBox(HWND list, WPARAM key) {
    if (key == VK_RETURN) return Key::kHosts;
    if (!IsUpright(key))
        return (StyleOf(list) & (LBS_MULTICOLUMN | WS_HSCROLL)) != 0 ? Key::kHosts : Key::kWalks;
    const LRESULT row = SendMessageW(list, LB_GETCURSEL, 0, 0), rows = SendMessageW(list, LB_GETCOUNT, 0, 0);
    const bool atEnd = key == VK_UP ? row <= 0 : row == rows - 1;
    return atEnd ? Key::kWalks : Key::kHosts;
}

struct ListPlace {
    LRESULT row;
    int x, y;
    bool operator==(const ListPlace& other) const { return row == other.row && x == other.x && y == other.y; }
};

ListPlace PlaceIn(HWND list) {
    return {SendMessageW(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED),
            GetScrollPos(list, SB_HORZ), GetScrollPos(list, SB_VERT)};
}

// One host's list does not say which row Return activates.
void TouchRow(HWND list, int row) {
    RECT place = {LVIR_LABEL, 0, 0, 0};
    SendMessageW(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
    SendMessageW(list, LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
    const LPARAM middle = MAKELPARAM((place.left + place.right) / 2, (place.top + place.bottom) / 2);
    PostMessageW(list, WM_LBUTTONDOWN, MK_LBUTTON, middle);
    PostMessageW(list, WM_LBUTTONUP, 0, middle);
}

// The arrows are the list's as long as they move something in it.
Key OnListView(HWND list, WPARAM key) {
    if (key == VK_RETURN) {
        const auto style = SendMessageW(list, LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0);
        if ((style & LVS_EX_ONECLICKACTIVATE) == 0 || PlaceIn(list).row < 0) return Key::kHosts;
        TouchRow(list, static_cast<int>(PlaceIn(list).row));
        return Key::kDone;
    }
    const ListPlace before = PlaceIn(list);
    SendMessageW(list, WM_KEYDOWN, key, 0);
    return PlaceIn(list) == before ? Key::kWalks : Key::kDone;
}

struct ClassRow {
    const wchar_t* name;
    Key (*on)(HWND control, WPARAM key);
};
constexpr ClassRow kClasses[] = {
    {L"Button", OnButton},           {L"Edit", OnEdit}, {L"ListBox", OnListBox}, {WC_LISTVIEWW, OnListView},
    {DATETIMEPICK_CLASSW, OnPicker},
};

Key OnControl(HWND control, WPARAM key) {
    for (const ClassRow& row : kClasses) {
        if (HasClass(control, row.name)) return row.on(control, key);
    }
    const bool wanted = (SendMessageW(control, WM_GETDLGCODE, 0, 0) & DLGC_WANTARROWS) != 0;
    return key == VK_RETURN || wanted ? Key::kHosts : Key::kWalks;
}

// True when nothing is left to be done with the message.
bool Take(const MSG& message) {
    if (message.message != WM_KEYDOWN || (!IsArrow(message.wParam) && message.wParam != VK_RETURN))
        return false;
    if (IsHeld(VK_SHIFT) || IsHeld(VK_CONTROL) || IsHeld(VK_MENU)) return false;
    const HWND control = message.hwnd, dialog = GetParent(control);
    if (dialog == nullptr || GetFocus() != control || !HasClass(dialog, kDialogClass)) return false;
    const Key key = OnControl(control, message.wParam);
    if (key != Key::kWalks) return key == Key::kDone;
    t_round = {};
    const HWND next = GetNextDlgTabItem(dialog, control, IsBack(message.wParam));
    if (next != nullptr && next != control)
        SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(next), TRUE);
    return true;
}

LRESULT CALLBACK OnMessage(int code, WPARAM wParam, LPARAM message) try {
    if (code == MSGF_DIALOGBOX && Take(*reinterpret_cast<const MSG*>(message))) return TRUE;
    return CallNextHookEx(t_hook, code, wParam, message);
} catch (...) {
    return handset::EdgeAnswer<LRESULT>();
}

}  // namespace

CDialogKeys::CDialogKeys() {
    if (t_dialogs++ == 0) t_hook = SetWindowsHookExW(WH_MSGFILTER, OnMessage, nullptr, GetCurrentThreadId());
}

CDialogKeys::~CDialogKeys() {
    if (--t_dialogs > 0 || t_hook == nullptr) return;
    UnhookWindowsHookEx(t_hook);
    t_hook = nullptr;
}

}  // namespace coredll
