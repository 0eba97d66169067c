#include "shell/information_dialog.h"

#include "resources/resource_ids.h"
#include "shell/app_block.h"
#include "shell/dialogs.h"
#include "shell/relayout.h"

namespace {

INT_PTR LayOut(HWND dialog) {
    FillDialog(g_app.hInstance, dialog, IDD_INFORMATION);
    return FALSE;
}

INT_PTR OnInitDialog(HWND dialog) {
    SetUpDialog(dialog, kFullScreenDialog);
    CreateDialogBar(dialog, IDM_DONE, SHCMBF_HIDESIPBUTTON | SHCMBF_HMENU);
    LayOut(dialog);
    return TRUE;
}

INT_PTR CALLBACK InformationProc(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
    if (message == WM_INITDIALOG) return OnInitDialog(dialog);
    if (message == WM_COMMAND && LOWORD(wParam) == IDOK) return EndDialog(dialog, IDOK);
    if (message == WM_SIZE) return LayOut(dialog);
    if (message == WM_CLOSE) return EndDialog(dialog, kDialogClosed);
    return FALSE;
}

}  // namespace

void ShowInformation(HWND owner) {
    RunDialog(owner, IDD_INFORMATION, InformationProc);
}
