#include "tuner/frequency_display.h"

#include <windows.h>

#include <cstdint>

#include "channels/stored_name.h"
#include "resources/resource_ids.h"
#include "shell/app_block.h"
#include "shell/main_state.h"
#include "skin/skin_paint.h"
#include "tuner/frequency.h"

void RefreshFrequencyDisplay(CMainState& state) {
    if (g_app.pFMDevice == nullptr) return;
    std::uint32_t channel = 0;
    g_app.pFMDevice->GetChannel(&channel);
    DrawSkinText(state.m_skin, TEXT_FREQUENCY, ScreenFrequencyText(channel).sz);

    WCHAR stored[kChannelTextCapacity];
    const WCHAR* name = FindStoredName(channel, kShownGroupCapacity, stored) ? stored : L"Unknown";
    DrawSkinText(state.m_skin, TEXT_CHANNEL_NAME, name);
    DrawDial(state.m_skin, channel, PlainFrequencyText(channel).sz, name);
}
