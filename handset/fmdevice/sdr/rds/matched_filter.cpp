// The symbol's own shape, sampled at 32 places between two samples.
#include "handset/fmdevice/sdr/rds/matched_filter.h"

#include <algorithm>
#include <cmath>

#include "handset/fmdevice/sdr/rds/block_code.h"
#include "handset/fmdevice/sdr/rds/dot_product.h"
#include "handset/fmdevice/sdr/rds/windows.h"

namespace sdr::rds {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kSamplesPerBit = kBasebandRate_Hz / kBitRate_Hz;
// Gentle: it costs 0.01 dB and takes the filter's own lobes from the difference signal, 4 kHz below.
constexpr double kBeta = 2.0;

double Windowed(double time_bits) {
    return BiphaseSymbol(time_bits) * Kaiser(time_bits / CMatchedFilter::kReach_bits, kBeta);
}

double SlopeOf(double time_bits) {
    constexpr double kStep = 1e-4;
    return (Windowed(time_bits + kStep) - Windowed(time_bits - kStep)) / (2.0 * kStep);
}

}  // namespace

double ShapingImpulse(double time_bits) {
    const double u = 8.0 * time_bits;
    const double rest = 1.0 - u * u;
    if (std::abs(rest) < 1e-6) return kPi / 4.0;
    return std::cos(kPi * u / 2.0) / rest;
}

double BiphaseSymbol(double time_bits) {
    return ShapingImpulse(time_bits + 0.25) - ShapingImpulse(time_bits - 0.25);
}

CMatchedFilter::CMatchedFilter() : taps_(kPhases), slopes_(kPhases) {
    double energy = 0.0;
    double bend = 0.0;
    for (int i = -2600; i <= 2600; ++i) {
        const double time = i * 1e-3;
        energy += BiphaseSymbol(time) * Windowed(time) * 1e-3;
        bend += (BiphaseSymbol(time + 1e-2) - 2.0 * BiphaseSymbol(time) + BiphaseSymbol(time - 1e-2)) * 1e4 *
                Windowed(time) * 1e-3;
    }
    bend_ = bend / energy;
    for (std::size_t phase = 0; phase < kPhases; ++phase) {
        for (std::size_t i = 0; i < kTaps; ++i) {
            const double place = static_cast<double>(i) - static_cast<double>(kTaps / 2 - 1) -
                                 static_cast<double>(phase) / static_cast<double>(kPhases);
            const double time = place / kSamplesPerBit;
            taps_[phase][i] = static_cast<float>(Windowed(time) / (energy * kSamplesPerBit));
            // The later the filter stands, the earlier is each sample seen by it.
            slopes_[phase][i] = static_cast<float>(-SlopeOf(time) / (energy * kSamplesPerBit));
        }
    }
}

SymbolSample CMatchedFilter::Apply(const Bank& bank, const CBaseband& baseband, double clock_bits) const {
    std::uint64_t index = baseband.IndexAt(clock_bits);
    double part = (clock_bits - baseband.Clock(index)) * kSamplesPerBit;
    auto phase = static_cast<std::size_t>(std::lround(std::clamp(part, 0.0, 1.0) * kPhases));
    if (phase == kPhases) {
        phase = 0;
        ++index;
    }
    const std::uint64_t first = index - (kTaps / 2 - 1);
    return {DotProduct<kTaps>(baseband.Re(first), bank[phase].data()),
            DotProduct<kTaps>(baseband.Im(first), bank[phase].data())};
}

SymbolSample CMatchedFilter::At(const CBaseband& baseband, double clock_bits) const {
    return Apply(taps_, baseband, clock_bits);
}

SymbolSample CMatchedFilter::SlopeAt(const CBaseband& baseband, double clock_bits) const {
    return Apply(slopes_, baseband, clock_bits);
}

}  // namespace sdr::rds
