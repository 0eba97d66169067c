// Texts and frequencies of channel lists.
#include "handset/lists/channel_lists.h"

#include <cmath>

#include "handset/base/utf8.h"

namespace lists {
namespace {

constexpr std::size_t kLongestShown = 60;
constexpr double kStep_Hz = 10'000.0;

}  // namespace

std::string Quoted(std::u16string_view text) {
    std::u16string shown(text.substr(0, kLongestShown));
    for (char16_t& unit : shown) {
        if (unit < u' ' || unit == 0x7F || unit == 0x2028 || unit == 0x2029) unit = u' ';
    }
    return "\"" + handset::Utf8(shown) + (text.size() > kLongestShown ? "…\"" : "\"");
}

std::string FrequencyText(std::uint32_t frequency_10kHz) {
    std::string text =
        std::to_string(frequency_10kHz / 100) + "." + std::to_string(frequency_10kHz / 10 % 10);
    if (frequency_10kHz % 10 != 0) text += std::to_string(frequency_10kHz % 10);
    return text + " MHz";
}

std::uint32_t FrequencyOfHertz(double hertz) {
    const double steps = std::round(hertz / kStep_Hz);
    return steps > 0.0 && steps <= 4294967295.0 ? static_cast<std::uint32_t>(steps) : 0;
}

}  // namespace lists
