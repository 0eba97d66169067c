// Frequency modulation, as exact as the numbers: deviation into the samples of a carrier. Portable.
#pragma once

#include <array>
#include <complex>
#include <cstddef>
#include <vector>

namespace transmitter {

class CModulator {
  public:
    // One carrier sample of size 1 for each sample of deviation, at kMultiplexRate_Hz.
    void Modulate(const double* deviation_Hz, std::complex<float>* carrier, std::size_t count);

    // The carrier's phase is that of the deviation so many samples ago.
    static constexpr int kDelay = 3;

  private:
    static constexpr int kTaps = 2 * kDelay + 1;
    std::array<double, kTaps - 1> before_{};
    std::vector<double> line_;
    double phase_turns_ = 0;
};

}  // namespace transmitter
