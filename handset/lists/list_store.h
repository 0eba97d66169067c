// The radio's channel lists in its volume: two databases, one of the lists' names and one of the channels.
// Portable.
#pragma once

#include "handset/coredll/cedb/engine/volume.h"
#include "handset/lists/import_plan.h"

namespace lists {

// On the device.
inline constexpr char16_t kVolume[] = u"\\KORA.vol";

// The lists in the order in which they were made, and their channels likewise. Channels of a list that has no
// name in the store come last, under the name that they give; `strays` counts them.
[[nodiscard]] cedb::Status ReadLists(cedb::CVolume& volume, std::vector<ChannelList>* lists,
                                     std::size_t* strays);

// kAdd: what is stored stays. kReplace: all of it goes, but only when nothing of the file is refused.
enum class ImportMode { kAdd, kReplace };

// All of the plan is stored when this gives Ok, or nothing: nobody who reads the volume meanwhile sees a
// part.
[[nodiscard]] cedb::Status Import(cedb::CVolume& volume, const ListFile& file, ImportMode mode,
                                  ImportPlan* plan);

}  // namespace lists
