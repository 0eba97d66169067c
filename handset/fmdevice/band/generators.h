// The sound of programmes, made sample by sample. Portable. Samples are floats from -1 to 1, frames of left
// and right in turn. A generator is used by one thread at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "handset/fmdevice/band/programme.h"
#include "handset/sound/wav.h"

namespace fm {

// Evenly spread random numbers from -1 to 1; the same seed gives the same row.
class CNoise {
  public:
    explicit CNoise(std::uint32_t seed) : state_(seed | 1) {}
    float Next() {
        state_ ^= state_ << 13;
        state_ ^= state_ >> 17;
        state_ ^= state_ << 5;
        return static_cast<float>(static_cast<std::int32_t>(state_)) / 2147483648.0F;
    }

  private:
    std::uint32_t state_;
};

class IGenerator {
  public:
    virtual ~IGenerator() = default;
    // The next `count` frames.
    virtual void Render(float* frames, std::size_t count) = 0;
};

// The loudest sample of a tone.
inline constexpr float kToneAmplitude = 0.4F;

// The generator of a programme that is not a file.
[[nodiscard]] std::unique_ptr<IGenerator> MakeGenerator(const Programme& programme);
// Plays a sound over and over.
[[nodiscard]] std::unique_ptr<IGenerator> MakeFileGenerator(sound::WavSound sound);

}  // namespace fm
