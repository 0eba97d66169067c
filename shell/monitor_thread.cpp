#include "shell/monitor_thread.h"

#include <cstdint>

#include "recording/storage_card.h"
#include "resources/resource_ids.h"
#include "shell/app_block.h"
#include "shell/exception_guard.h"
#include "shell/main_state.h"
#include "shell/messages.h"
#include "shell/settings_key.h"
#include "skin/skin_paint.h"
#include "tuner/af_switch.h"
#include "tuner/rds_display.h"
#include "tuner/weak_signal.h"

namespace {

constexpr DWORD kMonitorPeriod_ms = 700;

std::int32_t ReadAndShowSignal(CMainState& state) {
    std::int32_t level = 0;
    g_app.pFMDevice->GetSignal(&level);
    const bool changed = level != g_app.lLastSignal;
    if (changed) NKDbgPrintfW(L"FM: Signal = %d \n", level);
    // A paint of the whole window, after a turn of the screen or a dialog, leaves the background there.
    if (changed || !SignalIsShown(state.m_skin)) DrawSignal(state.m_skin, level);
    g_app.lLastSignal = level;
    return level;
}

void ShowStereo(CMainState& state) {
    const bool stereo = g_app.pFMDevice->GetStereo() == 0;
    ShowSkinText(state.m_skin, TEXT_STEREO, stereo ? L"Stereo" : L"");
}

// A recording under the user's own name is taken to lie on the card.
void StopRecordingWithoutCard(HWND window) {
    if (!g_app.bRecordingActive || ReadSetting(kSaveFileType) == 0) return;
    if (GetFileAttributesW(kStorageCard) != INVALID_FILE_ATTRIBUTES) return;
    NKDbgPrintfW(L"FM: *** SD Card Removed while Recording, Stop Recording!\n");
    SendMessageW(window, WM_SKIN_CLICK, SKIN_STOP_RECORD, 0);
}

// False when the thread is to end.
bool WaitAndRunRound(CMainState& state, HWND window) {
    const DWORD waited = WaitForSingleObject(state.m_hMonitorStopEvent, kMonitorPeriod_ms);
    if (waited == WAIT_TIMEOUT) RunMonitorRound(state, window);
    return waited != WAIT_OBJECT_0;
}

}  // namespace

void RunMonitorRound(CMainState& state, HWND window) {
    if (g_app.pFMDevice == nullptr) return;
    const std::int32_t level = ReadAndShowSignal(state);
    if (ReadSetting(kEnableMute) != 0) MuteWhileWeak(state, level);
    KeepWeakNotice(state);
    ShowStereo(state);
    if (ReadSetting(kEnableRDSPSPTY) != 0) ShowRDS(state);
    if (ReadSetting(kEnableAFAutoSwitch) != 0 && IsWeakSignal(level)) {
        // Kept: without an alternative frequency the round ends here, before the look at the card.
        if (!SwitchToBestAF(window)) return;
    }
    StopRecordingWithoutCard(window);
}

DWORD WINAPI Main_threadProc(LPVOID parameter) {
    const auto window = static_cast<HWND>(parameter);
    CMainState* state = MainStateOf(window);
    bool running = true;
    while (running && state != nullptr) {
        if (RunGuarded([&] { running = WaitAndRunRound(*state, window); })) continue;
        NKDbgPrintfW(L"FM: *** Exception at Main_threadProc\n");
        state = MainStateOf(window);
    }
    return 0;
}
