#include "tuner/frequency_display.h"

#include <windows.h>

#include <cstdint>
#include <iterator>

#include "channels/channel_db.h"
#include "resources/resource_ids.h"
#include "shell/app_block.h"
#include "shell/main_state.h"
#include "shell/settings_key.h"
#include "skin/skin_paint.h"
#include "tuner/frequency.h"

namespace {

constexpr std::size_t kShownGroupCapacity = 32;

}  // namespace

void RefreshFrequencyDisplay(CMainState& state) {
    if (g_app.pFMDevice == nullptr) return;
    std::uint32_t channel = 0;
    g_app.pFMDevice->GetChannel(&channel);
    DrawSkinText(state.m_skin, TEXT_FREQUENCY, ScreenFrequencyText(channel).sz);

    WCHAR group[kShownGroupCapacity] = L"";
    ReadSelectedGroup(group, static_cast<UINT>(std::size(group)));
    WCHAR name[kChannelTextCapacity] = L"";
    // A store of its own: a paint may come while a scan is in an operation of the main state's.
    CChannelDB lookup;
    const bool stored = lookup.CEDB_FindChannelName(group, channel, name) != 0;
    DrawSkinText(state.m_skin, TEXT_CHANNEL_NAME, stored ? name : L"Unknown");
}
