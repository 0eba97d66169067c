// A station as people write it on the command line.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace panel {

// "98.5" or the channel value "9850"; nothing for what is no frequency of the band.
std::optional<std::uint32_t> ParseStation(const std::wstring& text);
// "98.5".
std::wstring StationText(std::uint32_t channel);

}  // namespace panel
