// What programs that are not ours make of a recording: ffprobe and ffmpeg.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace test {

struct MediaFacts {
    std::string container;  // the names of ffprobe's format, separated by commas
    std::string codec;
    int rate_Hz = 0;
    int channels = 0;
    double duration_s = 0;
};

// What ffprobe says of a file with these bytes; an empty codec when it cannot be opened.
MediaFacts Probe(const std::vector<std::uint8_t>& bytes);

// What ffmpeg decodes from it, as 16-bit samples; `complaints` receives its errors, one a line.
std::vector<std::int16_t> Decode(const std::vector<std::uint8_t>& bytes, std::string* complaints);

}  // namespace test
