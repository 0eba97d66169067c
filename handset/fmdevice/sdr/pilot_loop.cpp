// Finding and following the pilot.
#include "handset/fmdevice/sdr/pilot_loop.h"

#include <algorithm>
#include <cmath>
#include <complex>

namespace sdr {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kTurn = 2.0 * kPi;
constexpr double kNominal_turns = 19000.0 / kMpxRate_Hz;
// The first result of two blocks under one window, and the filters before.
constexpr std::size_t kSettling = 4;
// Farther away no transmitter and no crystal puts it.
constexpr double kFarthest_Hz = 20.0;
// How much of what is measured is one steady sine: to begin with, and to go on. Noise alone gives 0.3 and
// 0.2.
constexpr double kCoherenceToLock = 0.9;
constexpr double kCoherenceToHold = 0.5;
// BS.450 has 8 to 10 % of the greatest deviation; some send less.
constexpr double kLeastLevel = 0.02;
// Through so many blocks the line goes when the loop rests.
constexpr std::size_t kFirstBlocks = 20;
constexpr std::size_t kRestingBlocks = 200;
constexpr double kMeanBlocks = 40.0;

}  // namespace

CPilotLoop::CPilotLoop() {
    for (std::size_t i = 0; i < kBlockSamples; ++i) {
        const double sine = std::sin(kPi / 2.0 * (static_cast<double>(i) + 0.5) / kBlockSamples);
        window_[i] = static_cast<float>(sine * sine);
    }
    Reset();
}

void CPilotLoop::Reset() {
    locked_ = false;
    rate_turns_ = settled_turns_ = kNominal_turns;
    skip_ = kSettling;
    found_.clear();
    correction_turns_ = 0.0;
}

CPilotLoop::Gains CPilotLoop::GainsAfter(std::size_t blocks) {
    const auto n = static_cast<double>(blocks);
    return {2.0 * (2.0 * n - 1.0) / (n * (n + 1.0)), 6.0 / (n * (n + 1.0))};
}

double CPilotLoop::NoiseBandwidth_Hz() {
    // Of a loop of the second order: natural frequency and damping out of the two gains.
    const Gains gains = GainsAfter(kRestingBlocks);
    const double natural = std::sqrt(gains.rate) * kBlocksPerSecond;
    const double damping = gains.phase * kBlocksPerSecond / (2.0 * natural);
    return natural / 2.0 * (damping + 1.0 / (4.0 * damping));
}

double CPilotLoop::Deviation_Hz() const {
    return 75000.0 * 2.0 * std::hypot(mean_.inPhase, mean_.inQuadrature) / kBlockSamples;
}

double CPilotLoop::RateOffset_Hz() const {
    return (rate_turns_ - kNominal_turns) * kMpxRate_Hz;
}

void CPilotLoop::Process(const float* multiplex, MpxBlock* block, float* pairs) {
    const double step_turns = rate_turns_ + correction_turns_;
    const PilotSums sums =
        ActiveKernels().mixPilot(multiplex, kBlockSamples, phase_turns_, step_turns, window_.data(), pairs);
    *block = {multiplex, kBlockSamples, phase_turns_, step_turns, locked_};
    phase_turns_ += step_turns * kBlockSamples;
    phase_turns_ -= std::floor(phase_turns_);
    correction_turns_ = 0.0;
    const Place place{before_.risingSine + sums.sine - sums.risingSine,
                      before_.risingCosine + sums.cosine - sums.risingCosine};
    before_ = sums;
    if (skip_ > 0) {
        --skip_;
    } else if (locked_) {
        Follow(place);
    } else {
        Search(place);
    }
}

