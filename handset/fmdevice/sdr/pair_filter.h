// A filter of real taps over a stream of complex samples (or of two real signals side by side). Portable.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include "handset/fmdevice/sdr/fir_design.h"
#include "handset/fmdevice/sdr/kernels.h"

namespace sdr {

// Every `step`-th result, for input in blocks of any size. One thread at a time.
class CPairFilter {
  public:
    explicit CPairFilter(const std::vector<double>& taps, std::size_t step = 1)
        : taps_(TapPairs(taps)), step_(step) {
        Reset();
    }

    // Other taps from now on, as many as before.
    void SetTaps(const std::vector<double>& taps) { taps_ = TapPairs(taps); }
    // As if zeros had been coming in for ever.
    void Reset() { pending_.assign(taps_.size() - 2, 0.0f); }

    // Room for the results of `count` samples.
    [[nodiscard]] std::size_t MostResults(std::size_t count) const { return count / step_ + 1; }
    // Gives how many results there are.
    std::size_t Process(const float* pairs, std::size_t count, float* results) {
        pending_.insert(pending_.end(), pairs, pairs + 2 * count);
        const std::size_t samples = pending_.size() / 2;
        const std::size_t taps = taps_.size() / 2;
        const std::size_t ready = samples < taps ? 0 : (samples - taps) / step_ + 1;
        ActiveKernels().filter(pending_.data(), 2 * step_, taps_.data(), taps_.size(), results, ready);
        const auto used = static_cast<std::ptrdiff_t>(2 * ready * step_);
        pending_.erase(pending_.begin(),
                       pending_.begin() + std::min(used, static_cast<std::ptrdiff_t>(pending_.size())));
        return ready;
    }

  private:
    std::vector<float> taps_;
    std::size_t step_;
    std::vector<float> pending_;
};

}  // namespace sdr
