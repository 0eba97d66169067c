// A tone of known frequency in a row of samples, by least squares.
#pragma once

#include <cstddef>
#include <vector>

namespace sdr_test {

struct ToneFit {
    double amplitude = 0.0;
    double rest = 0.0;  // the effective value of everything else but direct current
    [[nodiscard]] double Sinad_dB() const;
};

// Of one channel of frames, from a frame on. The stretch is cut to whole seconds where there is one, so that
// tones of whole frequencies do not disturb one another.
[[nodiscard]] ToneFit FitTone(const std::vector<float>& frames, std::size_t channels, std::size_t channel,
                              std::size_t from, double rate_Hz, double tone_Hz);
[[nodiscard]] double Decibels(double ratio);

}  // namespace sdr_test
