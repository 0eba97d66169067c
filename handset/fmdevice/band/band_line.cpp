#include "handset/fmdevice/band/band_line.h"

#include <charconv>

#include "handset/base/ascii.h"
#include "handset/fmdevice/band/band.h"

namespace fm {
namespace {

std::string_view WithoutComment(std::string_view line) {
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == ';' && (i == 0 || line[i - 1] == ' ' || line[i - 1] == '\t')) return line.substr(0, i);
    }
    return line;
}

}  // namespace

BandLine ReadBandLine(std::string_view line) {
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    const std::string_view text = handset::Trimmed(WithoutComment(line));
    if (text.empty()) return {};
    if (text.front() == '[') {
        if (text.back() != ']') return {BandLineKind::kOpenSection, text, {}, {}};
        return {BandLineKind::kSection, text, handset::Trimmed(text.substr(1, text.size() - 2)), {}};
    }
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos) return {BandLineKind::kOther, text, {}, {}};
    return {BandLineKind::kKey, text, handset::Trimmed(text.substr(0, equals)),
            handset::Trimmed(text.substr(equals + 1))};
}

std::optional<std::uint32_t> SectionChannel(std::string_view name) {
    std::uint32_t channel = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), channel);
    if (error != std::errc() || end != name.data() + name.size() || !InBand(channel)) return std::nullopt;
    return channel;
}

std::string_view AfterByteOrderMark(std::string_view text) {
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    if (text.substr(0, kMark.size()) == kMark) text.remove_prefix(kMark.size());
    return text;
}

std::string_view TakeBandLine(std::string_view& text) {
    const std::size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return line;
}

}  // namespace fm
