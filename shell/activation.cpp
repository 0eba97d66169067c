#include "shell/activation.h"

#include <aygshell.h>

#include "shell/app_block.h"
#include "shell/main_state.h"
#include "shell/worker_threads.h"

// Suspensions are not balanced here: the system's own count is relied on.
void HandleActivation(CMainState& state, HWND window, WPARAM wParam, LPARAM lParam) {
    SHHandleWMActivate(window, wParam, lParam, &g_app.activateInfo, 0);
    const WORD how = LOWORD(wParam);
    if (how == WA_INACTIVE) {
        NKDbgPrintfW(L"***WA_INACTIVE***\n");
        AllKeys(FALSE);
        SuspendWorker(state.m_hMonitorThread);
    } else if (how == WA_ACTIVE || how == WA_CLICKACTIVE) {
        NKDbgPrintfW(L"===WA_ACTIVE : %d===\n", how);
        ResumeThread(state.m_hMonitorThread);
        SetFocus(state.m_hListView);
    }
}
