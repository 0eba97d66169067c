#include "shell/settings_dialog.h"

#include <commdlg.h>
#include <regext.h>

#include "resources/resource_ids.h"
#include "shell/app_block.h"
#include "shell/dialogs.h"
#include "shell/relayout.h"
#include "shell/settings_key.h"
#include "skin/screen.h"
#include "tuner/audio.h"

namespace {

void Check(HWND dialog, int id, bool check) {
    SendDlgItemMessageW(dialog, id, BM_SETCHECK, check ? BST_CHECKED : BST_UNCHECKED, 0);
}

bool IsChecked(HWND dialog, int id) {
    return SendDlgItemMessageW(dialog, id, BM_GETCHECK, 0, 0) == BST_CHECKED;
}

// --- Recording format -----------------------------------------------------------------------------------

struct FormatRow {
    int nId;
    DWORD dwType;
};

// clang-format off
constexpr FormatRow kFormats[] = {
    {IDC_RECORD_AMR,        0},
    {IDC_RECORD_WAV,        1},
    {IDC_RECORD_WAV_STEREO, 2},
};
// clang-format on

// What no button stands for checks none, and so does a value that was never stored: the recording takes the
// first format then, but nobody has chosen it.
void ShowFormat(HWND dialog) {
    DWORD type = ARRAYSIZE(kFormats);
    RegistryGetDWORD(HKEY_CLASSES_ROOT, kSettingsKey, kRecordAudioType, &type);
    for (const FormatRow& row : kFormats) {
        if (row.dwType == type) Check(dialog, row.nId, true);
    }
}

void ChooseFormat(HWND dialog, int id) {
    for (const FormatRow& row : kFormats) {
        if (row.nId != id) Check(dialog, row.nId, false);
    }
    for (const FormatRow& row : kFormats) {
        if (row.nId == id) WriteSetting(kRecordAudioType, row.dwType);
    }
}

// --- Place of the recordings ------------------------------------------------------------------------------

void EnableFileName(HWND dialog, bool enable) {
    EnableWindow(GetDlgItem(dialog, IDC_SAVE_BROWSE), enable);
    EnableWindow(GetDlgItem(dialog, IDC_SAVE_FILE_NAME), enable);
}

void ShowFileName(HWND dialog) {
    WCHAR name[MAX_PATH] = L"";
    RegistryGetString(HKEY_CLASSES_ROOT, kSettingsKey, kDefineFileName, name, ARRAYSIZE(name));
    SetDlgItemTextW(dialog, IDC_SAVE_FILE_NAME, name);
}

void ShowPlace(HWND dialog) {
    if (ReadSetting(kSaveFileType) == 0) {
        Check(dialog, IDC_SAVE_DEFAULT, true);
        return;
    }
    Check(dialog, IDC_SAVE_DEFINED, true);
    EnableFileName(dialog, true);
}

void ChooseDefaultPlace(HWND dialog, int) {
    Check(dialog, IDC_SAVE_DEFINED, false);
    EnableFileName(dialog, false);
    WriteSetting(kSaveFileType, 0);
}

void ChooseDefinedPlace(HWND dialog, int) {
    Check(dialog, IDC_SAVE_DEFAULT, false);
    if (!IsChecked(dialog, IDC_SAVE_DEFINED)) return;
    EnableFileName(dialog, true);
    ShowFileName(dialog);
    WriteSetting(kSaveFileType, 1);
}

void BrowseForFile(HWND dialog, int) {
    WCHAR path[MAX_PATH] = L"";
    OPENFILENAMEW request = {};
    // The record as the device knows it (76 bytes there), without what later desktops have added.
    request.lStructSize = sizeof(request);
    request.hwndOwner = dialog;
    request.lpstrFile = path;
    request.nMaxFile = ARRAYSIZE(path);
    request.lpstrInitialDir = L"\\";
    if (!GetSaveFileNameW(&request)) return;
    RegistrySetString(HKEY_CLASSES_ROOT, kSettingsKey, kDefineFileName, path);
    SetDlgItemTextW(dialog, IDC_SAVE_FILE_NAME, path);
}

// --- Check boxes ------------------------------------------------------------------------------------------

// Kept: the saved volume is restored even if the radio was never muted for a weak signal. It is 0 then, and
// the radio falls silent until the volume is raised by hand.
void EndWeakSignalMute() {
    MuteOnOff(FALSE);
    MuteByVolume(FALSE);
    g_app.bLowSignalMute = 0;
}

struct CheckRow {
    int nId;
    const WCHAR* pszValue;
    void (*unchecked)();
};

// clang-format off
constexpr CheckRow kChecks[] = {
    {IDC_SHOW_RDS,  kEnableRDSPSPTY,     nullptr},
    {IDC_MUTE_WEAK, kEnableMute,         EndWeakSignalMute},
    {IDC_AF_SWITCH, kEnableAFAutoSwitch, nullptr},
};
// clang-format on

void ApplyCheck(HWND dialog, int id) {
    const bool checked = IsChecked(dialog, id);
    for (const CheckRow& row : kChecks) {
        if (row.nId != id) continue;
        WriteSetting(row.pszValue, checked ? 1 : 0);
        if (!checked && row.unchecked != nullptr) row.unchecked();
    }
}

// --- The dialog -------------------------------------------------------------------------------------------

void EndDone(HWND dialog, int) {
    EndDialog(dialog, 0);
}
void EndCancelled(HWND dialog, int) {
    EndDialog(dialog, IDC_SETTINGS_CANCEL);
}

struct CommandRow {
    int nId;
    void (*handler)(HWND dialog, int id);
    bool bEnds;
};

// clang-format off
constexpr CommandRow kCommands[] = {
    {IDC_RECORD_WAV_STEREO, ChooseFormat,       false},
    {IDC_RECORD_WAV,        ChooseFormat,       false},
    {IDC_RECORD_AMR,        ChooseFormat,       false},
    {IDC_SAVE_DEFAULT,      ChooseDefaultPlace, false},
    {IDC_SAVE_DEFINED,      ChooseDefinedPlace, false},
    {IDC_SAVE_BROWSE,       BrowseForFile,      false},
    {IDC_MUTE_WEAK,         ApplyCheck,         false},
    {IDC_SHOW_RDS,          ApplyCheck,         false},
    {IDC_AF_SWITCH,         ApplyCheck,         false},
    {IDOK,                  EndDone,            true},
    {IDC_SETTINGS_DONE,     EndDone,            true},
    {IDC_SETTINGS_CANCEL,   EndCancelled,       true},
};
// clang-format on

INT_PTR OnInitDialog(HWND dialog) {
    SetUpDialog(dialog, kFullScreenDialog);
    // Kept: without its soft keys the dialog shows no settings.
    if (!CreateDialogBar(dialog, IDM_SETTINGS, SHCMBF_HIDESIPBUTTON | SHCMBF_HMENU)) return FALSE;
    ShowFormat(dialog);
    ShowPlace(dialog);
    ShowFileName(dialog);
    for (const CheckRow& row : kChecks) Check(dialog, row.nId, ReadSetting(row.pszValue) != 0);
    return TRUE;
}

INT_PTR OnCommand(HWND dialog, int id) {
    for (const CommandRow& row : kCommands) {
        if (row.nId != id) continue;
        row.handler(dialog, id);
        return row.bEnds;
    }
    return FALSE;
}

UINT TemplateOfScreen() {
    return IsPortraitScreen() ? IDD_SETTINGS_PORTRAIT : IDD_SETTINGS_LANDSCAPE;
}

INT_PTR OnSize(HWND dialog) {
    RelayoutDialog(g_app.hInstance, dialog, TemplateOfScreen());
    return FALSE;
}

}  // namespace

void ShowSettings(HWND owner) {
    RunDialog(owner, TemplateOfScreen(), SettingsProc);
}

INT_PTR CALLBACK SettingsProc(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
    if (message == WM_INITDIALOG) return OnInitDialog(dialog);
    if (message == WM_COMMAND) return OnCommand(dialog, LOWORD(wParam));
    if (message == WM_SIZE) return OnSize(dialog);
    if (message == WM_CLOSE) return EndDialog(dialog, kDialogClosed);
    return FALSE;
}
