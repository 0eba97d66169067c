// Programs of the machine under Wine, for looking at files with somebody else's eyes. On Windows there are
// none.
#pragma once

#include <string>

namespace test {

// What a shell command of the machine writes to its output, once it has ended; the test fails when it does
// not end.
std::string RunOnHost(const std::string& command);

// The machine's own path of a file, quoted for its shell. Empty where there is no such machine.
std::string HostPath(const std::wstring& file);

// What ffprobe says of a sound file. All empty for one that it cannot read.
struct SoundFile {
    std::string container;  // first of its names, such as "mov" or "wav"
    std::string codec;
    int rate_Hz = 0;
    int channels = 0;
    double length_s = 0;
    std::string complaints;  // of ffmpeg, which decodes it whole
};
SoundFile ProbeSound(const std::wstring& file);

}  // namespace test
