// The low-pass filter of a change of sampling rate, cut into its phases. Portable; read-only once made.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace capture {

// From rate `from_Hz` to the lower rate `to_Hz`: flat up to `pass_Hz`, at least 70 dB down from `stop_Hz` on.
class CLowPassBank {
  public:
    CLowPassBank(std::uint32_t from_Hz, std::uint32_t to_Hz, double pass_Hz, double stop_Hz);

    // Output n stands at input n × Step() / Phases().
    std::uint32_t Phases() const { return phases_; }
    std::uint32_t Step() const { return step_; }
    // The length of one phase, a multiple of 16.
    std::size_t Taps() const { return taps_; }
    // The factors of a phase, for Taps() inputs, the oldest first.
    const float* Phase(std::size_t phase) const { return factors_.data() + phase * taps_; }

  private:
    std::uint32_t phases_;
    std::uint32_t step_;
    std::size_t taps_;
    std::vector<float> factors_;
};

}  // namespace capture
