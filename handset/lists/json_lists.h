// Channel lists as JSON:
//
//   {"format": "kora-channel-lists", "version": 1,
//    "lists": [{"name": "My Favorite",
//               "channels": [{"name": "Kora One", "frequency": 98.5, "guide": "News on the hour"}]}]}
//
// Frequencies in MHz; `channels` and `guide` may be missing, and other members are passed over. Portable.
#pragma once

#include "handset/lists/channel_lists.h"

namespace lists {

ListFile ReadJson(const std::string& bytes);
std::string WriteJson(const std::vector<ChannelList>& lists);

}  // namespace lists
