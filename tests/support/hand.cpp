#include "tests/support/hand.h"

namespace test {

void TypeInto(HWND dialog, int id, const std::wstring& text) {
    const HWND edit = GetDlgItem(dialog, id);
    SendMessageW(edit, EM_SETSEL, 0, -1);
    PostMessageW(edit, WM_CHAR, VK_BACK, 1);
    for (const wchar_t character : text) PostMessageW(edit, WM_CHAR, character, 1);
}

void PressButton(HWND dialog, int id) {
    PostMessageW(GetDlgItem(dialog, id), BM_CLICK, 0, 0);
}

void PressSoftKey(HWND dialog, SoftKey key) {
    const HWND bar = FindWindowExW(dialog, nullptr, L"menu_worker", nullptr);
    const HWND keys = GetWindow(bar, GW_CHILD);
    RECT area = {};
    GetClientRect(keys, &area);
    const int x = key == SoftKey::kLeft ? area.right / 4 : area.right * 3 / 4;
    const LPARAM point = MAKELPARAM(static_cast<WORD>(x), static_cast<WORD>(area.bottom / 2));
    PostMessageW(keys, WM_LBUTTONDOWN, MK_LBUTTON, point);
    PostMessageW(keys, WM_LBUTTONUP, 0, point);
}

void PickRow(HWND dialog, int id, int row) {
    const HWND list = GetDlgItem(dialog, id);
    const auto height = static_cast<int>(SendMessageW(list, LB_GETITEMHEIGHT, 0, 0));
    const auto top = static_cast<int>(SendMessageW(list, LB_GETTOPINDEX, 0, 0));
    const LPARAM point = MAKELPARAM(10, static_cast<WORD>((row - top) * height + height / 2));
    PostMessageW(list, WM_LBUTTONDOWN, MK_LBUTTON, point);
    PostMessageW(list, WM_LBUTTONUP, 0, point);
}

void StepMinutes(HWND picker, int times) {
    RECT client = {};
    GetClientRect(picker, &client);
    const auto tap = [&](int x) {
        const LPARAM point = MAKELPARAM(static_cast<WORD>(x), static_cast<WORD>(client.bottom / 2));
        SendMessageW(picker, WM_LBUTTONDOWN, MK_LBUTTON, point);
        SendMessageW(picker, WM_LBUTTONUP, 0, point);
    };
    for (int x = 30; x < client.right && x < 50; x += 5) tap(x);
    for (; times > 0; --times) SendMessageW(picker, WM_KEYDOWN, VK_UP, 1);
}

std::wstring TextOf(HWND dialog, int id) {
    wchar_t text[300] = L"";
    SendMessageW(GetDlgItem(dialog, id), WM_GETTEXT, 300, reinterpret_cast<LPARAM>(text));
    return text;
}

std::wstring ListBoxText(HWND dialog, int id, int row) {
    wchar_t text[300] = L"";
    SendMessageW(GetDlgItem(dialog, id), LB_GETTEXT, static_cast<WPARAM>(row),
                 reinterpret_cast<LPARAM>(text));
    return text;
}

}  // namespace test
