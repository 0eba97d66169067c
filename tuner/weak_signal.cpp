#include "tuner/weak_signal.h"

#include "resources/resource_ids.h"
#include "shell/app_block.h"
#include "shell/main_state.h"
#include "skin/skin_paint.h"
#include "tuner/audio.h"

namespace {

constexpr std::int32_t kHighestWeakLevel = 15;
constexpr int kNoticeCapacity = 100;

void ShowNotice(CMainState& state) {
    WCHAR notice[kNoticeCapacity] = L"";
    LoadStringW(g_app.hInstance, IDS_LOW_SIGNAL, notice, kNoticeCapacity);
    ShowSkinText(state.m_skin, TEXT_LOW_SIGNAL, notice);
}

void Restore(CMainState& state) {
    NKDbgPrintfW(L"FM: === UN-Mute (for normal signal)\r\n");
    ShowSkinText(state.m_skin, TEXT_LOW_SIGNAL, L"");
    MuteByVolume(FALSE);
    g_app.bLowSignalMute = FALSE;
}

void Mute(CMainState& state) {
    NKDbgPrintfW(L"FM: === Mute (for low signal)\r\n");
    ShowNotice(state);
    MuteByVolume(TRUE);
    g_app.bLowSignalMute = TRUE;
}

}  // namespace

bool IsWeakSignal(std::int32_t level) {
    return level <= kHighestWeakLevel;
}

void MuteWhileWeak(CMainState& state, std::int32_t level) {
    const bool weak = IsWeakSignal(level);
    if (!weak && g_app.bLowSignalMute) Restore(state);
    if (weak && !g_app.bLowSignalMute) Mute(state);
}

void KeepWeakNotice(CMainState& state) {
    if (g_app.bLowSignalMute) ShowNotice(state);
}
