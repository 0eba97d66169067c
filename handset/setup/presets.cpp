// First registry values and preset favourites.
#include "handset/setup/presets.h"

#include <windows.h>

#include "handset/controls/device_registry.h"
#include "handset/include/tuner_slots.h"
#include "handset/state/handset_state.h"
#include "handset/state/power_manager.h"
#include "handset/state/tuner_values.h"

namespace panel {
namespace {

struct FirstDword {
    const wchar_t* key;
    const wchar_t* value;
    DWORD data;
};
struct FirstString {
    const wchar_t* key;
    const wchar_t* value;
    const wchar_t* data;
};

constexpr wchar_t kTimeoutsKey[] = L"HKLM\\System\\CurrentControlSet\\Control\\Power\\Timeouts";
constexpr wchar_t kFavouritesKey[] = L"HKCU\\Software\\Quillon\\Kora\\My Favorite";

// clang-format off
constexpr FirstDword kFirstDwords[] = {
    {L"HKLM\\System\\State\\Hardware", L"Headset", 1},
    {L"HKLM\\System\\State\\Phone",    L"Status",  0},
    {kTimeoutsKey, handset::kUserIdleValue, handset::kUserIdleDefault_s},
    {kTimeoutsKey, handset::kSuspendValue,  handset::kSuspendDefault_s},
    {fm::kTunerKey, L"RecordAudioType",    0},
    {fm::kTunerKey, L"SaveFileType",       0},
    {fm::kTunerKey, L"EnableMute",         0},
    {fm::kTunerKey, L"EnableRDSPSPTY",     1},
    {fm::kTunerKey, L"EnableAFAutoSwitch", 0},
};
constexpr FirstString kFirstStrings[] = {
    {fm::kTunerKey, L"Selected", L"My Favorite"},
};
// Keys that the platform's own start-up makes.
constexpr const wchar_t* kFirstKeys[] = {
    L"HKLM\\System\\CurrentControlSet\\Control\\Power\\State\\ScreenOff",
};

struct Favourite {
    const wchar_t* group;      // subkey
    const wchar_t* groupName;  // shown
    int number;                // within the group
    DWORD channel;             // units of 10 kHz
    const wchar_t* name;
    const wchar_t* guide;
};
constexpr Favourite kFavourites[] = {
    {L"Group1", L"My Favorite",    1,  9850, L"Kora One",     L"News on the hour"},
    {L"Group1", L"My Favorite",    2,  8850, L"Harbour",      L"Songs for the evening tide"},
    {L"Group1", L"My Favorite",    3,  9720, L"Duet",         L"Two tones, one for each ear"},
    {L"Group1", L"My Favorite",    4, 10370, L"Z\u00FCri Jazz", L"Jazz bis Mitternacht"},
    {L"Group1", L"My Favorite",    5, 10240, L"Surf",         L"The sea, all day long"},
    {L"Group2", L"Talk and sport", 1,  9400, L"Talk 94",      L"Your questions about the garden"},
    {L"Group2", L"Talk and sport", 2, 10630, L"Sport plus",   L"Every match from kick-off"},
};
// clang-format on

}  // namespace

bool WriteFirstRegistryValues() {
    bool written = true;
    for (const wchar_t* key : kFirstKeys) written = CreateDeviceKey(key) && written;
    for (const FirstDword& row : kFirstDwords) {
        if (!GetDeviceValue(row.key, row.value))
            written = SetDeviceDword(row.key, row.value, row.data) && written;
    }
    for (const FirstString& row : kFirstStrings) {
        if (!GetDeviceValue(row.key, row.value)) {
            written = SetDeviceString(row.key, row.value, row.data) && written;
        }
    }
    // A new phone plays, and does not begin in the noise at the bottom of the band.
    if (!handset::StateQword(handset::kTunedChannel)) {
        written = handset::SetStateDword(handset::kTunedChannel, kFavourites[0].channel) && written;
    }
    return written;
}

bool WritePresetFavourites() {
    if (DeviceKeyExists(kFavouritesKey)) return true;
    bool written = CreateDeviceKey(kFavouritesKey);
    for (const Favourite& row : kFavourites) {
        const std::wstring key = std::wstring(kFavouritesKey) + L"\\" + row.group;
        const std::wstring number = std::to_wstring(row.number);
        written = SetDeviceString(key, L"Name", row.groupName) &&
                  SetDeviceDword(key, L"ChannelValue" + number, row.channel) &&
                  SetDeviceString(key, L"ChannelName" + number, row.name) &&
                  SetDeviceString(key, L"ChannelProgramGuide" + number, row.guide) && written;
    }
    return written;
}

}  // namespace panel
