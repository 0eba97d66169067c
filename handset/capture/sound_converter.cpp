// Mixing down, resampling and rounding.
#include "handset/capture/sound_converter.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace capture {
namespace {

std::int16_t Rounded(float sample) {
    return static_cast<std::int16_t>(std::lrintf(std::clamp(sample, -32768.0f, 32767.0f)));
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
    for (std::size_t i = 0; i < count; ++i) {
        const std::int16_t* frame = frames + 2 * i;
        input[i] = channels_ == 1 ? static_cast<float>(frame[0] + frame[1]) / 2 : frame[number];
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
