#include "tuner/audio.h"

#include "shell/app_block.h"

namespace {
// Between two switchings of the loudspeaker's amplifier, so that it does not click.
constexpr DWORD kAmplifierPause_ms = 10;
}  // namespace

void SpeakerOnOff(BOOL on) {
    if (g_app.pFMDevice == nullptr) return;
    NKDbgPrintfW(L"FM: SpeakerOn = %d\n", g_app.SpeakerOn);
    g_app.pFMDevice->SetSpeaker(on);
    g_app.SpeakerOn = static_cast<BYTE>(on);
}

void MuteOnOff(BOOL mute) {
    if (g_app.pFMDevice == nullptr) return;
    if (!g_app.SpeakerOn) {
        g_app.pFMDevice->SetMute(mute);
        return;
    }
    Sleep(kAmplifierPause_ms);
    SpeakerOnOff(FALSE);
    Sleep(kAmplifierPause_ms);
    g_app.pFMDevice->SetMute(mute);
    Sleep(kAmplifierPause_ms);
    SpeakerOnOff(TRUE);
}

void MuteByVolume(BOOL on) {
    if (g_app.pFMDevice == nullptr) return;
    if (on) {
        g_app.pFMDevice->GetVolume(&g_app.dwSavedVolume);
        g_app.pFMDevice->SetVolume(0);
    } else {
        g_app.pFMDevice->SetVolume(g_app.dwSavedVolume);
    }
}
