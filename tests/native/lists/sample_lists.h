// Channel lists with texts that a file could spoil, and their comparison.
#pragma once

#include <random>

#include "handset/lists/channel_lists.h"

// Everything that has to come back as it went: names, order, frequencies, guides.
bool SameLists(const std::vector<lists::ChannelList>& one, const std::vector<lists::ChannelList>& other);

// Quotes, separators, line ends, blanks, umlauts, emoji, the empty text and the longest.
std::vector<lists::ChannelList> AwkwardLists();

// Any texts of whole characters, lists without channels among them.
std::vector<lists::ChannelList> RandomLists(std::mt19937& random);
