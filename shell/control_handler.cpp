// What the buttons, toggles and the slider of the main screen do: the main state's control handler.
#include <cstdint>

#include "recording/recording_control.h"
#include "resources/resource_ids.h"
#include "shell/app_block.h"
#include "shell/main_state.h"
#include "shell/messages.h"
#include "skin/skin_access.h"
#include "tuner/af_dialog.h"
#include "tuner/audio.h"
#include "tuner/frequency.h"
#include "tuner/frequency_display.h"
#include "tuner/rds_dialog.h"
#include "tuner/wait_cursor.h"

namespace {

// State of a toggle, as its frame in the skin says.
constexpr int kToggleOff = 0;
constexpr int kToggleOn = 2;
// The loudspeaker's amplifier after a change of the mute.
constexpr DWORD kAfterMute_ms = 400;

struct ControlEvent {
    CMainState& state;
    HWND window;
    int id;
    LPARAM lParam;
};

int ToggleState(const ControlEvent& event) {
    int frame = kToggleOff;
    GetButtonFrame(event.state.m_skin, event.id, &frame);
    return frame;
}

void SetVolumeBySlider(const ControlEvent& event) {
    const int range = GetSliderMax(event.state.m_skin, event.id);
    if (range <= 0) return;
    const auto percent = static_cast<std::uint32_t>(event.lParam * 100 / range);
    g_app.pFMDevice->SetVolume(percent);
    NKDbgPrintfW(L"FM: User SetVolume to %d\n", percent);
}

void SeekDown(const ControlEvent& event) {
    const WaitCursor wait;
    g_app.pFMDevice->SeekPrev();
    RefreshFrequencyDisplay(event.state);
}

void SeekUp(const ControlEvent& event) {
    const WaitCursor wait;
    g_app.pFMDevice->SeekNext();
    RefreshFrequencyDisplay(event.state);
}

// Kept: a step past the end of the band is the device's to refuse, so the first press at 87.50 MHz asks for
// 87.40.
void StepBy(const ControlEvent& event, std::uint32_t step_10kHz) {
    std::uint32_t channel = 0;
    g_app.pFMDevice->GetChannel(&channel);
    g_app.pFMDevice->SetChannel(channel + step_10kHz);
    RefreshFrequencyDisplay(event.state);
}

void StepDown(const ControlEvent& event) {
    StepBy(event, 0 - kTuningStep_10kHz);
}
void StepUp(const ControlEvent& event) {
    StepBy(event, kTuningStep_10kHz);
}

void SelectOutput(const ControlEvent& event) {
    const int toggle = ToggleState(event);
    g_app.pFMDevice->SetBTAudio(FALSE);
    event.state.m_bSpeakerSelected = toggle == kToggleOn;
    event.state.m_BTInUse = FALSE;
    SpeakerOnOff(toggle != kToggleOff);
}

void Mute(CMainState& state) {
    state.m_bMuted = TRUE;
    MuteOnOff(TRUE);
    if (state.m_BTInUse) g_app.pFMDevice->SetBTAudio(FALSE);
}

void Unmute(CMainState& state) {
    state.m_bMuted = FALSE;
    MuteOnOff(FALSE);
    if (state.m_BTInUse) {
        g_app.pFMDevice->SetBTAudio(TRUE);
    } else if (state.m_bSpeakerSelected) {
        SpeakerOnOff(TRUE);
    }
}

void ApplyMuteToggle(const ControlEvent& event) {
    const int toggle = ToggleState(event);
    if (toggle != kToggleOff && toggle != kToggleOn) return;
    if (toggle == kToggleOn) {
        Mute(event.state);
    } else {
        Unmute(event.state);
    }
    if (g_app.SpeakerOn) Sleep(kAfterMute_ms);
}

void ListAFs(const ControlEvent& event) {
    if (event.state.m_bRecording) return;
    rds_inf info = {};
    g_app.pFMDevice->GetRDSInfo(&info);
    if (info.b_RDS_AF) ShowAFList(event.window);
}

void InformOnRDS(const ControlEvent& event) {
    ShowRDSInformation(event.window);
}

// lParam of a click that nobody is to be asked about.
constexpr DWORD kSilentClick = 0xFFFFFFFF;

void ToggleRecording(const ControlEvent& event) {
    StartOrStopRecording(event.state, event.window, static_cast<DWORD>(event.lParam) == kSilentClick);
}

void StopRecording(const ControlEvent& event) {
    stop_record(event.state, event.window, FALSE);
}

constexpr int kAnyControl = -1;

struct ControlRow {
    UINT uMessage;
    int nId;
    void (*handler)(const ControlEvent&);
};

// clang-format off
constexpr ControlRow kControls[] = {
    {WM_SKIN_SLIDER, kAnyControl,          SetVolumeBySlider},
    {WM_SKIN_REPEAT, SKIN_SEEK_DOWN,       SeekDown},
    {WM_SKIN_REPEAT, SKIN_SEEK_UP,         SeekUp},
    {WM_SKIN_REPEAT, SKIN_STEP_DOWN,       StepDown},
    {WM_SKIN_REPEAT, SKIN_STEP_UP,         StepUp},
    {WM_SKIN_CLICK,  SKIN_RECORD,          ToggleRecording},
    {WM_SKIN_CLICK,  SKIN_OUTPUT,          SelectOutput},
    {WM_SKIN_CLICK,  SKIN_MUTE,            ApplyMuteToggle},
    {WM_SKIN_CLICK,  SKIN_STOP_RECORD,     StopRecording},
    {WM_SKIN_CLICK,  SKIN_AF_LIST,         ListAFs},
    {WM_SKIN_CLICK,  SKIN_RDS_INFORMATION, InformOnRDS},
};
// clang-format on

const ControlRow* FindControl(UINT message, int id) {
    for (const ControlRow& row : kControls) {
        if (row.uMessage == message && (row.nId == kAnyControl || row.nId == id)) return &row;
    }
    return nullptr;
}

}  // namespace

LRESULT CMainState::OnControl(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    // The high word tells how a click came about, which makes no difference here.
    const int id = LOWORD(wParam);
    const ControlRow* row = FindControl(message, id);
    if (row == nullptr) return 0;
    if (g_app.pFMDevice != nullptr) row->handler({*this, window, id, lParam});
    return 0;
}
