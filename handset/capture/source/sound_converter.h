// The receiver's sound (44.1 kHz, stereo, 16 bits) at a recording's rate and number of channels. Portable;
// one thread at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace capture {

class CSoundConverter {
  public:
    // How much of the sound may still be inside the filter, whatever the rate.
    static constexpr double kMostDelay_s = 0.15;

    // `rate_Hz` is at most 44100; `channels` is 1 (the mean of both sides) or 2. At a rate that is lower the
    // sound is flat up to 0.9 of the new half rate and at least 60 dB down from the new half rate on, so that
    // nothing above it is heard folded back. At 44100 Hz the samples go through as they are. Throws
    // std::bad_alloc.
    CSoundConverter(std::uint32_t rate_Hz, std::size_t channels);
    ~CSoundConverter();
    CSoundConverter(const CSoundConverter&) = delete;
    CSoundConverter& operator=(const CSoundConverter&) = delete;

    // Adds frames and appends the frames that they complete. Frame k stands for the moment k / rate of the
    // sound: nothing is early or late, but what came in last is given out up to kMostDelay_s later.
    void Process(const std::int16_t* frames, std::size_t count, std::vector<std::int16_t>* output);

  private:
    struct Resampler;

    const std::size_t channels_;
    std::unique_ptr<Resampler> resampler_;  // none at the source's own rate
    std::vector<float> mean_;               // of both sides
};

}  // namespace capture
