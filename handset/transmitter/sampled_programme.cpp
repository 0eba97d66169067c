#include "handset/transmitter/sampled_programme.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "handset/transmitter/windowed_sinc.h"

namespace transmitter {
namespace {

constexpr double kPass_Hz = 15000;
constexpr double kStop_Hz = 18500;
constexpr double kAttenuation_dB = 120;

// A filter's taps around its middle, evenly spaced by a sample of the studio's rate and shifted by `part` of
// one.
std::vector<double> Taps(const CWindowedSinc& filter, double slopeWeight_s, double part) {
    const auto half = static_cast<int>(std::ceil(filter.Reach_s() * kStudioRate_Hz)) + 1;
    std::vector<double> taps;
    for (int tap = -half; tap <= half; ++tap) {
        const double time_s = (tap + part) / kStudioRate_Hz;
        taps.push_back((filter.At(time_s) + slopeWeight_s * filter.SlopeAt(time_s)) / kStudioRate_Hz);
    }
    return taps;
}

// The newest sound of a line under the first tap. Every other one is added up apart: no sum waits for the
// last.
Sound Filtered(const std::vector<Sound>& line, const double* taps) {
    Sound even, odd;
    const Sound* newest = &line.back();
    std::size_t i = 0;
    for (; i + 1 < line.size(); i += 2, newest -= 2) {
        even.left += taps[i] * newest[0].left;
        even.right += taps[i] * newest[0].right;
        odd.left += taps[i + 1] * newest[-1].left;
        odd.right += taps[i + 1] * newest[-1].right;
    }
    if (i < line.size()) {
        even.left += taps[i] * newest->left;
        even.right += taps[i] * newest->right;
    }
    return {even.left + odd.left, even.right + odd.right};
}

void Shift(std::vector<Sound>& line, const Sound& newest) {
    std::move(line.begin() + 1, line.end(), line.begin());
    line.back() = newest;
}

}  // namespace

CSampledProgramme::CSampledProgramme(SoundSource source, double preEmphasis_s)
    : source_(std::move(source)),
      // 1 + j w tau is the filter itself and tau times its slope.
      emphasis_(Taps(CWindowedSinc(kPass_Hz, kStop_Hz, kAttenuation_dB), preEmphasis_s, 0)),
      studio_(emphasis_.size()) {
    const CWindowedSinc between(kStop_Hz, kStudioRate_Hz - kStop_Hz, kAttenuation_dB);
    for (std::size_t phase = 0; phase < kFactor; ++phase) {
        const std::vector<double> row = Taps(between, 0, static_cast<double>(phase) / kFactor);
        interpolation_.insert(interpolation_.end(), row.begin(), row.end());
    }
    emphasised_.resize(interpolation_.size() / kFactor);
}

Sound CSampledProgramme::Emphasised() {
    Shift(studio_, source_());
    return Filtered(studio_, emphasis_.data());
}

void CSampledProgramme::Read(Sound* sounds, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        if (phase_ == 0) Shift(emphasised_, Emphasised());
        sounds[i] = Filtered(emphasised_, &interpolation_[phase_ * emphasised_.size()]);
        phase_ = (phase_ + 1) % kFactor;
    }
}

SoundSource PinkNoise(double rms, double common, std::uint64_t seed) {
    // Kellet's three poles: within 0.5 dB of 3 dB an octave above 10 Hz at rates of this kind.
    struct Pink {
        double low = 0, middle = 0, high = 0;
        double Next(double white) {
            low = 0.99765 * low + white * 0.0990460;
            middle = 0.96300 * middle + white * 0.2965164;
            high = 0.57000 * high + white * 1.0526913;
            return low + middle + high + white * 0.1848;
        }
    };
    struct State {
        CNoise noise;
        Pink both, left, right;
    };
    // What three poles add up to for white noise of variance 1.
    constexpr double kRmsOfPink = 2.979;
    auto state = std::make_shared<State>(State{CNoise(seed), {}, {}, {}});
    const double shared = rms / kRmsOfPink * std::sqrt(common);
    const double own = rms / kRmsOfPink * std::sqrt(1 - common);
    return [state, shared, own] {
        const std::complex<float> sides = state->noise.Gaussian();
        const double both = shared * state->both.Next(state->noise.Gaussian().real());
        return Sound{both + own * state->left.Next(sides.real()),
                     both + own * state->right.Next(sides.imag())};
    };
}

}  // namespace transmitter
