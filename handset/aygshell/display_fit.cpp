// Fitting windows to the handset's display.
#include "handset/aygshell/display_fit.h"

#include <algorithm>

#include "handset/coredll/kernel/platform_call.h"
#include "handset/state/handset_protocol.h"

namespace handset {

void FitToDisplay(HWND window) {
    RECT display = {};
    HandsetDisplayRect(&display);
    SetWindowPos(window, nullptr, display.left, display.top, display.right - display.left,
                 display.bottom - display.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

void CentreInDisplay(HWND window) {
    RECT display = {};
    RECT own = {};
    HandsetDisplayRect(&display);
    GetWindowRect(window, &own);
    const LONG spareWidth = (display.right - display.left) - (own.right - own.left);
    const LONG spareHeight = (display.bottom - display.top) - (own.bottom - own.top);
    SetWindowPos(window, nullptr, display.left + std::max(spareWidth, LONG{0}) / 2,
                 display.top + std::max(spareHeight, LONG{0}) / 2, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

bool IsDisplayChange(UINT message, WPARAM wParam) {
    return message == WM_SETTINGCHANGE && wParam == kSettingChangeReset;
}

}  // namespace handset
