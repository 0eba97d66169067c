// Left and right out of sum and difference. Portable.
#pragma once

#include <cstddef>
#include <vector>

#include "handset/fmdevice/sdr/audio_filter.h"

namespace sdr {

// How much of the difference, and of the treble, a station of some quality gets: from all of it, 1, down to
// none, 0.
struct SoundQuality {
    double stereo = 1.0;
    double treble = 1.0;

    // What the ear likes at a carrier-to-noise density, in dB-Hz: below 78 the difference is taken back, down
    // to mono at 66, and below 72 the treble.
    [[nodiscard]] static SoundQuality At(double carrierToNoise_dBHz);
};

// One thread at a time.
class CStereoDecoder {
  public:
    explicit CStereoDecoder(DeEmphasis deEmphasis);

    // Appends count / kSoundStep frames of left and right, 1.0 being a deviation of 75 kHz. `pairs` as the
    // pilot loop gives them, a block of kBlockSamples or a multiple of kSoundStep. Changes of quality are
    // spread over some 50 ms.
    void Process(const float* pairs, std::size_t count, const SoundQuality& quality,
                 std::vector<float>* frames);
    void Reset();
    // How much of the difference goes into the sound at present, 0 to 1.
    [[nodiscard]] double Stereo() const { return stereo_; }

    [[nodiscard]] const CAudioFilter& Filter() const { return filter_; }

  private:
    CAudioFilter filter_;
    std::vector<float> sound_;
    double stereo_ = 0.0;
    double treble_ = 1.0;
    float sumDc_ = 0.0f;
    float differenceDc_ = 0.0f;
    float sum_ = 0.0f;
    float difference_ = 0.0f;
};

}  // namespace sdr
