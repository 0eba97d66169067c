// Programs of the machine under Wine, for looking at files with somebody else's eyes. On Windows there are
// none.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "tests/support/sound_file.h"

namespace test {

// True when there are such programs here.
bool HostToolsAvailable();

// What a shell command of the machine writes to its output, once it has ended; the test fails when it does
// not end.
std::string RunOnHost(const std::string& command);

// The machine's own path of a file, quoted for its shell. Empty where there is no such machine.
std::string HostPath(const std::wstring& file);

// What ffprobe says of a sound file, and what ffmpeg complains of when it decodes it whole. All empty for one
// that they cannot read.
SoundFile ProbeSound(const std::wstring& file);
// What ffprobe finds a file to say of itself: title, artist, comment, date, encoder.
std::map<std::string, std::string> TagsOfSound(const std::wstring& file);
// What ffmpeg decodes from it, at its own rate: all channels, or their mean.
enum class Channels { kAll, kMean };
std::vector<std::int16_t> DecodeSound(const std::wstring& file, Channels channels = Channels::kAll);

}  // namespace test
