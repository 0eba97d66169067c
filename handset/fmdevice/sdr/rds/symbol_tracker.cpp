// Loops for phase and timing that are led by the decided symbols, each weighted by how sure it is.
#include "handset/fmdevice/sdr/rds/symbol_tracker.h"

#include <algorithm>
#include <cmath>

#include "handset/fmdevice/sdr/rds/block_code.h"

namespace sdr::rds {
namespace {

constexpr double kPi = 3.14159265358979323846;
// Crystals drift by parts of a hertz in minutes: a memory of a second costs nothing and leaves 2 degrees at
// the weakest signal.
constexpr double kPhaseMemory_symbols = 1000.0;
constexpr double kTimingMemory_symbols = 2000.0;
// The levels follow fading.
constexpr double kLevelMemory_symbols = 300.0;
constexpr double kLeastPower = 1e-20;
constexpr double kSurest = 30.0;
constexpr double kSameTiming_bits = 0.1;
constexpr double kSamePhase_turns = 0.2;  // of the half turn that differential coding allows
constexpr double kMostOffset_Hz = 14.0;
constexpr double kMostClockError = 250e-6;

}  // namespace

void CLineFit::Begin(double value, double slope, double seen) {
    value_ = value;
    slope_ = slope;
    seen_ = std::min(seen, memory_);
}

void CLineFit::Correct(double error) {
    const double n = seen_;
    value_ += error * 2.0 * (2.0 * n + 1.0) / ((n + 1.0) * (n + 2.0));
    slope_ = std::clamp(slope_ + error * 6.0 / ((n + 1.0) * (n + 2.0)), -most_, most_);
    seen_ = std::min(n + 1.0, memory_);
}

CSymbolTracker::CSymbolTracker()
    : phase_(kPhaseMemory_symbols, 2.0 * kPi * kMostOffset_Hz / kBitRate_Hz),
      timing_(kTimingMemory_symbols, kMostClockError) {}

void CSymbolTracker::Begin(const FoundSignal& signal, const CBaseband& baseband,
                           const CMatchedFilter& filter) {
    const double oldest = baseband.OldestClock() + CMatchedFilter::kReach_bits;
    // The symbol after the last one given, by its place in time: the count of the bits does not slip when the
    // timing is found again.
    const double earliest = hasGiven_ ? std::max(given_bits_ + 0.5, oldest) : oldest;
    next_ = static_cast<std::int64_t>(std::ceil(earliest - signal.timing_bits));
    const double ahead = static_cast<double>(next_) - signal.symbol;
    phase_.Begin(signal.phase_rad + signal.frequency_rad * ahead, signal.frequency_rad, signal.symbols);
    timing_.Begin(signal.timing_bits, 0.0, signal.symbols);
    running_ = true;
    MeasureLevels(baseband, filter);
}

bool CSymbolTracker::Follows(const FoundSignal& signal) const {
    if (!running_) return false;
    const double back = signal.symbol - static_cast<double>(next_);
    const double timing = timing_.Value() - signal.timing_bits;
    const double turns = (phase_.Value() + phase_.Slope() * back - signal.phase_rad) / kPi;
    return std::abs(timing - std::round(timing)) < kSameTiming_bits &&
           std::abs(turns - std::round(turns)) < kSamePhase_turns;
}

// All that is in the ring, so that the first symbol is weighed as well as the last.
void CSymbolTracker::MeasureLevels(const CBaseband& baseband, const CMatchedFilter& filter) {
    seen_ = 0.0;
    inPhase_ = across_ = 0.0;
    double phase = phase_.Value();
    for (std::int64_t n = next_;; ++n, phase += phase_.Slope()) {
        const double time = static_cast<double>(n) + timing_.Value();
        if (time + CMatchedFilter::kReach_bits > baseband.NewestClock()) break;
        const Turned z = TurnBack(filter.At(baseband, time), phase);
        Weigh(z.inPhase, z.across);
    }
    const double power = PowerOfSignal();
    decided_ = std::sqrt(power) * power / (power + across_ + kLeastPower);
}

CSymbolTracker::Turned CSymbolTracker::TurnBack(const SymbolSample& z, double phase) {
    const double c = std::cos(phase);
    const double s = std::sin(phase);
    return {z.re * c + z.im * s, z.im * c - z.re * s};
}

void CSymbolTracker::Weigh(double inPhase, double across) {
    seen_ = std::min(seen_ + 1.0, kLevelMemory_symbols);
    inPhase_ += (inPhase * inPhase - inPhase_) / seen_;
    across_ += (across * across - across_) / seen_;
}

// What is across the signal is noise alone, and there is as much of it in phase.
double CSymbolTracker::PowerOfSignal() const {
    constexpr double kLeastShare = 0.02;
    return std::max(inPhase_ - across_, kLeastShare * across_ + kLeastPower);
}

bool CSymbolTracker::Next(const CBaseband& baseband, const CMatchedFilter& filter, float* symbol) {
    if (!running_) return false;
    const double time = static_cast<double>(next_) + timing_.Value();
    if (time + CMatchedFilter::kReach_bits > baseband.NewestClock()) return false;
    const Turned z = TurnBack(filter.At(baseband, time), phase_.Value());
    Weigh(z.inPhase, z.across);
    const double odds = 2.0 * std::sqrt(PowerOfSignal()) * z.inPhase / (across_ + kLeastPower);
    const double sure = std::tanh(odds / 2.0);
    decided_ += (z.inPhase * sure - decided_) / std::max(seen_, 50.0);
    Follow(z, TurnBack(filter.SlopeAt(baseband, time), phase_.Value()), sure, filter.Bend());
    ++next_;
    given_bits_ = time;
    hasGiven_ = true;
    *symbol = static_cast<float>(std::clamp(odds, -kSurest, kSurest));
    return true;
}

void CSymbolTracker::Follow(const Turned& z, const Turned& slope, double sure, double bend) {
    const double height = std::max(decided_, kLeastPower);
    // A single click of the discriminator may not carry the loops away.
    const auto limited = [](double error) { return std::clamp(error, -1.5, 1.5); };
    phase_.Correct(limited(z.across * sure / height));
    timing_.Correct(-limited(slope.inPhase * sure / height) / bend);
    phase_.Step();
    timing_.Step();
    phase_.Turn(-2.0 * kPi * std::round(phase_.Value() / (2.0 * kPi)));
}

double CSymbolTracker::Coherence() const {
    return (inPhase_ - across_) / (inPhase_ + across_ + kLeastPower);
}

double CSymbolTracker::Height() const {
    return std::sqrt(PowerOfSignal());
}

double CSymbolTracker::Frequency_Hz() const {
    return phase_.Slope() * kBitRate_Hz / (2.0 * kPi);
}

}  // namespace sdr::rds
