#include "shell/dialogs.h"

#include <commctrl.h>

#include "shell/app_block.h"

INT_PTR RunDialog(HWND owner, UINT templateId, DLGPROC procedure, LPARAM parameter) {
    const HRSRC resource = FindResourceW(g_app.hInstance, MAKEINTRESOURCEW(templateId), RT_DIALOG);
    if (resource == nullptr) return -1;
    const HGLOBAL dialogTemplate = LoadResource(g_app.hInstance, resource);
    if (dialogTemplate == nullptr) return -1;
    // A loaded resource is its own memory on the device: there is no lock.
    return DialogBoxIndirectParamW(g_app.hInstance, static_cast<LPCDLGTEMPLATE>(dialogTemplate), owner,
                                   procedure, parameter);
}

void RegisterControls(DWORD classes) {
    const INITCOMMONCONTROLSEX wanted = {sizeof wanted, classes};
    InitCommonControlsEx(&wanted);
}

void SetUpDialog(HWND dialog, DWORD flags) {
    SHINITDLGINFO info = {};
    info.dwMask = SHIDIM_FLAGS;
    info.hDlg = dialog;
    info.dwFlags = flags;
    SHInitDialog(&info);
}

bool CreateDialogBar(HWND dialog, UINT menuId, DWORD flags) {
    SHMENUBARINFO info = {};
    info.cbSize = sizeof info;
    info.hwndParent = dialog;
    info.dwFlags = flags;
    info.nToolBarId = menuId;
    info.hInstRes = g_app.hInstance;
    return SHCreateMenuBar(&info) != FALSE;
}
