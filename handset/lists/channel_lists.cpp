// Texts and frequencies of channel lists.
#include "handset/lists/channel_lists.h"

#include <cmath>

namespace lists {
namespace {

constexpr std::size_t kLongestShown = 60;
constexpr char16_t kReplacement = 0xFFFD;
constexpr double kStep_Hz = 10'000.0;

bool IsHigh(char32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
bool IsLow(char32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

void Append(std::string& bytes, char32_t point) {
    const auto tail = [&](int shift) { bytes.push_back(static_cast<char>(0x80 | (point >> shift & 0x3F))); };
    if (point < 0x80) {
        bytes.push_back(static_cast<char>(point));
    } else if (point < 0x800) {
        bytes.push_back(static_cast<char>(0xC0 | point >> 6));
        tail(0);
    } else if (point < 0x10000) {
        bytes.push_back(static_cast<char>(0xE0 | point >> 12));
        tail(6), tail(0);
    } else {
        bytes.push_back(static_cast<char>(0xF0 | point >> 18));
        tail(12), tail(6), tail(0);
    }
}

// The character at the front of `bytes`, which is taken away from it; nothing where there is none.
std::optional<char32_t> TakeCharacter(std::string_view& bytes) {
    constexpr char32_t kLowest[] = {0, 0, 0x80, 0x800, 0x10000};
    const auto lead = static_cast<std::uint8_t>(bytes.front());
    const std::size_t length = lead < 0x80   ? 1
                               : lead < 0xC0 ? 0
                               : lead < 0xE0 ? 2
                               : lead < 0xF0 ? 3
                               : lead < 0xF8 ? 4
                                             : 0;
    if (length == 0 || bytes.size() < length) return std::nullopt;
    char32_t point = length == 1 ? lead : lead & (0x7Fu >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const auto byte = static_cast<std::uint8_t>(bytes[i]);
        if ((byte & 0xC0) != 0x80) return std::nullopt;
        point = point << 6 | (byte & 0x3F);
    }
    if (point < kLowest[length] || point > 0x10FFFF || IsHigh(point) || IsLow(point)) return std::nullopt;
    bytes.remove_prefix(length);
    return point;
}

}  // namespace

std::optional<std::u16string> FromUtf8(std::string_view bytes) {
    std::u16string text;
    while (!bytes.empty()) {
        const auto point = TakeCharacter(bytes);
        if (!point) return std::nullopt;
        if (*point < 0x10000) {
            text.push_back(static_cast<char16_t>(*point));
        } else {
            text.push_back(static_cast<char16_t>(0xD800 + ((*point - 0x10000) >> 10)));
            text.push_back(static_cast<char16_t>(0xDC00 + (*point & 0x3FF)));
        }
    }
    return text;
}

std::string ToUtf8(std::u16string_view text) {
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t point = text[i];
        if (IsHigh(point) && i + 1 < text.size() && IsLow(text[i + 1])) {
            point = 0x10000 + ((point - 0xD800) << 10) + (text[++i] - 0xDC00u);
        } else if (IsHigh(point) || IsLow(point)) {
            point = kReplacement;
        }
        Append(bytes, point);
    }
    return bytes;
}

std::string Quoted(std::u16string_view text) {
    std::u16string shown(text.substr(0, kLongestShown));
    for (char16_t& unit : shown) {
        if (unit < u' ' || unit == 0x7F || unit == 0x2028 || unit == 0x2029) unit = u' ';
    }
    return "\"" + ToUtf8(shown) + (text.size() > kLongestShown ? "…\"" : "\"");
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
