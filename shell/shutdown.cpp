#include "shell/shutdown.h"

#include <cstdio>

#include "recording/recording_control.h"
#include "shell/app_block.h"
#include "shell/main_state.h"
#include "shell/messages.h"
#include "shell/worker_threads.h"
#include "tuner/device.h"
#include "tuner/phone_state.h"

namespace {

void CloseAndClear(HANDLE& handle) {
    CloseHandle(handle);
    handle = nullptr;
}

// Closed while recording, by the headset or the sleep timer: the file is ended properly, and nobody is asked.
void EndRecording(CMainState& state, HWND window) {
    if (state.m_pRecorder != nullptr) stop_record(state, window, TRUE);
}

// Kept: the scan thread never clears the handle that it closed, so after any scan this runs on a stale
// handle; it is not released and closed again, and the message finds nothing left to undo.
void EndScan(CMainState& state, HWND window) {
    EndAutoScan(state);
    if (state.m_hMutex == nullptr) return;
    std::printf("m_hMutex.........");
    ReleaseScanMutex(state);
    SendMessageW(window, WM_AUTOSCAN_FINISHED, 0, 0);
}

void EndPowerThread(CMainState& state) {
    if (state.m_hPowerStopEvent != nullptr) EventModify(state.m_hPowerStopEvent, EVENT_SET);
    if (state.m_hPowerThread != nullptr) {
        JoinWorker(state.m_hPowerThread);
        CloseAndClear(state.m_hPowerThread);
    }
    if (state.m_hPowerStopEvent != nullptr) CloseAndClear(state.m_hPowerStopEvent);
}

// However often it was suspended: a window that is told twice that it goes to the back suspends twice.
void ResumeWholly(HANDLE thread) {
    constexpr DWORD kFailed = static_cast<DWORD>(-1);
    DWORD previous = ResumeThread(thread);
    while (previous > 1 && previous != kFailed) previous = ResumeThread(thread);
}

void EndMonitorThread(CMainState& state) {
    if (state.m_hMonitorStopEvent != nullptr) {
        // The thread may be suspended (window in the back, scan running) and would never see its event.
        ResumeWholly(state.m_hMonitorThread);
        EventModify(state.m_hMonitorStopEvent, EVENT_SET);
    }
    if (state.m_hMonitorThread != nullptr) {
        NKDbgPrintfW(L"FM: ResumeThread: Before...\n");
        JoinWorker(state.m_hMonitorThread);
        NKDbgPrintfW(L"FM: ResumeThread: After...\n");
        CloseAndClear(state.m_hMonitorThread);
    }
    if (state.m_hMonitorStopEvent != nullptr) CloseAndClear(state.m_hMonitorStopEvent);
}

void DeleteListObjects(CMainState& state) {
    DeleteObject(state.m_hListBackground);
    DeleteObject(state.m_hListFont);
    state.m_hListBackground = nullptr;
    state.m_hListFont = nullptr;
}

}  // namespace

void ShutDown(CMainState& state, HWND window) {
    // Before anything that takes its time: a scan that begins anew meanwhile would empty the user's group.
    state.m_scan.bEndNow = true;
    EndRecording(state, window);
    EndScan(state, window);
    UnwatchPhoneState(state);
    EndPowerThread(state);
    EndMonitorThread(state);
    DeleteListObjects(state);
    CloseTunerDevice();
    DestroyWindow(state.m_hMenuBar);
    PostQuitMessage(0);
}
