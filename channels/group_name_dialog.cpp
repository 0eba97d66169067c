#include "channels/group_name_dialog.h"

#include "resources/resource_ids.h"
#include "shell/app_block.h"
#include "shell/dialogs.h"
#include "shell/relayout.h"

namespace {

GroupNameRequest* RequestOf(HWND dialog) {
    return reinterpret_cast<GroupNameRequest*>(GetWindowLongW(dialog, DWL_USER));
}

INT_PTR LayOut(HWND dialog) {
    FillDialog(g_app.hInstance, dialog, IDD_GROUP_NAME);
    return FALSE;
}

INT_PTR OnInitDialog(HWND dialog, LPARAM request) {
    SetWindowLongW(dialog, DWL_USER, request);
    SetUpDialog(dialog, kFullScreenInputDialog);
    CreateDialogBar(dialog, IDM_GROUPS, SHCMBF_HMENU);
    LayOut(dialog);
    SetDlgItemTextW(dialog, IDC_GROUP_NAME, RequestOf(dialog)->szName);
    return TRUE;
}

INT_PTR OnCommand(HWND dialog, WORD command) {
    if (command == IDC_GROUP_CANCEL) return EndDialog(dialog, command);
    if (command != IDOK && command != IDC_GROUP_ACCEPT) return FALSE;
    GetDlgItemTextW(dialog, IDC_GROUP_NAME, RequestOf(dialog)->szName, kGroupNameCapacity);
    return EndDialog(dialog, command);
}

INT_PTR CALLBACK GroupNameProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) return OnInitDialog(dialog, lParam);
    if (message == WM_SIZE) return LayOut(dialog);
    if (message == WM_COMMAND) return OnCommand(dialog, LOWORD(wParam));
    return FALSE;
}

}  // namespace

bool AskGroupName(HWND owner, GroupNameRequest& request) {
    const INT_PTR result =
        RunDialog(owner, IDD_GROUP_NAME, GroupNameProc, reinterpret_cast<LPARAM>(&request));
    return result == IDOK || result == IDC_GROUP_ACCEPT;
}
