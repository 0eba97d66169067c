// The polyphase filter at work.
#include "handset/capture/resampler.h"

#include <algorithm>
#include <utility>

namespace capture {
namespace {

// Eight sums side by side: the compiler makes vector instructions of them. `count` is a multiple of 8.
float Product(const float* a, const float* b, std::size_t count) {
    float sums[8] = {};
    for (std::size_t i = 0; i < count; i += 8) {
        for (std::size_t lane = 0; lane < 8; ++lane) sums[lane] += a[i + lane] * b[i + lane];
    }
    return ((sums[0] + sums[4]) + (sums[1] + sums[5])) + ((sums[2] + sums[6]) + (sums[3] + sums[7]));
}

}  // namespace

CResampler::CResampler(std::shared_ptr<const CLowPassBank> bank) : bank_(std::move(bank)) {
    Reset();
}

void CResampler::Reset() {
    window_.assign(bank_->Taps() - 1, 0.0f);
    next_ = window_.size();
    phase_ = 0;
}

void CResampler::Process(const float* input, std::size_t count, std::vector<float>* output) {
    window_.insert(window_.end(), input, input + count);
    const std::size_t taps = bank_->Taps();
    while (next_ < window_.size()) {
        output->push_back(Product(bank_->Phase(phase_), window_.data() + next_ + 1 - taps, taps));
        phase_ += bank_->Step();
        next_ += phase_ / bank_->Phases();
        phase_ %= bank_->Phases();
    }
    // next_ may lie beyond the end by less than a step.
    const std::size_t used = std::min(next_ + 1 - taps, window_.size());
    window_.erase(window_.begin(), window_.begin() + static_cast<std::ptrdiff_t>(used));
    next_ -= used;
}

}  // namespace capture
