#include "tests/support/dialog.h"

namespace test {

void TapControl(HWND dialog, int id) {
    const HWND control = GetDlgItem(dialog, id);
    RECT client = {};
    GetClientRect(control, &client);
    const LPARAM middle = MAKELPARAM(client.right / 2, client.bottom / 2);
    PostMessageW(control, WM_LBUTTONDOWN, MK_LBUTTON, middle);
    PostMessageW(control, WM_LBUTTONUP, 0, middle);
}

bool IsChecked(HWND dialog, int id) {
    return SendMessageW(GetDlgItem(dialog, id), BM_GETCHECK, 0, 0) == BST_CHECKED;
}

bool IsEnabled(HWND dialog, int id) {
    return IsWindowEnabled(GetDlgItem(dialog, id));
}

std::wstring ControlText(HWND dialog, int id) {
    WCHAR text[512] = L"";
    SendMessageW(GetDlgItem(dialog, id), WM_GETTEXT, 512, reinterpret_cast<LPARAM>(text));
    return text;
}

std::string ControlPlace(HWND dialog, int id) {
    RECT place = {};
    GetWindowRect(GetDlgItem(dialog, id), &place);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
    return std::to_string(place.left) + "," + std::to_string(place.top) + " " +
           std::to_string(place.right - place.left) + "x" + std::to_string(place.bottom - place.top);
}

}  // namespace test
