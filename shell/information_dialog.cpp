#include "shell/information_dialog.h"

#include "resources/resource_ids.h"
#include "shell/dialogs.h"

namespace {

INT_PTR OnInitDialog(HWND dialog) {
    SetUpDialog(dialog, kFullScreenDialog);
    CreateDialogBar(dialog, IDM_DONE, SHCMBF_HIDESIPBUTTON | SHCMBF_HMENU);
    return TRUE;
}

INT_PTR CALLBACK InformationProc(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
    if (message == WM_INITDIALOG) return OnInitDialog(dialog);
    if (message == WM_COMMAND && LOWORD(wParam) == IDOK) return EndDialog(dialog, IDOK);
    if (message == WM_CLOSE) return EndDialog(dialog, kDialogClosed);
    return FALSE;
}

}  // namespace

void ShowInformation(HWND owner) {
    RunDialog(owner, IDD_INFORMATION, InformationProc);
}
