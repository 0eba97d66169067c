#include "shell/creation.h"

#include "channels/channel_list_window.h"
#include "recording/pre_record.h"
#include "resources/resource_ids.h"
#include "shell/app_block.h"
#include "shell/main_state.h"
#include "shell/menu_bar.h"
#include "shell/monitor_thread.h"
#include "shell/owned.h"
#include "shell/power_thread.h"
#include "tuner/device.h"
#include "tuner/phone_state.h"

namespace {

// Auto-reset, not signalled: tells one worker thread to end.
HANDLE CreateStopEvent() {
    return CreateEventW(nullptr, FALSE, FALSE, nullptr);
}

void StartBookedRecording(const CMainState& state, HWND window) {
    if (state.m_request.uDuration_min == 0) return;
    const OwnedHandle thread(CreateThread(nullptr, 0, PreRecordThread, window, 0, nullptr));
}

// Each thread runs only with the event that ends it.
void StartWorkerThreads(CMainState& state, HWND window) {
    state.m_hPowerStopEvent = CreateStopEvent();
    state.m_hMonitorStopEvent = CreateStopEvent();
    if (state.m_hPowerStopEvent != nullptr) {
        state.m_hPowerThread = CreateThread(nullptr, 0, PowerNotifyProc, &state, 0, nullptr);
    }
    if (state.m_hMonitorStopEvent != nullptr) {
        state.m_hMonitorThread = CreateThread(nullptr, 0, Main_threadProc, window, 0, nullptr);
    }
}

}  // namespace

BOOL OnCreate(HWND window, const CREATESTRUCTW& create) {
    auto* state = static_cast<CMainState*>(create.lpCreateParams);
    if (state == nullptr) return FALSE;
    SetWindowLongW(window, GWL_USERDATA, reinterpret_cast<LONG_PTR>(state));
    state->m_skin.hWnd = window;
    g_app.activateInfo = {};
    g_app.activateInfo.cbSize = sizeof g_app.activateInfo;
    state->m_hMenuBar = CreateMainMenuBar(window);
    // No sleep timer runs at the start, and its menu says so.
    CheckMenuItem(g_app.hRightSoftKeyMenu, IDC_SLEEP_OFF, MF_BYCOMMAND | MF_CHECKED);

    if (!CreateTunerDevice(window, *state)) return FALSE;
    WatchPhoneState(*state, window);
    StartWorkerThreads(*state, window);
    CreateChannelList(*state, window);
    StartBookedRecording(*state, window);
    return TRUE;
}
