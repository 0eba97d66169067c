#include "tuner/frequency_display.h"

#include <windows.h>

#include <regext.h>

#include <cstdint>
#include <iterator>

#include "resources/resource_ids.h"
#include "shell/app_block.h"
#include "shell/main_state.h"
#include "skin/skin_paint.h"
#include "tuner/frequency.h"

namespace {

constexpr std::size_t kShownGroupCapacity = 32;
constexpr std::size_t kChannelNameCapacity = 260;

// Looks up the name that the group keeps for the frequency. The one place to join the channel store to the
// display: nothing stores channels yet, so no frequency has a name.
bool FindStoredChannelName(CChannelDB&, const WCHAR* /*group*/, std::uint32_t /*channel*/, WCHAR* /*name*/) {
    return false;
}

}  // namespace

void RefreshFrequencyDisplay(CMainState& state) {
    if (g_app.pFMDevice == nullptr) return;
    std::uint32_t channel = 0;
    g_app.pFMDevice->GetChannel(&channel);
    DrawSkinText(state.m_skin, TEXT_FREQUENCY, ScreenFrequencyText(channel).sz);

    WCHAR group[kShownGroupCapacity] = L"";
    RegistryGetString(HKEY_CLASSES_ROOT, kFMDeviceKey, L"Selected", group,
                      static_cast<UINT>(std::size(group)));
    WCHAR name[kChannelNameCapacity] = L"";
    const bool stored = FindStoredChannelName(state.m_ChannelDB, group, channel, name);
    DrawSkinText(state.m_skin, TEXT_CHANNEL_NAME, stored ? name : L"Unknown");
}
