#include "tuner/frequency_display.h"

#include <windows.h>

#include <cstdint>

#include "channels/stored_name.h"
#include "resources/resource_ids.h"
#include "shell/app_block.h"
#include "shell/main_state.h"
#include "skin/skin_paint.h"
#include "tuner/frequency.h"

void ShowFrequency(CMainState& state, std::uint32_t channel, const wchar_t* name) {
    DrawSkinText(state.m_skin, TEXT_FREQUENCY, ScreenFrequencyText(channel).sz);
    DrawSkinText(state.m_skin, TEXT_CHANNEL_NAME, name);
    DrawDial(state.m_skin, channel, PlainFrequencyText(channel).sz, name);
}

void RefreshFrequencyDisplay(CMainState& state) {
    if (g_app.pFMDevice == nullptr) return;
    std::uint32_t channel = 0;
    g_app.pFMDevice->GetChannel(&channel);
    WCHAR name[kChannelTextCapacity];
    const bool stored = FindStoredName(channel, kShownGroupCapacity, name);
    ShowFrequency(state, channel, stored ? name : L"Unknown");
}
