#include "handset/ether/studio.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "handset/sound/format.h"
#include "handset/transmitter/windowed_sinc.h"

namespace ether {
namespace {

constexpr double kPreEmphasis_s = 50e-6;
constexpr double kPass_Hz = 15000;
constexpr double kStop_Hz = 18500;
constexpr double kAttenuation_dB = 80;
// 160 samples of the studio take 147 of the programme.
constexpr std::size_t kPhases = 160;
constexpr std::size_t kStep = 147;
static_assert(sound::kSampleRate_Hz * kPhases == kStep * static_cast<std::size_t>(kStudioRate_Hz),
              "both count the same time");
constexpr std::size_t kRefill_frames = 441;
// A limiter lets go again by half in some 0.3 s.
constexpr float kRelease = 0.99995F;
constexpr std::size_t kLanes = 8;

// Low-pass, pre-emphasis and change of rate at once: one row of taps for each place of a studio's sample
// between two of the programme's.
struct Filter {
    std::size_t taps;
    std::vector<float> rows;

    Filter() : taps(0) {
        const transmitter::CWindowedSinc sinc(kPass_Hz, kStop_Hz, kAttenuation_dB);
        const auto half = static_cast<std::size_t>(std::ceil(sinc.Reach_s() * sound::kSampleRate_Hz)) + 1;
        taps = (2 * half + kLanes - 1) / kLanes * kLanes;
        rows.resize(kPhases * taps);
        for (std::size_t phase = 0; phase < kPhases; ++phase) {
            const double part = static_cast<double>(phase * kStep % kPhases) / kPhases;
            for (std::size_t tap = 0; tap < taps; ++tap) {
                const double time_s =
                    (static_cast<double>(half) - 1 + part - static_cast<double>(tap)) / sound::kSampleRate_Hz;
                // 1 + j w tau is the filter itself and tau times its slope.
                rows[phase * taps + tap] = static_cast<float>(
                    (sinc.At(time_s) + kPreEmphasis_s * sinc.SlopeAt(time_s)) / sound::kSampleRate_Hz);
            }
        }
    }
};

const Filter& TheFilter() {
    static const Filter filter;
    return filter;
}

float Sum(const float* samples, const float* taps, std::size_t count) {
    float lanes[kLanes] = {};
    for (std::size_t i = 0; i < count; i += kLanes) {
        for (std::size_t lane = 0; lane < kLanes; ++lane) lanes[lane] += samples[i + lane] * taps[i + lane];
    }
    return ((lanes[0] + lanes[4]) + (lanes[1] + lanes[5])) + ((lanes[2] + lanes[6]) + (lanes[3] + lanes[7]));
}

}  // namespace

CStudio::CStudio(std::unique_ptr<fm::IGenerator> programme)
    : programme_(std::move(programme)), left_(TheFilter().taps), right_(TheFilter().taps) {}

void CStudio::Refill() {
    left_.erase(left_.begin(), left_.begin() + static_cast<std::ptrdiff_t>(at_));
    right_.erase(right_.begin(), right_.begin() + static_cast<std::ptrdiff_t>(at_));
    at_ = 0;
    float frames[kRefill_frames * sound::kChannels];
    programme_->Render(frames, kRefill_frames);
    for (std::size_t i = 0; i < kRefill_frames; ++i) {
        left_.push_back(frames[sound::kChannels * i]);
        right_.push_back(frames[sound::kChannels * i + 1]);
    }
}

void CStudio::Read(float* left, float* right, std::size_t count) {
    const Filter& filter = TheFilter();
    for (std::size_t i = 0; i < count; ++i) {
        if (at_ + filter.taps > left_.size()) Refill();
        const float* row = &filter.rows[phase_ * filter.taps];
        const float onLeft = Sum(&left_[at_], row, filter.taps);
        const float onRight = Sum(&right_[at_], row, filter.taps);
        // Both sides are turned down together, so that nothing moves between them.
        loudest_ = std::max({1.0F, loudest_ * kRelease, std::abs(onLeft), std::abs(onRight)});
        left[i] = onLeft / loudest_;
        right[i] = onRight / loudest_;
        at_ += (phase_ * kStep % kPhases + kStep) / kPhases;
        phase_ = (phase_ + 1) % kPhases;
    }
}

}  // namespace ether
