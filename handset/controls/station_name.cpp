// Frequencies in megahertz and channel values.
#include "handset/controls/station_name.h"

#include "handset/controls/encoding.h"
#include "handset/fmdevice/band/band.h"

namespace panel {

std::optional<std::uint32_t> ParseStation(const std::wstring& text) {
    std::wstring digits = text;
    const std::size_t point = text.find(L'.');
    if (point != std::wstring::npos) {
        if (text.size() != point + 2) return std::nullopt;
        digits.erase(point, 1);
        digits += L'0';
    }
    const auto channel = ParseNumber(digits);
    if (!channel || *channel > fm::kBandTop_10kHz || !fm::InBand(static_cast<std::uint32_t>(*channel))) {
        return std::nullopt;
    }
    return static_cast<std::uint32_t>(*channel);
}

std::wstring StationText(std::uint32_t channel) {
    return std::to_wstring(channel / 100) + L"." + std::to_wstring(channel % 100 / 10);
}

}  // namespace panel
