// Direct current and oscillator.
#include "handset/fmdevice/sdr/tuning.h"

#include <algorithm>
#include <cmath>

#include "handset/fmdevice/sdr/kernels.h"

namespace sdr {
namespace {

constexpr double kTwoPi = 6.283185307179586;
// The direct current of a stick drifts with its warmth; a station's own spectrum averages out over this time.
constexpr double kDcTime_s = 0.5;
// A station this near to the centre may have a resting carrier there, which must not be taken for direct
// current.
constexpr double kNearCentre_Hz = 5000.0;
constexpr std::size_t kEvery = 7;  // samples that are looked at

}  // namespace

void CTuning::Measure(const Sample* samples, std::size_t count) {
    Sample sum;
    std::size_t seen = 0;
    for (std::size_t i = 0; i < count; i += kEvery) {
        // Nothing that is no number passes this.
        if (!(std::norm(samples[i]) <= kLargestValue)) continue;
        sum += samples[i];
        ++seen;
    }
    if (seen == 0) return;
    const double block_s = static_cast<double>(count) / rate_Hz_;
    measured_s_ = std::min(measured_s_ + block_s, kDcTime_s);
    dc_ += static_cast<float>(block_s / measured_s_) * (sum / static_cast<float>(seen) - dc_);
}

void CTuning::Process(Sample* samples, std::size_t count) {
    if (std::fabs(offset_Hz_) < kNearCentre_Hz) {
        dc_ = {};
        measured_s_ = 0.0;
    } else {
        Measure(samples, count);
    }
    const float dc[2] = {dc_.real(), dc_.imag()};
    const double step_turns = -offset_Hz_ / rate_Hz_;
    ActiveKernels().rotate(Pairs(samples), count, dc, kTwoPi * phase_turns_, kTwoPi * step_turns);
    phase_turns_ += step_turns * static_cast<double>(count);
    phase_turns_ -= std::floor(phase_turns_);
}

}  // namespace sdr
