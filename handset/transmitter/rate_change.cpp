#include "handset/transmitter/rate_change.h"

#include <algorithm>
#include <cmath>

#include "handset/transmitter/programme.h"
#include "handset/transmitter/windowed_sinc.h"

namespace transmitter {
namespace {

constexpr double kAttenuation_dB = 120;
constexpr double kWidest_Hz = 260000;
// Sums of eight neighbours side by side: the compiler turns them into vectors.
constexpr std::size_t kLanes = 8;
// What adding up makes of a whole phase in an hour is far less than this.
constexpr double kWhole = 1e-4;

float Sum(const float* lanes) {
    return ((lanes[0] + lanes[4]) + (lanes[1] + lanes[5])) + ((lanes[2] + lanes[6]) + (lanes[3] + lanes[7]));
}

}  // namespace

CRateChange::CRateChange(double ratio) : ratio_(ratio) {
    const double rate_Hz = kMultiplexRate_Hz / ratio;
    const double pass_Hz = std::min(0.45 * rate_Hz, kWidest_Hz);
    const double stop_Hz = std::min(0.55 * rate_Hz, kMultiplexRate_Hz - kWidest_Hz);
    const CWindowedSinc filter(pass_Hz, stop_Hz, kAttenuation_dB);
    const double reach = filter.Reach_s() * kMultiplexRate_Hz;
    taps_ = (static_cast<std::size_t>(std::ceil(2 * reach)) + kLanes) / kLanes * kLanes;
    table_.resize((kPhases + 1) * taps_);
    for (std::size_t phase = 0; phase <= kPhases; ++phase) {
        float* row = &table_[phase * taps_];
        for (std::size_t tap = 0; tap < taps_; ++tap) {
            const double time = static_cast<double>(tap) - static_cast<double>(taps_) / 2 + 0.5 -
                                (static_cast<double>(phase) / kPhases - 0.5);
            row[tap] = static_cast<float>(filter.At(time / kMultiplexRate_Hz) / kMultiplexRate_Hz);
        }
    }
}

void CRateChange::Write(const std::complex<float>* samples, std::size_t count) {
    const auto used = static_cast<std::ptrdiff_t>(std::min(at_, real_.size()));
    real_.erase(real_.begin(), real_.begin() + used);
    imaginary_.erase(imaginary_.begin(), imaginary_.begin() + used);
    at_ -= static_cast<std::size_t>(used);
    for (std::size_t i = 0; i < count; ++i) {
        real_.push_back(samples[i].real());
        imaginary_.push_back(samples[i].imag());
    }
}

void CRateChange::Evaluate(std::size_t at, double part, float* real, float* imaginary) const {
    const double place = part * kPhases;
    const auto nearest = static_cast<std::size_t>(std::lround(place));
    if (std::abs(place - static_cast<double>(nearest)) < kWhole) {
        const float* row = &table_[nearest * taps_];
        Weigh(at, real, imaginary, [row](std::size_t i) { return row[i]; });
        return;
    }
    const auto phase = static_cast<std::size_t>(place);
    const auto between = static_cast<float>(place - static_cast<double>(phase));
    const float* row = &table_[phase * taps_];
    const float* next = row + taps_;
    Weigh(at, real, imaginary, [=](std::size_t i) { return row[i] + between * (next[i] - row[i]); });
}

template <typename Weights>
void CRateChange::Weigh(std::size_t at, float* real, float* imaginary, Weights weights) const {
    const float* inPhase = &real_[at];
    const float* quadrature = &imaginary_[at];
    float reals[kLanes] = {}, imaginaries[kLanes] = {};
    for (std::size_t tap = 0; tap < taps_; tap += kLanes) {
        for (std::size_t lane = 0; lane < kLanes; ++lane) {
            const float weight = weights(tap + lane);
            reals[lane] += weight * inPhase[tap + lane];
            imaginaries[lane] += weight * quadrature[tap + lane];
        }
    }
    *real = Sum(reals);
    *imaginary = Sum(imaginaries);
}

std::size_t CRateChange::Read(std::complex<float>* samples, std::size_t count) {
    std::size_t made = 0;
    for (; made < count && at_ + taps_ <= real_.size(); ++made) {
        float real = 0, imaginary = 0;
        Evaluate(at_, part_, &real, &imaginary);
        samples[made] = {real, imaginary};
        part_ += ratio_;
        const double whole = std::floor(part_);
        at_ += static_cast<std::size_t>(whole);
        part_ -= whole;
    }
    return made;
}

}  // namespace transmitter
