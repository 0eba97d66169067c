// What of a file goes into the store, and what does not and why. Portable.
#pragma once

#include <functional>

#include "handset/lists/channel_lists.h"

namespace lists {

// What the radio takes: its dialogs, its band.
inline constexpr std::size_t kLongestListName = 99;  // UTF-16 units
inline constexpr std::size_t kLongestText = 259;
inline constexpr std::uint32_t kBandBottom_10kHz = 8750;
inline constexpr std::uint32_t kBandTop_10kHz = 10800;

struct PlannedList {
    ChannelList list;    // with those of its channels that are to be stored
    bool isNew = false;  // the list itself is to be stored, too
};

struct ImportPlan {
    std::vector<PlannedList> lists;
    std::size_t newLists = 0, newChannels = 0;
    std::size_t present = 0;       // channels that are stored already just as they are
    std::vector<Refusal> refused;  // in the order of their lines

    bool Empty() const { return newLists == 0 && newChannels == 0; }
};

// What two names have in common that the store cannot tell apart.
using NameKey = std::function<std::string(const std::u16string& name)>;

ImportPlan PlanImport(const std::vector<ChannelList>& stored, const ListFile& file, const NameKey& key);

}  // namespace lists
