// What ffprobe says of a sound file. Portable.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace test {

struct SoundFile {
    std::string container;  // first of its names, such as "mov" or "wav"
    std::string codec;      // empty for a file that cannot be opened
    int rate_Hz = 0;
    int channels = 0;
    double length_s = 0;
    std::string complaints;  // of the decoder, when the file was decoded whole
};

// The command, to be followed by the file; and its answer, read.
inline constexpr char kProbeCommand[] =
    "ffprobe -v error -of default=nw=1 -show_entries "
    "stream=codec_name,sample_rate,channels:format=format_name,duration ";
SoundFile ReadProbe(const std::string& answer);

// Bytes as a decoder writes them: samples of 16 bits, the lower byte first.
std::vector<std::int16_t> SamplesOf(const std::string& bytes);

}  // namespace test
