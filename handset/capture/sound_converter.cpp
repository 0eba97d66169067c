// Mixing down, resampling and rounding.
#include "handset/capture/sound_converter.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <mutex>

namespace capture {
namespace {

// Made once a rate: that takes longer than some recordings.
std::shared_ptr<const CLowPassBank> BankFor(std::uint32_t rate_Hz) {
    static std::mutex lock;  // guards banks
    static std::map<std::uint32_t, std::shared_ptr<const CLowPassBank>> banks;
    const std::lock_guard<std::mutex> guard(lock);
    auto& bank = banks[rate_Hz];
    if (!bank) bank = std::make_shared<const CLowPassBank>(kSourceRate_Hz, rate_Hz);
    return bank;
}

std::int16_t Rounded(float sample) {
    return static_cast<std::int16_t>(std::lrintf(std::clamp(sample, -32768.0f, 32767.0f)));
}

}  // namespace

CSoundConverter::CSoundConverter(std::uint32_t rate_Hz, std::size_t channels)
    : rate_Hz_(rate_Hz), channels_(channels) {
    if (rate_Hz_ == kSourceRate_Hz) return;
    resamplers_.assign(channels_, CResampler(BankFor(rate_Hz_)));
}

void CSoundConverter::Process(const std::int16_t* frames, std::size_t count,
                              std::vector<std::int16_t>* output) {
    if (resamplers_.empty() && channels_ == 2) {
        output->insert(output->end(), frames, frames + 2 * count);
        return;
    }
    for (std::size_t side = 0; side < channels_; ++side) ProcessSide(side, frames, count);
    for (std::size_t i = 0; i < sides_[0].size(); ++i) {
        for (std::size_t side = 0; side < channels_; ++side) output->push_back(Rounded(sides_[side][i]));
    }
}

void CSoundConverter::ProcessSide(std::size_t side, const std::int16_t* frames, std::size_t count) {
    input_.resize(count);
    for (std::size_t i = 0; i < count; ++i) {
        const std::int16_t* frame = frames + 2 * i;
        input_[i] = channels_ == 1 ? static_cast<float>(frame[0] + frame[1]) / 2 : frame[side];
    }
    if (resamplers_.empty()) {
        sides_[side] = input_;
        return;
    }
    sides_[side].clear();
    resamplers_[side].Process(input_.data(), count, &sides_[side]);
}

}  // namespace capture