void CPilotLoop::Search(Place place) {
    found_.push_back(place);
    if (found_.size() < kSearchBlocks) return;
    // The straight line through the phases, each weighed alike: its slope by the mean turn from each to the
    // next.
    std::complex<double> turn;
    for (std::size_t i = 1; i < found_.size(); ++i) {
        turn += std::complex<double>(found_[i].inPhase, found_[i].inQuadrature) *
                std::conj(std::complex<double>(found_[i - 1].inPhase, found_[i - 1].inQuadrature));
    }
    double slope_rad = std::arg(turn);
    const double middle = (static_cast<double>(found_.size()) - 1.0) / 2.0;
    std::complex<double> sum;
    double power = 0.0;
    // Once more around that first line, where no phase leaps.
    for (int round = 0; round < 2; ++round) {
        sum = 0.0;
        power = 0.0;
        std::vector<std::complex<double>> turned;
        for (std::size_t i = 0; i < found_.size(); ++i) {
            const std::complex<double> value(found_[i].inPhase, found_[i].inQuadrature);
            turned.push_back(value * std::polar(1.0, -slope_rad * (static_cast<double>(i) - middle)));
            sum += turned.back();
            power += std::norm(value);
        }
        double along = 0.0;
        double squares = 0.0;
        for (std::size_t i = 0; i < turned.size() && round == 0; ++i) {
            const double at = static_cast<double>(i) - middle;
            along += at * std::arg(turned[i] * std::conj(sum));
            squares += at * at;
        }
        if (round == 0) slope_rad += along / squares;
    }
    const auto count = static_cast<double>(found_.size());
    found_.clear();
    const double coherence = power > 0.0 ? std::abs(sum) / std::sqrt(count * power) : 0.0;
    const double level = 2.0 * std::abs(sum) / count / kBlockSamples;
    const double rate_turns = rate_turns_ + slope_rad / kTurn / kBlockSamples;
    if (coherence < kCoherenceToLock || level < kLeastLevel ||
        std::fabs(rate_turns - kNominal_turns) * kMpxRate_Hz > kFarthest_Hz) {
        return;
    }
    locked_ = true;
    followed_ = kFirstBlocks;
    // The line's value now: the last measurement's window stands a block back.
    phase_turns_ += (std::arg(sum) + slope_rad * (middle + 1.0)) / kTurn;
    phase_turns_ -= std::floor(phase_turns_);
    rate_turns_ = rate_turns;
    mean_ = {std::abs(sum) / count, 0.0};
    meanPower_ = power / count;
    // What was mixed with the old phase is of no use to the next measurement.
    skip_ = 1;
}

void CPilotLoop::Follow(Place place) {
    const double share = 1.0 / kMeanBlocks;
    mean_.inPhase += share * (place.inPhase - mean_.inPhase);
    mean_.inQuadrature += share * (place.inQuadrature - mean_.inQuadrature);
    meanPower_ +=
        share * (place.inPhase * place.inPhase + place.inQuadrature * place.inQuadrature - meanPower_);
    const double coherence =
        meanPower_ > 0.0 ? std::hypot(mean_.inPhase, mean_.inQuadrature) / std::sqrt(meanPower_) : 0.0;
    if (coherence < kCoherenceToHold || Deviation_Hz() < 75000.0 * kLeastLevel / 2.0) {
        // By now the loop has followed noise, and a young one for hertz: the data of a station that goes on
        // without a pilot would be looked for in the wrong place ever after.
        rate_turns_ = settled_turns_;
        locked_ = false;
        found_.clear();
        return;
    }
    if (followed_ == kRestingBlocks && coherence > kCoherenceToLock) settled_turns_ = rate_turns_;
    const double error_turns = std::atan2(place.inQuadrature, place.inPhase) / kTurn;
    const Gains gains = GainsAfter(followed_);
    if (followed_ < kRestingBlocks) ++followed_;
    correction_turns_ = gains.phase * error_turns / kBlockSamples;
    rate_turns_ += gains.rate * error_turns / kBlockSamples;
    const double farthest = kFarthest_Hz / kMpxRate_Hz;
    rate_turns_ = std::clamp(rate_turns_, kNominal_turns - farthest, kNominal_turns + farthest);
}

}  // namespace sdr
