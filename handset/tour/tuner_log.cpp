// The tuner log and the band's stations.
#include "handset/tour/tuner_log.h"

#include <charconv>

#include "handset/base/ascii.h"
#include "handset/fmdevice/band/band_file.h"

namespace panel {
namespace {

std::optional<std::uint32_t> Number(std::string_view text) {
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end == text.data()) return std::nullopt;
    return number;
}

// Takes the next complete line off `text`; nothing when there is none.
std::optional<std::string_view> TakeLine(std::string_view& text) {
    const std::size_t end = text.find('\n');
    if (end == std::string_view::npos) return std::nullopt;
    const std::string_view line = handset::Trimmed(text.substr(0, end), " \t\r");
    text.remove_prefix(end + 1);
    return line;
}

std::optional<TunerCall> ReadCall(std::string_view line) {
    constexpr std::string_view kArrow = " -> ";
    const std::size_t arrow = line.find(kArrow);
    if (arrow == std::string_view::npos) return std::nullopt;
    const std::string_view call = line.substr(0, arrow);
    const std::string_view result = line.substr(arrow + kArrow.size());
    const std::size_t blank = call.find(' ');
    const std::size_t colon = result.find(':');
    TunerCall read{call.substr(0, blank), "", result.substr(0, colon) == "0", ""};
    if (blank != std::string_view::npos) read.arguments = handset::Trimmed(call.substr(blank));
    if (colon != std::string_view::npos) read.out = handset::Trimmed(result.substr(colon + 1));
    return read;
}

}  // namespace

std::vector<TunerCall> ReadTunerLog(std::string_view log) {
    std::vector<TunerCall> calls;
    while (const auto line = TakeLine(log)) {
        if (const auto call = ReadCall(*line)) calls.push_back(*call);
    }
    return calls;
}

std::size_t CountCalls(const std::vector<TunerCall>& calls, std::string_view name) {
    std::size_t count = 0;
    for (const TunerCall& call : calls) count += call.name == name && call.succeeded ? 1 : 0;
    return count;
}

std::optional<std::uint32_t> LastNumber(const std::vector<TunerCall>& calls, std::string_view name) {
    for (auto call = calls.rbegin(); call != calls.rend(); ++call) {
        if (call->name == name && call->succeeded)
            return Number(call->out.empty() ? call->arguments : call->out);
    }
    return std::nullopt;
}

std::vector<BandStation> ReadBandStations(std::string_view bandFile) {
    std::vector<BandStation> stations;
    std::vector<std::string> faults;
    const fm::Band band = fm::ReadBand("band.ini", bandFile, &faults);
    for (const auto& [channel, station] : band.stations) {
        const auto& names = station.rds.serviceNames;
        stations.push_back({channel, names.empty() ? "" : names.front()});
    }
    return stations;
}

}  // namespace panel
