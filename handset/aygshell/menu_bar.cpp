// SHCreateMenuBar and SHFindMenuBar: what a program asks for, checked and turned into a bar.
#include <windows.h>

#include <commctrl.h>

#include <optional>

#include "handset/aygshell/dialog.h"
#include "handset/aygshell/menu_bar_window.h"
#include "handset/aygshell/soft_keys.h"
#include "handset/base/module_edge.h"
#include "handset/coredll/kernel/platform_call.h"
#include "handset/include/aygshell.h"

namespace {

bool IsValid(const SHMENUBARINFO& info) {
    if (info.cbSize != sizeof info || !IsWindow(info.hwndParent)) return false;
    // The bar follows its parent's messages, which only the parent's own thread sees.
    return GetWindowThreadProcessId(info.hwndParent, nullptr) == GetCurrentThreadId();
}

std::optional<handset::SoftKeySet> RequestedKeys(const SHMENUBARINFO& info) {
    if ((info.dwFlags & SHCMBF_EMPTYBAR) != 0) return handset::SoftKeySet();
    if ((info.dwFlags & SHCMBF_HMENU) == 0) {
        return handset::SoftKeysFromBarResource(info.hInstRes, info.nToolBarId);
    }
    if (info.nToolBarId == 0) return handset::SoftKeySet();
    return handset::SoftKeysFromMenu(info.hInstRes, info.nToolBarId);
}

}  // namespace

extern "C" BOOL WINAPI SHInitExtraControls() try {
    const CPlatformCall call;
    const INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_BAR_CLASSES};
    return InitCommonControlsEx(&classes);
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}

extern "C" BOOL WINAPI SHCreateMenuBar(PSHMENUBARINFO info) try {
    const CPlatformCall call(true);
    if (info == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    info->hwndMB = nullptr;
    if (!IsValid(*info)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    std::optional<handset::SoftKeySet> keys = RequestedKeys(*info);
    if (!keys) {
        SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
        return FALSE;
    }
    // Device differs: the device has the done button of a dialog in the shell's bar at the top of the screen.
    // Here a bar that would be empty shows it.
    const bool needsDone = (handset::ShellDialogFlags(info->hwndParent) & SHIDIF_DONEBUTTON) != 0;
    if (keys->keys.empty() && needsDone) keys = handset::DoneKey();
    const bool hidden = (info->dwFlags & SHCMBF_HIDDEN) != 0;
    info->hwndMB = handset::CreateMenuBarWindow(info->hwndParent, std::move(*keys),
                                                hidden ? handset::BarKind::Hidden : handset::BarKind::Shown);
    return info->hwndMB != nullptr;
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}

extern "C" HWND WINAPI SHFindMenuBar(HWND parent) try {
    const CPlatformCall call;
    return IsWindow(parent) ? handset::FindMenuBarWindow(parent) : nullptr;
} catch (...) {
    return handset::EdgeAnswer<HWND>();
}
