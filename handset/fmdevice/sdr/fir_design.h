// Taps of linear-phase filters: sines over their argument under a Kaiser window. Portable.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

namespace sdr {

// A low-pass filter at `rate_Hz`: even up to `pass_Hz`, `rejection_dB` down from `stop_Hz` on.
struct LowPass {
    double rate_Hz = 0.0;
    double pass_Hz = 0.0;
    double stop_Hz = 0.0;
    double rejection_dB = 80.0;
};

// Kaiser's rule for how many taps it takes, made odd, and the shape of the window.
[[nodiscard]] std::size_t TapsNeeded(const LowPass& filter);
[[nodiscard]] double KaiserBeta(double rejection_dB);
// The window at -1 to 1; 1 in the middle, 0 outside.
[[nodiscard]] double KaiserWindow(double beta, double place);

// An odd number of taps, their sum 1.
[[nodiscard]] std::vector<double> DesignLowPass(const LowPass& filter, std::size_t taps);
// The same with a response of its own within the pass band, as `gain` gives it for a frequency in Hz. The sum
// is what the gain at 0 makes it.
[[nodiscard]] std::vector<double> DesignShaped(const LowPass& filter, std::size_t taps,
                                               const std::function<double(double)>& gain);
// The magnitude at a frequency.
[[nodiscard]] double ResponseAt(const std::vector<double>& taps, double rate_Hz, double frequency_Hz);

// For the filter kernel: each tap twice, with zeros at the end up to the multiple that it wants.
[[nodiscard]] std::vector<float> TapPairs(const std::vector<double>& taps);

}  // namespace sdr
