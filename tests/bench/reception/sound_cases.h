// What is heard: noise, distortion, separation and response of the receiver's sound.
#pragma once

#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "tests/bench/reception/tasks.h"

namespace bench {

// A tone of 1 kHz on the left that deviates the carrier by 57 kHz before the pre-emphasis, with pilot and
// RDS.
struct NoiseCase {
    double carrierToNoise_dBHz;
    double length_s;
    double limit_dB = 0;
    double reached_dB = 0;  // signal against noise and distortion, all of stereo kept
};
std::vector<NoiseCase> NoiseCases(bool quick);

struct SeparationCase {
    double frequency_Hz;
    double reached_dB = 0;
};
std::vector<SeparationCase> SeparationCases(bool quick);

// What was not measured is no number.
struct CleanSound {
    static constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    double sinad_dB = kNone;       // 1 kHz on the left
    double distortion_dB = kNone;  // its harmonics, 2 to 14
    double lowest_dB = kNone;      // response from 30 Hz to 14 kHz against 1 kHz
    double highest_dB = kNone;
    double pilot_dB = kNone;     // 19 kHz in the sound, against the loudest 1 kHz
    double lowest75_dB = kNone;  // the same at 75 us
    double highest75_dB = kNone;
};

// Tasks that fill all of it in; what they are given must stay where it is.
std::vector<Task> Measure(std::vector<NoiseCase>& cases);
std::vector<Task> Measure(std::vector<SeparationCase>& cases);
std::vector<Task> Measure(CleanSound& sound);

}  // namespace bench
