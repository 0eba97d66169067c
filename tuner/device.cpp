#include "tuner/device.h"

#include <objbase.h>

#include <cstdint>

#include "resources/resource_ids.h"
#include "shell/app_block.h"
#include "shell/main_state.h"
#include "skin/skin_access.h"
#include "tuner/audio.h"

namespace {

// The receiver settles after power-up and after the switch of its output.
constexpr DWORD kSettling_ms = 100;

bool CreateDevice() {
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    CoCreateInstance(CLSID_CFMDevice, nullptr, CLSCTX_INPROC_SERVER, IID_IFMDevice,
                     reinterpret_cast<void**>(&g_app.pFMDevice));
    return g_app.pFMDevice != nullptr;
}

void PowerUp(HWND window) {
    // Only E_FAIL, "no receiver", is reported; the radio runs on all the same.
    if (g_app.pFMDevice->Initialize() == E_FAIL) {
        MessageBoxW(window, L"FM Device Initial Error", L"Error", MB_OK);
    }
    Sleep(kSettling_ms);
    SpeakerOnOff(FALSE);
    Sleep(kSettling_ms);
    g_app.pFMDevice->SetMute(FALSE);
}

void TuneRequestedChannel(const CommandLineRequest& request) {
    if (request.uRecord != 1 || request.uChannel == 0) return;
    g_app.pFMDevice->SetChannel(request.uChannel);
}

void PlaceVolumeSlider(CSkin& skin) {
    std::uint32_t percent = 0;
    g_app.pFMDevice->GetVolume(&percent);
    SetSliderPos(skin, SKIN_VOLUME, GetSliderMax(skin, SKIN_VOLUME) * static_cast<int>(percent) / 100);
}

}  // namespace

BOOL CreateTunerDevice(HWND window, CMainState& state) {
    if (!CreateDevice()) {
        PostQuitMessage(0);
        return FALSE;
    }
    PowerUp(window);
    TuneRequestedChannel(state.m_request);
    PlaceVolumeSlider(state.m_skin);
    return TRUE;
}

void CloseTunerDevice() {
    SpeakerOnOff(FALSE);
    MuteOnOff(FALSE);
    if (g_app.bLowSignalMute) MuteByVolume(FALSE);
    if (g_app.pFMDevice == nullptr) return;
    g_app.pFMDevice->Close();
    g_app.pFMDevice->Release();
    g_app.pFMDevice = nullptr;
}
