// What a WAV file's last moments sound like: loudness and strongest tone. Portable.
#pragma once

#include <cstdint>
#include "handset/sound/wav.h"

namespace sound {

inline constexpr double kSilence_dBFS = -120;  // the least that Loudness says

struct Hearing {
    double loudness_dBFS;  // root mean square; 0 = a full-scale square wave
    double tone_Hz;        // the strongest tone; 0 when there is nothing to hear
    double prominence_dB;  // how far it stands above the mean of the spectrum
};
// The last `seconds` of a sound (or all of a shorter one).
Hearing Listen(const WavSound& sound, double seconds);

}  // namespace sound
