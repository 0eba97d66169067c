// Blend, high cut and matrix.
#include "handset/fmdevice/sdr/stereo_decoder.h"

#include <algorithm>
#include <cmath>

namespace sdr {
namespace {

constexpr double kTwoPi = 6.283185307179586;
// Takes away what a carrier beside its channel leaves; 30 Hz still comes through to 0.03 dB. The difference
// has none, but its phase must be the sum's.
constexpr double kDcCorner_Hz = 2.5;
constexpr double kChange_s = 0.05;
// The high cut's corner when nothing is left of the treble.
constexpr double kLowestTreble_Hz = 3000.0;

// The share of each new sample that a filter of one pole takes: all of it, when open.
double TrebleShare(double treble) {
    static const double lowest = std::log(1.0 - std::exp(-kTwoPi * kLowestTreble_Hz / kSoundRate_Hz));
    return std::exp(lowest * (1.0 - treble));
}

double Towards(double value, double target, double most) {
    return value + std::clamp(target - value, -most, most);
}

}  // namespace

SoundQuality SoundQuality::At(double carrierToNoise_dBHz) {
    return {std::clamp((carrierToNoise_dBHz - 66.0) / 12.0, 0.0, 1.0),
            std::clamp((carrierToNoise_dBHz - 58.0) / 14.0, 0.0, 1.0)};
}

CStereoDecoder::CStereoDecoder(DeEmphasis deEmphasis) : filter_(deEmphasis) {}

void CStereoDecoder::Reset() {
    filter_.Reset();
    stereo_ = 0.0;
    sumDc_ = differenceDc_ = sum_ = difference_ = 0.0f;
}

void CStereoDecoder::Process(const float* pairs, std::size_t count, const SoundQuality& quality,
                             std::vector<float>* frames) {
    const std::size_t ready = count / kSoundStep;
    sound_.resize(2 * ready);
    filter_.Process(pairs, count, sound_.data());
    const double most = static_cast<double>(ready) / (kChange_s * kSoundRate_Hz);
    const double stereoBefore = stereo_;
    stereo_ = Towards(stereo_, quality.stereo, most);
    treble_ = Towards(treble_, quality.treble, most);
    const auto share = static_cast<float>(TrebleShare(treble_));
    const auto dcShare = static_cast<float>(kTwoPi * kDcCorner_Hz / kSoundRate_Hz);
    const auto change = static_cast<float>((stereo_ - stereoBefore) / static_cast<double>(ready));
    auto stereo = static_cast<float>(stereoBefore);
    const std::size_t before = frames->size();
    frames->resize(before + 2 * ready);
    float* frame = frames->data() + before;
    for (std::size_t i = 0; i < ready; ++i, frame += 2) {
        // The little constant keeps the fading of silence from ever smaller numbers, which take their time.
        sumDc_ += dcShare * (sound_[2 * i] - sumDc_) + 1e-20f;
        differenceDc_ += dcShare * (sound_[2 * i + 1] - differenceDc_) + 1e-20f;
        stereo += change;
        sum_ += share * (sound_[2 * i] - sumDc_ - sum_);
        difference_ += share * (stereo * (sound_[2 * i + 1] - differenceDc_) - difference_);
        frame[0] = sum_ + difference_;
        frame[1] = sum_ - difference_;
    }
}

}  // namespace sdr
