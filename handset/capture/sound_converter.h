// The receiver's sound (44.1 kHz, stereo, 16 bits) at a recording's rate and number of channels. Portable;
// one thread at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "handset/capture/resampler.h"

namespace capture {

inline constexpr std::uint32_t kSourceRate_Hz = 44100;

class CSoundConverter {
  public:
    // `rate_Hz` is at most 44100; `channels` is 1 (the mean of both sides) or 2. At 44100 Hz and 2 channels
    // the samples go through as they are.
    CSoundConverter(std::uint32_t rate_Hz, std::size_t channels);

    // Adds frames and appends the frames that they complete: after n in all, ceil(n × rate / 44100).
    void Process(const std::int16_t* frames, std::size_t count, std::vector<std::int16_t>* output);

  private:
    void ProcessSide(std::size_t side, const std::int16_t* frames, std::size_t count);

    const std::uint32_t rate_Hz_;
    const std::size_t channels_;
    std::vector<CResampler> resamplers_;  // one a channel; none at the source's own rate
    std::vector<float> input_;
    std::vector<float> sides_[2];
};

}  // namespace capture
