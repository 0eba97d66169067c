// What programs that are not ours make of a recording: ffprobe and ffmpeg.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "tests/support/sound_file.h"

namespace test {

// What ffprobe says of a file with these bytes; an empty codec when it cannot be opened.
SoundFile Probe(const std::vector<std::uint8_t>& bytes);

// The tags of the file as ffprobe names them: title, artist, date, comment, encoder.
std::map<std::string, std::string> ProbeTags(const std::vector<std::uint8_t>& bytes);

// What ffmpeg decodes from it, as 16-bit samples; `complaints` receives its errors, one a line.
std::vector<std::int16_t> Decode(const std::vector<std::uint8_t>& bytes, std::string* complaints);

}  // namespace test
