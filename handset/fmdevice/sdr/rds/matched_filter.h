// The filter that is matched to one biphase symbol. Portable.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "handset/fmdevice/sdr/rds/baseband.h"

namespace sdr::rds {

// The response of the shaping filter to an impulse, time in bits: the spectrum is cos(pi f T / 4) up to 2 / T
// (IEC 62106, 1.7), the response its transform, 1 at 0.
[[nodiscard]] double ShapingImpulse(double time_bits);
// A one is a shaped impulse in the middle of the first half bit and one of opposite sign in the second (1.7).
[[nodiscard]] double BiphaseSymbol(double time_bits);

struct SymbolSample {
    float re = 0.0f, im = 0.0f;
};

class CMatchedFilter {
  public:
    // How far it reaches to either side.
    static constexpr double kReach_bits = 2.6;

    CMatchedFilter();
    // What the symbol that has its middle at that time weighs; 1 for a symbol of the height 1. Its whole
    // reach must be in the ring.
    [[nodiscard]] SymbolSample At(const CBaseband& baseband, double clock_bits) const;
    // How that changes with the time, per bit.
    [[nodiscard]] SymbolSample SlopeAt(const CBaseband& baseband, double clock_bits) const;
    // The bend at the middle of a symbol of the height 1, per square bit; negative.
    double Bend() const { return bend_; }

  private:
    static constexpr std::size_t kPhases = 32;
    static constexpr std::size_t kTaps = 84;
    using Bank = std::vector<std::array<float, kTaps>>;

    [[nodiscard]] SymbolSample Apply(const Bank& bank, const CBaseband& baseband, double clock_bits) const;

    Bank taps_, slopes_;
    double bend_ = 0.0;
};

}  // namespace sdr::rds
