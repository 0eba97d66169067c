#include "tuner/rds_dialog.h"

#include <cstdint>

#include "channels/stored_name.h"
#include "resources/resource_ids.h"
#include "shell/app_block.h"
#include "shell/dialogs.h"
#include "shell/relayout.h"
#include "tuner/frequency.h"

namespace {

constexpr int kAnswerCapacity = 64;

struct ServiceRow {
    const WCHAR* pszTrace;
    std::int32_t rds_inf::*flag;
    int nControl;
};
// In the order of the trace.
constexpr ServiceRow kServices[] = {
    {L"rds_inf.b_RDS_AF: %d\n", &rds_inf::b_RDS_AF, IDC_RDS_AF},
    {L"rds_inf.b_RDS_CT: %d\n", &rds_inf::b_RDS_CT, IDC_RDS_CT},
    {L"rds_inf.b_RDS_PS: %d\n", &rds_inf::b_RDS_PS, IDC_RDS_PS},
    {L"rds_inf.b_RDS_PTY: %d\n", &rds_inf::b_RDS_PTY, IDC_RDS_PTY},
    {L"rds_inf.b_RDS_RT: %d\n", &rds_inf::b_RDS_RT, IDC_RDS_RT},
};

void ShowStation(HWND dialog) {
    std::uint32_t channel = 0;
    g_app.pFMDevice->GetChannel(&channel);
    SetDlgItemTextW(dialog, IDC_RDS_FREQUENCY, HeadlineFrequencyText(channel).sz);

    WCHAR name[kChannelTextCapacity];
    const bool stored = FindStoredName(channel, kShownGroupCapacity, name);
    SetDlgItemTextW(dialog, IDC_RDS_CHANNEL_NAME, stored ? name : L"Unknown");
}

void ShowServices(HWND dialog) {
    rds_inf info = {};
    g_app.pFMDevice->GetRDSInfo(&info);
    for (const ServiceRow& row : kServices) NKDbgPrintfW(row.pszTrace, info.*row.flag);

    WCHAR present[kAnswerCapacity] = L"", absent[kAnswerCapacity] = L"";
    LoadStringW(g_app.hInstance, IDS_RDS_PRESENT, present, kAnswerCapacity);
    LoadStringW(g_app.hInstance, IDS_RDS_ABSENT, absent, kAnswerCapacity);
    for (const ServiceRow& row : kServices) {
        SetDlgItemTextW(dialog, row.nControl, info.*row.flag ? present : absent);
    }
}

INT_PTR LayOut(HWND dialog) {
    FillDialog(g_app.hInstance, dialog, IDD_RDS_INFORMATION);
    return FALSE;
}

INT_PTR OnInitDialog(HWND dialog) {
    SetUpDialog(dialog, kFullScreenInputDialog);
    CreateDialogBar(dialog, 0, SHCMBF_HIDESIPBUTTON | SHCMBF_HMENU);
    LayOut(dialog);
    ShowStation(dialog);
    ShowServices(dialog);
    return TRUE;
}

INT_PTR CALLBACK RDSInformationProc(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
    if (message == WM_INITDIALOG) return OnInitDialog(dialog);
    if (message == WM_SIZE) return LayOut(dialog);
    if (message == WM_COMMAND && LOWORD(wParam) == IDOK) return EndDialog(dialog, IDOK);
    return FALSE;
}

}  // namespace

INT_PTR ShowRDSInformation(HWND owner) {
    return RunDialog(owner, IDD_RDS_INFORMATION, RDSInformationProc);
}
