// Programmes that are samples: from a WAV file, a function, or pink noise. Portable.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "handset/transmitter/noise.h"
#include "handset/transmitter/programme.h"

namespace transmitter {

// The rate at which such programmes come in.
constexpr double kStudioRate_Hz = 48000.0;

// Asked for one sound after another, at kStudioRate_Hz.
using SoundSource = std::function<Sound()>;

// Up to 15 kHz with the pre-emphasis, nothing from 18.5 kHz on, which keeps the pilot clear.
class CSampledProgramme final : public IProgramme {
  public:
    CSampledProgramme(SoundSource source, double preEmphasis_s);
    void Read(Sound* sounds, std::size_t count) override;

  private:
    static constexpr std::size_t kFactor = 16;
    static_assert(kFactor * kStudioRate_Hz == kMultiplexRate_Hz, "whole samples between two");

    Sound Emphasised();

    SoundSource source_;
    std::vector<double> emphasis_;       // taps at the studio's rate
    std::vector<double> interpolation_;  // kFactor rows of taps
    std::vector<Sound> studio_;          // lines of the last samples, the newest last
    std::vector<Sound> emphasised_;
    std::size_t phase_ = 0;
};

// Pink noise on both sides, so much of which is the same on both: 1 is mono, 0 unrelated. `rms` is that of
// each side.
[[nodiscard]] SoundSource PinkNoise(double rms, double common, std::uint64_t seed);

// The file over and over; 16 bits, one or two channels, any rate. `fault` says why when there is none.
[[nodiscard]] SoundSource WavLoop(const std::vector<std::uint8_t>& bytes, std::string* fault);

}  // namespace transmitter
