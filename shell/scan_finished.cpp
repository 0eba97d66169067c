#include "shell/scan_finished.h"

#include <cstdio>

#include "shell/main_state.h"
#include "tuner/audio.h"

void FinishScan(CMainState& state, HWND window) {
    std::printf("WM_AUTOSCAN_FINISHED 1\n");
    EnableWindow(window, TRUE);
    MuteOnOff(FALSE);
    ShowWindow(state.m_hListView, SW_SHOW);
    ResumeThread(state.m_hMonitorThread);
    std::printf("WM_AUTOSCAN_FINISHED 2\n");
    // The scan's boxes had a disabled owner, and gave the activation to somebody else when they closed.
    if (!state.m_scan.bEndNow) SetForegroundWindow(window);
}
