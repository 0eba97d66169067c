// From the multiplex's rate to sound at 48 kHz: low-pass filter and de-emphasis in one. Portable.
#pragma once

#include <cstddef>
#include <vector>

#include "handset/fmdevice/sdr/pair_filter.h"

namespace sdr {

constexpr double kSoundRate_Hz = 48000.0;
constexpr std::size_t kSoundStep = 8;  // samples of the multiplex to one of sound

enum class DeEmphasis : std::uint8_t {
    k50us,  // Europe, Asia, Australia
    k75us,  // the Americas, Korea
    kNone,
};

// Sum and difference side by side, as the pilot loop gives them. Even to 14.6 kHz but for the de-emphasis,
// and 90 dB down from 17 kHz on: the pilot at 19 kHz, and the data's subcarrier, which the difference's mixer
// moves to 17 to 21 kHz. One thread at a time.
class CAudioFilter {
  public:
    explicit CAudioFilter(DeEmphasis deEmphasis);

    // `count` pairs, a multiple of kSoundStep; gives count / kSoundStep pairs.
    void Process(const float* pairs, std::size_t count, float* sound);
    void Reset();

    // The gain for a tone in the multiplex, with what folds into the sound.
    [[nodiscard]] double ResponseAt(double frequency_Hz) const;
    // 1 / |1 + j 2 pi f tau|.
    [[nodiscard]] static double DeEmphasisGain(DeEmphasis deEmphasis, double frequency_Hz);

  private:
    std::vector<double> firstTaps_;
    std::vector<double> secondTaps_;
    CPairFilter first_;
    CPairFilter second_;
    std::vector<float> between_;
};

}  // namespace sdr
