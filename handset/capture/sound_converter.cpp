// Mixing down, resampling and rounding.
#include "handset/capture/sound_converter.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace capture {
namespace {

// The nearest sample, halves to the even one, as lrintf; which is a call. A number of 24 bits that is added
// has no room for a part of one.
std::int16_t Rounded(float sample) {
    constexpr float kNoParts = 12582912.0f;
    return static_cast<std::int16_t>(std::clamp(sample, -32768.0f, 32767.0f) + kNoParts - kNoParts);
}

// The mean of both sides, four frames at once.
void MixDown(const std::int16_t* frames, std::size_t count, float* mean) {
    using FourFrames = std::int32_t __attribute__((vector_size(16)));
    using Unsigned = std::uint32_t __attribute__((vector_size(16)));
    using Four = float __attribute__((vector_size(16)));
    std::size_t i = 0;
    for (; i + 4 <= count; i += 4) {
        FourFrames four;
        std::memcpy(&four, frames + 2 * i, sizeof four);
        // The left side lies in the lower half.
        const auto left = reinterpret_cast<FourFrames>(reinterpret_cast<Unsigned>(four) << 16) >> 16;
        const FourFrames sum = left + (four >> 16);
        const Four half = __builtin_convertvector(sum, Four) * 0.5f;
        std::memcpy(mean + i, &half, sizeof half);
    }
    for (; i < count; ++i) mean[i] = static_cast<float>(frames[2 * i] + frames[2 * i + 1]) / 2;
}

}  // namespace

CSoundConverter::CSoundConverter(std::uint32_t rate_Hz, std::size_t channels)
    : rate_Hz_(rate_Hz), channels_(channels), sides_(channels) {
    if (rate_Hz_ == kSourceRate_Hz) return;
    for (Side& side : sides_) {
        for (const auto& step : RateStepsTo(rate_Hz_)) side.steps.emplace_back(step);
    }
}

void CSoundConverter::Process(const std::int16_t* frames, std::size_t count,
                              std::vector<std::int16_t>* output) {
    if (rate_Hz_ == kSourceRate_Hz && channels_ == 2) {
        output->insert(output->end(), frames, frames + 2 * count);
        return;
    }
    for (std::size_t side = 0; side < channels_; ++side) ProcessSide(&sides_[side], side, frames, count);
    const std::size_t due = Due(count);
    const std::size_t first = output->size();
    output->resize(first + due * channels_);
    for (std::size_t side = 0; side < channels_; ++side) {
        std::vector<float>& from = sides_[side].output;
        for (std::size_t i = 0; i < due; ++i) (*output)[first + i * channels_ + side] = Rounded(from[i]);
        from.erase(from.begin(), from.begin() + static_cast<std::ptrdiff_t>(due));
    }
}

void CSoundConverter::ProcessSide(Side* side, std::size_t number, const std::int16_t* frames,
                                  std::size_t count) {
    std::vector<float>& input = sound_[0];
    input.resize(count);
    if (channels_ == 1) {
        MixDown(frames, count, input.data());
    } else {
        for (std::size_t i = 0; i < count; ++i) input[i] = frames[2 * i + number];
    }
    for (CResampler& step : side->steps) {
        sound_[1].clear();
        step.Process(sound_[0].data(), sound_[0].size(), &sound_[1]);
        std::swap(sound_[0], sound_[1]);
    }
    side->output.insert(side->output.end(), sound_[0].begin(), sound_[0].end());
}

// Two steps may have a frame ready a little before its time.
std::size_t CSoundConverter::Due(std::size_t inputs) {
    inputs_ += inputs;
    const std::uint64_t before = outputs_;
    outputs_ = (inputs_ * rate_Hz_ + kSourceRate_Hz - 1) / kSourceRate_Hz;
    return static_cast<std::size_t>(outputs_ - before);
}

}  // namespace capture
