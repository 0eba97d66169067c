// The waveform that carries the bits of RDS: biphase symbols under the shaping filter of the standard.
// Portable.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "handset/transmitter/group.h"

namespace transmitter {

// One bit's symbol: an impulse and its negative half a bit later, behind the filter cos(pi f t_d / 4) up to 2
// / t_d (IEC 62106-2, 4.6). Time is in bits. The waveform of equal symbols, sent without end, has a peak
// of 1.
class CBiphasePulse {
  public:
    CBiphasePulse();
    // The one that every signal uses: its table takes milliseconds to make.
    static const CBiphasePulse& Shared();

    // Its reach before and behind the middle of the bit.
    static constexpr int kReach_bits = 12;

    double At(double time_bits) const;

    // What symbols of the given signs add up to at `phase`, 0 to 1, of a bit. `signs` are those of the 2 *
    // kReach_bits bits around it: the one in hand stands at kReach_bits.
    double Sum(const double* signs, double phase) const;

    // Mean square of the waveform of random bits.
    double MeanSquare() const { return meanSquare_; }

  private:
    static constexpr std::size_t kSteps = 2048;  // of one bit
    std::vector<double> table_;                  // kSteps + 1 rows of 2 * kReach_bits
    double meanSquare_ = 0;
};

// Bits to waveform: differential coding and symbols, at the pace of the subcarrier.
class CBiphaseSignal {
  public:
    explicit CBiphaseSignal(GroupSource groups);

    // The waveform where `bits` bits have been sent; it never goes back.
    double At(double bits);
    // How many groups the source was asked for.
    long long GroupsTaken() const { return groupsTaken_; }

  private:
    void Advance();

    GroupSource groups_;
    const CBiphasePulse& pulse_;
    std::array<bool, kGroupBits> bits_{};
    int nextBit_ = kGroupBits;
    bool lastSent_ = false;
    long long groupsTaken_ = 0;
    long long shifted_ = 0;
    std::array<double, 2 * CBiphasePulse::kReach_bits> signs_{};
};

}  // namespace transmitter
