// Fitting windows to the handset's display.
#include "handset/aygshell/display_fit.h"

#include <algorithm>

#include "handset/coredll/kernel/platform_call.h"
#include "handset/state/handset_protocol.h"

namespace handset {

void FillWorkArea(HWND window) {
    RECT area = {};
    HandsetWorkArea(&area);
    SetWindowPos(window, nullptr, area.left, area.top, area.right - area.left, area.bottom - area.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void CentreInWorkArea(HWND window) {
    RECT area = {};
    RECT own = {};
    HandsetWorkArea(&area);
    GetWindowRect(window, &own);
    const LONG spareWidth = (area.right - area.left) - (own.right - own.left);
    const LONG spareHeight = (area.bottom - area.top) - (own.bottom - own.top);
    SetWindowPos(window, nullptr, area.left + std::max(spareWidth, LONG{0}) / 2,
                 area.top + std::max(spareHeight, LONG{0}) / 2, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

bool IsDisplayChange(UINT message, WPARAM wParam) {
    return message == WM_SETTINGCHANGE && wParam == kSettingChangeReset;
}

}  // namespace handset
