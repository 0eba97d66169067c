// Changes to a band file, line by line.
#include "handset/fmdevice/band/band_edit.h"

#include <optional>
#include <string_view>
#include <vector>

#include "handset/base/ascii.h"
#include "handset/fmdevice/band/band_line.h"

namespace fm {
namespace {

bool IsSection(const BandLine& line, std::uint32_t channel) {
    return line.kind == BandLineKind::kSection && SectionChannel(line.name) == channel;
}

}  // namespace

std::string SetBandKey(const std::string& text, std::uint32_t channel, const std::string& key,
                       const std::string& value) {
    const std::string setting = key + '=' + value;
    std::vector<std::string> result;
    std::optional<std::size_t> heading;  // the station's first, in the result
    bool inside = false;
    bool done = false;
    const std::string_view lines = AfterByteOrderMark(text);
    for (std::string_view rest = lines; !rest.empty();) {
        const std::string_view whole = TakeBandLine(rest);
        const BandLine line = ReadBandLine(whole);
        const bool begins = line.kind == BandLineKind::kSection || line.kind == BandLineKind::kOpenSection;
        if (begins) inside = IsSection(line, channel);
        const bool wanted = inside && line.kind == BandLineKind::kKey && handset::SameLetters(line.name, key);
        if (!wanted) {
            if (begins && inside && !heading) heading = result.size();
            result.emplace_back(whole);
        } else if (!done) {
            result.push_back(setting);
            done = true;
        }
    }
    if (!done) {
        if (!heading) {
            result.emplace_back();
            heading = result.size();
            result.push_back('[' + std::to_string(channel) + ']');
        }
        result.insert(result.begin() + static_cast<std::ptrdiff_t>(*heading) + 1, setting);
    }
    std::string joined = text.substr(0, text.size() - lines.size());
    for (const std::string& line : result) joined += line + '\n';
    return joined;
}

}  // namespace fm
