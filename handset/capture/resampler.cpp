// The polyphase filter at work.
#include "handset/capture/resampler.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace capture {
namespace {

// Four sums in one register, a compiler's vector type.
using Lanes = float __attribute__((vector_size(16)));

Lanes Loaded(const float* from) {
    Lanes lanes;
    std::memcpy(&lanes, from, sizeof lanes);
    return lanes;
}

// `count` is a multiple of 16: several chains of sums keep the processor busy.
float Product(const float* a, const float* b, std::size_t count) {
    Lanes sums[4] = {};
    for (std::size_t i = 0; i < count; i += 16) {
        sums[0] += Loaded(a + i) * Loaded(b + i);
        sums[1] += Loaded(a + i + 4) * Loaded(b + i + 4);
        sums[2] += Loaded(a + i + 8) * Loaded(b + i + 8);
        sums[3] += Loaded(a + i + 12) * Loaded(b + i + 12);
    }
    const Lanes sum = (sums[0] + sums[1]) + (sums[2] + sums[3]);
    return (sum[0] + sum[1]) + (sum[2] + sum[3]);
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
    const std::uint32_t phases = bank_->Phases();
    const std::uint32_t whole = bank_->Step() / phases;
    const std::uint32_t part = bank_->Step() % phases;
    output->reserve(output->size() + count * phases / bank_->Step() + 1);
    while (next_ < window_.size()) {
        output->push_back(Product(bank_->Phase(phase_), window_.data() + next_ + 1 - taps, taps));
        next_ += whole;
        phase_ += part;
        if (phase_ < phases) continue;
        phase_ -= phases;
        ++next_;
    }
    // next_ may lie beyond the end by less than a step.
    const std::size_t used = std::min(next_ + 1 - taps, window_.size());
    window_.erase(window_.begin(), window_.begin() + static_cast<std::ptrdiff_t>(used));
    next_ -= used;
}

}  // namespace capture
