// Test signals in closed form: an FM carrier whose phase is the exact integral of its multiplex.
#pragma once

#include <vector>

#include "handset/fmdevice/sdr/sample.h"

namespace sdr_test {

struct FmSignal {
    double rate_Hz = 1920000.0;
    double seconds = 1.5;
    double tone_Hz = 1000.0;
    double left = 1.0;  // of the deviation that the programme has, 0.9 of 75 kHz
    double right = 0.0;
    double pilot = 0.1;  // of 75 kHz; without it the programme is mono
    double pilot_Hz = 19000.0;
    double offset_Hz = 0.0;
    double carrierToNoise_dBHz = 0.0;  // 0: no noise
    double amplitude = 0.5;
    sdr::Sample direct = {};
    // What the left channel's sound is without de-emphasis.
    static constexpr double kProgramme = 0.9;
};

[[nodiscard]] std::vector<sdr::Sample> MakeFm(const FmSignal& signal);
// White noise of a power in all, the same for the same seed.
void AddNoise(double power, unsigned seed, std::vector<sdr::Sample>* samples);

}  // namespace sdr_test
