#include "handset/transmitter/biphase.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace transmitter {
namespace {

constexpr double kPi = 3.14159265358979323846;

// The shaping filter's response to an impulse, its bandwidth being 2 / t_d: cos(4 pi t) / (1 - 64 t^2) to a
// factor.
double ShapedImpulse(double time_bits) {
    const double denominator = 1 - 64 * time_bits * time_bits;
    if (std::abs(denominator) < 1e-7) return kPi / 4;
    return std::cos(4 * kPi * time_bits) / denominator;
}

// Lets the far ends of the pulse fade out instead of being cut off.
double Taper(double time_bits) {
    const double place = std::abs(time_bits) / CBiphasePulse::kReach_bits;
    if (place >= 1) return 0;
    if (place < 0.5) return 1;
    return 0.5 * (1 + std::cos(kPi * (2 * place - 1)));
}

double Pulse(double time_bits) {
    return (ShapedImpulse(time_bits + 0.25) - ShapedImpulse(time_bits - 0.25)) * Taper(time_bits);
}

// Equal symbols make a sine of the bit rate: no harmonic of it passes the filter.
double PeakOfEqualSymbols() {
    double peak = 0;
    for (int step = 0; step < 1024; ++step) {
        double sum = 0;
        for (int bit = -CBiphasePulse::kReach_bits; bit <= CBiphasePulse::kReach_bits; ++bit) {
            sum += Pulse(step / 1024.0 + bit);
        }
        peak = std::max(peak, std::abs(sum));
    }
    return peak;
}

}  // namespace

CBiphasePulse::CBiphasePulse() : table_((kSteps + 1) * 2 * kReach_bits) {
    const double scale = 1 / PeakOfEqualSymbols();
    for (std::size_t step = 0; step <= kSteps; ++step) {
        for (int bit = 0; bit < 2 * kReach_bits; ++bit) {
            // The middle of the bit in hand is at half of it.
            const double time = static_cast<double>(step) / kSteps - 0.5 + (kReach_bits - bit);
            const double value = scale * Pulse(time);
            table_[step * 2 * kReach_bits + bit] = value;
            if (step < kSteps) meanSquare_ += value * value / kSteps;
        }
    }
}

double CBiphasePulse::At(double time_bits) const {
    const double place = time_bits + 0.5;
    const double whole = std::floor(place);
    const int bit = kReach_bits - static_cast<int>(whole);
    if (bit < 0 || bit >= 2 * kReach_bits) return 0;
    std::vector<double> one(2 * kReach_bits);
    one[static_cast<std::size_t>(bit)] = 1;
    return Sum(one.data(), place - whole);
}

double CBiphasePulse::Sum(const double* signs, double phase) const {
    const double place = phase * kSteps;
    auto step = static_cast<std::size_t>(place);
    if (step >= kSteps) step = kSteps - 1;
    const double part = place - static_cast<double>(step);
    const double* row = &table_[step * 2 * kReach_bits];
    const double* next = row + 2 * kReach_bits;
    // Sums side by side, for the compiler to make vectors of.
    constexpr int kLanes = 4;
    static_assert(2 * kReach_bits % kLanes == 0, "whole vectors only");
    double sums[kLanes] = {};
    for (int bit = 0; bit < 2 * kReach_bits; bit += kLanes) {
        for (int lane = 0; lane < kLanes; ++lane) {
            const double here = row[bit + lane];
            sums[lane] += signs[bit + lane] * (here + part * (next[bit + lane] - here));
        }
    }
    return (sums[0] + sums[1]) + (sums[2] + sums[3]);
}

const CBiphasePulse& CBiphasePulse::Shared() {
    static const CBiphasePulse pulse;
    return pulse;
}

CBiphaseSignal::CBiphaseSignal(GroupSource groups)
    : groups_(std::move(groups)), pulse_(CBiphasePulse::Shared()) {
    // The first bit in hand is the first of a group.
    for (int i = 0; i <= CBiphasePulse::kReach_bits - 1; ++i) Advance();
    shifted_ = 0;
}

void CBiphaseSignal::Advance() {
    if (nextBit_ == kGroupBits) {
        bits_ = Bits(groups_());
        ++groupsTaken_;
        nextBit_ = 0;
    }
    // Differential coding: a one changes what is sent.
    lastSent_ = lastSent_ != bits_[static_cast<std::size_t>(nextBit_++)];
    for (std::size_t i = 0; i + 1 < signs_.size(); ++i) signs_[i] = signs_[i + 1];
    signs_.back() = lastSent_ ? 1 : -1;
    ++shifted_;
}

double CBiphaseSignal::At(double bits) {
    while (static_cast<double>(shifted_ + 1) <= bits) Advance();
    return pulse_.Sum(signs_.data(), bits - static_cast<double>(shifted_));
}

}  // namespace transmitter
