// What a WAV file's last moments sound like: loudness and strongest tone. Portable.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace panel {

struct WavSound {
    std::uint32_t rate;           // samples a second and channel
    std::uint32_t frameBytes;     // one sample of every channel
    std::vector<double> samples;  // the mean of the channels, -1 to 1
};
// Reads 16-bit PCM. A file that is still being written may be longer than its header says: everything up to
// its end counts. Nothing when it is not such a file.
std::optional<WavSound> ReadWav(const std::string& bytes);

inline constexpr double kSilence_dBFS = -120;  // the least that Loudness says

struct Hearing {
    double loudness_dBFS;  // root mean square; 0 = a full-scale square wave
    double tone_Hz;        // the strongest tone; 0 when there is nothing to hear
    double prominence_dB;  // how far it stands above the mean of the spectrum
};
// The last `seconds` of a sound (or all of a shorter one).
Hearing Listen(const WavSound& sound, double seconds);

}  // namespace panel
