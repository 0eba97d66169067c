// Activation and settings changes: the focus survives a visit to another window, and the window follows the
// display when it turns.
#include "handset/aygshell/display_fit.h"
#include "handset/base/module_edge.h"
#include "handset/coredll/kernel/platform_call.h"
#include "handset/include/aygshell.h"

namespace {

bool IsWithin(HWND window, HWND focus) {
    return focus == window || IsChild(window, focus);
}

void RememberFocus(HWND window, SHACTIVATEINFO* info) {
    const HWND focus = GetFocus();
    if (focus != nullptr && IsWithin(window, focus)) info->hwndLastFocus = focus;
    info->fActive = 0;
}

void RestoreFocus(HWND window, SHACTIVATEINFO* info) {
    info->fActive = 1;
    if (IsWindow(info->hwndLastFocus) && IsWithin(window, info->hwndLastFocus)) SetFocus(info->hwndLastFocus);
}

bool AreValid(HWND window, const SHACTIVATEINFO* info) {
    if (info != nullptr && info->cbSize == sizeof *info && IsWindow(window)) return true;
    SetLastError(ERROR_INVALID_PARAMETER);
    return false;
}

}  // namespace

extern "C" BOOL WINAPI SHHandleWMActivate(HWND window, WPARAM wParam, LPARAM, SHACTIVATEINFO* info,
                                          DWORD) try {
    const CPlatformCall call(true);
    if (!AreValid(window, info)) return FALSE;
    if (LOWORD(wParam) == WA_INACTIVE) {
        RememberFocus(window, info);
    } else {
        RestoreFocus(window, info);
    }
    return TRUE;
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}

extern "C" BOOL WINAPI SHHandleWMSettingChange(HWND window, WPARAM wParam, LPARAM, SHACTIVATEINFO* info) try {
    const CPlatformCall call(true);
    if (!AreValid(window, info)) return FALSE;
    if (handset::IsDisplayChange(WM_SETTINGCHANGE, wParam)) handset::FillWorkArea(window);
    return TRUE;
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}
