// The name under which the selected group keeps a frequency.
#pragma once

#include <windows.h>

#include <cstdint>

#include "channels/channel_record.h"

// True, and the name, when the selected group, of whose name `groupCapacity` characters are read, has a
// channel with this frequency. In a store of its own: one object runs one operation at a time, and this is
// asked while another operation of the main state's may be under way, by a paint, by a menu, on a worker
// thread. Any thread.
bool FindStoredName(std::uint32_t channel, UINT groupCapacity, WCHAR (&name)[kChannelTextCapacity]);

// How much of the group's name those who show or use a channel's name read.
inline constexpr UINT kShownGroupCapacity = 32;
