#include "channels/stored_name.h"

#include "channels/channel_db.h"
#include "shell/settings_key.h"

bool FindStoredName(std::uint32_t channel, UINT groupCapacity, WCHAR (&name)[kChannelTextCapacity]) {
    WCHAR group[kGroupNameCapacity] = L"";
    ReadSelectedGroup(group, groupCapacity < kGroupNameCapacity ? groupCapacity : UINT{kGroupNameCapacity});
    name[0] = L'\0';
    CChannelDB lookup;
    return lookup.CEDB_FindChannelName(group, channel, name) != 0;
}
