// The rooms of the sources, folder by folder, and which of them includes which.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "tests/native/docs/source_text.h"

namespace test {

// From each room to those that it includes; a room without arrows has an empty set.
using Rooms = std::map<std::string, std::set<std::string>>;

// What a source file includes, as it is written between the quotation marks or the angle brackets.
std::vector<std::string> IncludedBy(const std::string& source);

// The rooms of the C++ files below `folders`: a room is the folder in which a file lies. An include that is
// found nowhere below `root` is the host's or the standard library's, unless one of `platform`, folders with
// headers that are included by their bare names, has it.
Rooms RoomsOf(const std::filesystem::path& root, const std::set<std::string>& folders,
              const std::set<std::string>& platform);

// The rooms that reach each other, circle by circle.
std::set<std::set<std::string>> CirclesIn(const Rooms& rooms);

}  // namespace test
