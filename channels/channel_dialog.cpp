#include "channels/channel_dialog.h"

#include <strsafe.h>

#include "channels/frequency_edit.h"
#include "channels/frequency_input.h"
#include "resources/resource_ids.h"
#include "shell/app_block.h"
#include "shell/dialogs.h"
#include "shell/relayout.h"
#include "shell/settings_key.h"
#include "shell/texts.h"
#include "tuner/frequency.h"

namespace {

constexpr WPARAM kFrequencyLength = 5;
constexpr int kFrequencyCapacity = 32;

ChannelEdit* EditOf(HWND dialog) {
    return reinterpret_cast<ChannelEdit*>(GetWindowLongW(dialog, DWL_USER));
}

INT_PTR LayOut(HWND dialog) {
    FillDialog(g_app.hInstance, dialog, IDD_CHANNEL);
    return FALSE;
}

INT_PTR OnInitDialog(HWND dialog, LPARAM parameter) {
    SetWindowLongW(dialog, DWL_USER, parameter);
    const ChannelEdit& edit = *EditOf(dialog);
    const bool adds = edit.dwMode == kAddChannel;
    SetUpDialog(dialog, kFullScreenInputDialog);
    CreateDialogBar(dialog, adds ? IDM_CHANNEL_ADD : IDM_CHANNEL_EDIT, SHCMBF_HMENU);
    LayOut(dialog);
    SendDlgItemMessageW(dialog, IDC_CHANNEL_FREQUENCY, EM_LIMITTEXT, kFrequencyLength, 0);
    if (!adds) {
        SetDlgItemTextW(dialog, IDC_CHANNEL_NAME, edit.record.szPropRecord_ChannelName);
        SetDlgItemTextW(dialog, IDC_CHANNEL_FREQUENCY,
                        PlainFrequencyText(edit.record.dwPropRecord_ChannelValue).sz);
        SetDlgItemTextW(dialog, IDC_CHANNEL_GUIDE, edit.record.szPropRecord_ChannelPGuide);
    }
    SubclassFrequencyEdit(GetDlgItem(dialog, IDC_CHANNEL_FREQUENCY));
    return TRUE;
}

bool ReadName(HWND dialog, PropRecord& record) {
    GetDlgItemTextW(dialog, IDC_CHANNEL_NAME, record.szPropRecord_ChannelName, kChannelTextCapacity);
    GetDlgItemTextW(dialog, IDC_CHANNEL_GUIDE, record.szPropRecord_ChannelPGuide, kChannelTextCapacity);
    if (record.szPropRecord_ChannelName[0] != L'\0') return true;
    ShowTexts(dialog, IDS_NAME_EMPTY, IDS_INPUT_CAPTION, MB_ICONHAND);
    return false;
}

bool ReadValue(HWND dialog, PropRecord& record) {
    WCHAR text[kFrequencyCapacity] = L"";
    GetDlgItemTextW(dialog, IDC_CHANNEL_FREQUENCY, text, kFrequencyCapacity);
    std::uint32_t channel = 0;
    const FrequencyInput input = ReadFrequency(text, &channel);
    if (input == FrequencyInput::kEmpty) {
        ShowTexts(dialog, IDS_FREQUENCY_EMPTY, IDS_INPUT_CAPTION, MB_ICONHAND);
    } else if (input == FrequencyInput::kInvalid) {
        ShowText(dialog, IDS_FREQUENCY_INVALID, L"FM", MB_ICONEXCLAMATION);
    } else {
        record.dwPropRecord_ChannelValue = channel;
    }
    return input == FrequencyInput::kValid;
}

void Accept(HWND dialog, WORD command) {
    PropRecord& record = EditOf(dialog)->record;
    // What was typed is taken over only when all of it can be: a refused dialog leaves the record as it was.
    PropRecord typed = record;
    if (!ReadName(dialog, typed) || !ReadValue(dialog, typed)) return;
    ReadSelectedGroup(typed.szCountryName, kChannelTextCapacity);
    record = typed;
    EndDialog(dialog, command);
}

void Cancel(HWND dialog, WORD command) {
    EndDialog(dialog, command);
}

struct CommandRow {
    WORD wId;
    void (*handler)(HWND, WORD);
};

constexpr CommandRow kCommands[] = {
    {IDC_CHANNEL_ADD_CANCEL, Cancel}, {IDC_CHANNEL_EDIT_CANCEL, Cancel}, {IDOK, Accept},
    {IDC_CHANNEL_ADD_ACCEPT, Accept}, {IDC_CHANNEL_EDIT_ACCEPT, Accept},
};

INT_PTR CALLBACK ChannelProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) return OnInitDialog(dialog, lParam);
    if (message == WM_SIZE) return LayOut(dialog);
    if (message != WM_COMMAND) return FALSE;
    for (const CommandRow& row : kCommands) {
        if (row.wId != LOWORD(wParam)) continue;
        row.handler(dialog, row.wId);
        return TRUE;
    }
    return FALSE;
}

}  // namespace

INT_PTR RunChannelDialog(HWND owner, ChannelEdit& edit) {
    return RunDialog(owner, IDD_CHANNEL, ChannelProc, reinterpret_cast<LPARAM>(&edit));
}
