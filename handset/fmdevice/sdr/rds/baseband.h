// The RDS signal around zero frequency, with the bit clock that goes with it. Portable.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "handset/fmdevice/sdr/mpx_block.h"

namespace sdr::rds {

constexpr std::size_t kDecimation = 20;
constexpr double kBasebandRate_Hz = kMpxRate_Hz / static_cast<double>(kDecimation);
// The subcarrier is the pilot's third harmonic (IEC 62106, 1.1), its 48th part the clock of the bits (1.5).
constexpr double kSubcarrierOfPilot = 3.0;
constexpr double kSubcarrier_Hz = 57000.0;
constexpr double kPilotCyclesPerBit = 16.0;

// The last 0.85 s, each sample with the time at which it stands, in bits of the reference clock.
class CBaseband {
  public:
    static constexpr std::size_t kSize = 16384;

    CBaseband() : samples_(std::make_unique<Samples>()) {}
    void Clear() { count_ = 0; }
    void Append(float re, float im, double clock_bits);

    bool Empty() const { return count_ == 0; }
    std::uint64_t Count() const { return count_; }
    std::uint64_t Oldest() const { return count_ > kSize ? count_ - kSize : 0; }
    double Clock(std::uint64_t index) const { return samples_->clock[index % kSize]; }
    double OldestClock() const { return Clock(Oldest()); }
    double NewestClock() const { return Clock(count_ - 1); }
    // The sample at `index` and those after it, in a row as long as the ring; those that are not there yet
    // are old.
    const float* Re(std::uint64_t index) const { return &samples_->re[index % kSize]; }
    const float* Im(std::uint64_t index) const { return &samples_->im[index % kSize]; }
    // The last sample that stands no later than that, counted from the first one ever; nothing is checked but
    // the ends of the ring.
    [[nodiscard]] std::uint64_t IndexAt(double clock_bits) const;

  private:
    // Everything twice, so that a filter always finds its samples in one row.
    struct Samples {
        std::array<float, 2 * kSize> re{}, im{};
        std::array<double, kSize> clock{};
    };
    std::unique_ptr<Samples> samples_;
    std::uint64_t count_ = 0;
};

// Mixes the multiplex with three times the pilot and keeps each twentieth sample of what is within 2.4 kHz.
// The filter itself stands at 57 kHz, so only what it gives is turned by the pilot's phase.
class CSubcarrierMixer {
  public:
    CSubcarrierMixer();
    void Restart();
    void Take(const MpxBlock& block, CBaseband& baseband);

  private:
    static constexpr std::size_t kTaps = 144;
    static constexpr std::size_t kLine = 2048;

    void Follow(const MpxBlock& block);
    // One after the other stands at even steps of the reference, so one rotation a sample will do.
    struct Turning {
        double cycles = 0.0;  // of the pilot
        double re = 1.0, im = 0.0;
    };
    void Give(const Turning& turning, CBaseband& baseband) const;

    std::array<float, kTaps> cosTaps_{}, sinTaps_{};
    std::array<float, kLine> line_{};
    std::size_t filled_ = kTaps;
    std::size_t untilNext_ = kDecimation;
    // The reference: the pilot's cycles, counted on without a jump whatever the loop does, and what the
    // pilot's phase is ahead of it.
    double cycles_ = 0.0;
    double seam_turns_ = 0.0;
    bool wasLocked_ = false;
};

}  // namespace sdr::rds
