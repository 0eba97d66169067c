// Changes to a band file, line by line.
#include "handset/panel/band_edit.h"

#include <algorithm>
#include <vector>

#include "handset/fmdevice/ascii.h"

namespace panel {
namespace {

std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

std::string Trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(" \t\r");
    if (first == std::string::npos) return "";
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

// What a line's section heading holds; empty for another line.
std::string Heading(const std::string& line) {
    const std::string text = Trimmed(line);
    const std::size_t end = text.find(']');
    if (text.empty() || text[0] != '[' || end == std::string::npos) return "";
    return Trimmed(text.substr(1, end - 1));
}

bool IsKey(const std::string& line, const std::string& key) {
    const std::size_t equals = line.find('=');
    return equals != std::string::npos && fm::SameLetters(Trimmed(line.substr(0, equals)), key);
}

}  // namespace

std::string SetBandKey(const std::string& text, std::uint32_t channel, const std::string& key,
                       const std::string& value) {
    const std::string heading = std::to_string(channel);
    const std::string setting = key + '=' + value;
    std::vector<std::string> result;
    bool inside = false;
    bool done = false;
    for (const std::string& line : LinesOf(text)) {
        const std::string title = Heading(line);
        if (!title.empty()) inside = title == heading;
        if (!inside || !IsKey(line, key)) {
            result.push_back(line);
        } else if (!done) {
            result.push_back(setting);
            done = true;
        }
    }
    if (!done) {
        auto place = std::find_if(result.begin(), result.end(),
                                  [&](const std::string& line) { return Heading(line) == heading; });
        if (place == result.end()) {
            result.push_back("");
            place = result.insert(result.end(), '[' + heading + ']');
        }
        result.insert(place + 1, setting);
    }
    std::string joined;
    for (const std::string& line : result) joined += line + '\n';
    return joined;
}

}  // namespace panel
