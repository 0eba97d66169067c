// Reading what the tuner device logged and what its band file names. Portable; texts are UTF-8.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace panel {

// A line of the tuner log, such as "SetChannel 9850 -> 0" or "GetSignal -> 0: 45".
struct TunerCall {
    std::string_view name;
    std::string_view arguments;
    bool succeeded;        // the result was 0
    std::string_view out;  // what follows the colon; empty without one
};
// The log's complete lines; a last line that is still being written is left out. The views point into `log`.
std::vector<TunerCall> ReadTunerLog(std::string_view log);

// How often an operation succeeded.
std::size_t CountCalls(const std::vector<TunerCall>& calls, std::string_view name);
// The number that the last successful call of an operation gave out, or was given when it gives none out.
std::optional<std::uint32_t> LastNumber(const std::vector<TunerCall>& calls, std::string_view name);

// A station of the band file: its channel in units of 10 kHz and its service name.
struct BandStation {
    std::uint32_t channel;
    std::string name;  // the first of several, empty when it sends none
};
// In the order of their channels.
std::vector<BandStation> ReadBandStations(std::string_view bandFile);

}  // namespace panel
