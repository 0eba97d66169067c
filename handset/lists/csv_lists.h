// Channel lists as CSV, in two forms. Portable.
//
// The one that is complete has a first row that names its columns:
//
//   Frequency,Name,Modulation,Bandwidth,List,Guide
//   98500000,Kora One,WFM (stereo),200000,My Favorite,News on the hour
//
// Frequencies are in Hz. A row without frequency, name and guide is a list without channels. Read are commas,
// semicolons and tabs as separators, columns in any order under any of their names, and frequencies in MHz.
//
// The other one is that of receivers in software, who keep their bookmarks in it:
//
//   # Frequency ; Name ; Modulation ; Bandwidth; Tags
//       98500000; Kora One                 ; WFM (stereo)        ;     200000; My Favorite
//
// It has no quotes and no place for guides; a bookmark goes into the list of each of its tags.
#pragma once

#include "handset/lists/channel_lists.h"

namespace lists {

// Either form.
ListFile ReadCsvLists(const std::string& bytes);

std::string WriteCsvLists(const std::vector<ChannelList>& lists);

// `lost` gets a sentence for each thing that bookmarks cannot hold.
std::string WriteBookmarks(const std::vector<ChannelList>& lists, std::vector<std::string>* lost);

}  // namespace lists
