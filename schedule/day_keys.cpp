#include "schedule/day_keys.h"

#include "resources/resource_ids.h"
#include "schedule/day_buttons.h"
#include "shell/owned.h"

namespace {

constexpr int kFrameInset = 2;

// Of all seven.
WNDPROC g_dayProcedure = nullptr;

bool Presses(WPARAM key) {
    return key == VK_RETURN || key == VK_SPACE;
}

bool IsPress(LPARAM message) {
    const auto* const key = reinterpret_cast<const MSG*>(message);
    return key != nullptr && key->message == WM_KEYDOWN && Presses(key->wParam);
}

void Touch(HWND day) {
    const HWND dialog = GetParent(day);
    RECT place = {};
    GetWindowRect(day, &place);
    POINT middle = {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
    ScreenToClient(dialog, &middle);
    SendMessageW(dialog, WM_LBUTTONUP, 0, MAKELPARAM(middle.x, middle.y));
}

void DrawFrame(HWND day) {
    RECT frame = {};
    GetClientRect(day, &frame);
    InflateRect(&frame, -kFrameInset, -kFrameInset);
    const WindowDC dc(day);
    DrawFocusRect(dc.get(), &frame);
}

LRESULT CALLBACK DayProc(HWND day, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_GETDLGCODE && IsPress(lParam)) return DLGC_WANTALLKEYS;
    if (message == WM_KEYDOWN && Presses(wParam)) {
        Touch(day);
        return 0;
    }
    if (message == WM_SETFOCUS || message == WM_KILLFOCUS) InvalidateRect(day, nullptr, TRUE);
    const LRESULT result = CallWindowProcW(g_dayProcedure, day, message, wParam, lParam);
    if (message == WM_PAINT && GetFocus() == day) DrawFrame(day);
    return result;
}

}  // namespace

void GiveDaysKeys(HWND dialog) {
    for (int day = 0; day < kDays; ++day) {
        const HWND button = GetDlgItem(dialog, IDC_SCHEDULE_SUNDAY + day);
        if (button == nullptr) continue;
        const auto procedure = reinterpret_cast<LONG_PTR>(&DayProc);
        g_dayProcedure = reinterpret_cast<WNDPROC>(SetWindowLongW(button, GWL_WNDPROC, procedure));
    }
}
