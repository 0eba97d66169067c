// Frequency out of phase: the multiplex of an FM carrier. Portable.
#pragma once

#include <cstddef>
#include <vector>

namespace sdr {

// The angle between neighbouring samples is the mean frequency between them, which falls off with the
// frequency of the sound as sin(x) / x; five taps put that right up to 60 kHz. One thread at a time.
class CDiscriminator {
  public:
    CDiscriminator() { Reset(); }
    // As many values as samples, at the multiplex's rate: 1.0 is a deviation of 75 kHz.
    void Process(const float* pairs, std::size_t count, float* multiplex);
    void Reset();

    // Gain for a sound of a frequency, 0 to half the rate, its droop and the repair together.
    [[nodiscard]] static double ResponseAt(double frequency_Hz);

  private:
    std::vector<float> pairs_;   // the last sample, then the block
    std::vector<float> angles_;  // the last four values, then the block's
};

}  // namespace sdr
