// SHInitDialog: a dialog takes its place on the handset's display and keeps it when the display turns.
#include "handset/aygshell/dialog.h"

#include <commctrl.h>

#include "handset/aygshell/display_fit.h"
#include "handset/aygshell/menu_bar_window.h"
#include "handset/aygshell/picker_time.h"
#include "handset/base/module_edge.h"
#include "handset/coredll/kernel/platform_call.h"
#include "handset/include/aygshell.h"

namespace handset {
namespace {

constexpr UINT_PTR kSubclassId = 1;
// On the dialog's window: its SHIDIF_… flags.
constexpr wchar_t kFlagsProperty[] = L"KoraHandset.DialogFlags";
constexpr LONG_PTR kFrameStyles = WS_CAPTION | WS_THICKFRAME | WS_SYSMENU | WS_MINIMIZEBOX | WS_MAXIMIZEBOX;
constexpr LONG_PTR kFrameExStyles =
    WS_EX_DLGMODALFRAME | WS_EX_WINDOWEDGE | WS_EX_CLIENTEDGE | WS_EX_STATICEDGE;

bool IsFullScreen(DWORD flags) {
    return (flags & SHIDIF_SIZEDLGFULLSCREEN) != 0;
}

void PlaceDialog(HWND dialog, DWORD flags) {
    if (IsFullScreen(flags)) {
        FillWorkArea(dialog);
    } else {
        CentreInWorkArea(dialog);
    }
}

LRESULT CALLBACK DialogSubclassProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                    DWORD_PTR) try {
    if (message == WM_NCDESTROY) {
        RemovePropW(dialog, kFlagsProperty);
        HandsetForgetDialogFont(dialog);
        RemoveWindowSubclass(dialog, DialogSubclassProc, id);
    }
    if (IsDisplayChange(message, wParam)) {
        HandsetFitDialogFont(dialog);
        PlaceDialog(dialog, ShellDialogFlags(dialog));
    }
    return DefSubclassProc(dialog, message, wParam, lParam);
} catch (...) {
    return handset::EdgeAnswer<LRESULT>();
}

// A full-screen dialog has neither caption nor frame: the device shows its title in the shell's own bar.
void RemoveFrame(HWND dialog) {
    SetWindowLongPtrW(dialog, GWL_STYLE, GetWindowLongPtrW(dialog, GWL_STYLE) & ~kFrameStyles);
    SetWindowLongPtrW(dialog, GWL_EXSTYLE, GetWindowLongPtrW(dialog, GWL_EXSTYLE) & ~kFrameExStyles);
    SetWindowPos(dialog, nullptr, 0, 0, 0, 0,
                 SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

DWORD ShellDialogFlags(HWND window) {
    return static_cast<DWORD>(reinterpret_cast<UINT_PTR>(GetPropW(window, kFlagsProperty)));
}

}  // namespace handset

extern "C" BOOL WINAPI SHInitDialog(PSHINITDLGINFO info) try {
    const CPlatformCall call(true);
    if (info == nullptr || !IsWindow(info->hDlg)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const DWORD flags = (info->dwMask & SHIDIM_FLAGS) != 0 ? info->dwFlags : 0;
    if (!SetPropW(info->hDlg, handset::kFlagsProperty, reinterpret_cast<HANDLE>(UINT_PTR{flags})) ||
        !SetWindowSubclass(info->hDlg, handset::DialogSubclassProc, handset::kSubclassId, 0)) {
        return FALSE;
    }
    HandsetFitDialogFont(info->hDlg);
    handset::SetPickersToHandsetTime(info->hDlg);
    if (handset::IsFullScreen(flags)) handset::RemoveFrame(info->hDlg);
    handset::PlaceDialog(info->hDlg, flags);
    // The empty bar keeps the place of the one that the dialog usually makes next.
    if ((flags & SHIDIF_EMPTYMENU) != 0) {
        const bool done = (flags & SHIDIF_DONEBUTTON) != 0;
        handset::CreateMenuBarWindow(info->hDlg, done ? handset::DoneKey() : handset::SoftKeySet(),
                                     handset::BarKind::Placeholder);
    }
    return TRUE;
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}
