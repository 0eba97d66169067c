// The receiver's sound (44.1 kHz, stereo, 16 bits) at a recording's rate and number of channels. Portable;
// one thread at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "handset/capture/rate_steps.h"
#include "handset/capture/resampler.h"

namespace capture {

class CSoundConverter {
  public:
    // `rate_Hz` is at most 44100; `channels` is 1 (the mean of both sides) or 2. At 44100 Hz and 2 channels
    // the samples go through as they are.
    CSoundConverter(std::uint32_t rate_Hz, std::size_t channels);

    // Adds frames and appends the frames that they complete: after n in all, ceil(n × rate / 44100).
    void Process(const std::int16_t* frames, std::size_t count, std::vector<std::int16_t>* output);

  private:
    struct Side {
        std::vector<CResampler> steps;  // none at the source's own rate
        std::vector<float> output;      // that is not yet given out
    };
    void ProcessSide(Side* side, std::size_t number, const std::int16_t* frames, std::size_t count);
    std::size_t Due(std::size_t inputs);

    const std::uint32_t rate_Hz_;
    const std::size_t channels_;
    std::vector<Side> sides_;
    std::uint64_t inputs_ = 0;
    std::uint64_t outputs_ = 0;
    std::vector<float> sound_[2];  // of one step and the next
};

}  // namespace capture
