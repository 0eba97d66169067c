// Changes to the text of a band file: what is not touched stays as it was written. Portable; UTF-8.
#pragma once

#include <cstdint>
#include <string>

namespace fm {

// Gives a key of a station a value: it takes the place of the key's first line, and further lines of the key
// go. The line, or the whole section, is added when it is missing.
std::string SetBandKey(const std::string& text, std::uint32_t channel, const std::string& key,
                       const std::string& value);

}  // namespace fm
