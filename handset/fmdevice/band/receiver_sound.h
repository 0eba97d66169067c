// From what a station plays to what the receiver gives out: noise by level, stereo or mono. Portable.
#pragma once

#include <cstddef>
#include <cstdint>

namespace fm {

// Evenly spread random numbers from -1 to 1, four at once; the same seed gives the same rows.
class CHiss {
  public:
    using Four = float __attribute__((vector_size(16)));

    explicit CHiss(std::uint32_t seed);
    Four Next() {
        // Of four rows side by side; one row alone would have each number wait for the one before.
        state_ ^= state_ << 13;
        state_ ^= state_ >> 17;
        state_ ^= state_ << 5;
        return __builtin_convertvector(reinterpret_cast<FourWhole>(state_), Four) * (1.0F / 2147483648.0F);
    }

  private:
    using FourWhole = std::int32_t __attribute__((vector_size(16)));
    using FourBits = std::uint32_t __attribute__((vector_size(16)));

    FourBits state_;
};

// How much of the programme comes through, and the loudest sample of the hiss over it. From level 0 to 100
// the first never falls and the second never rises.
[[nodiscard]] float ProgrammeGain(int level);
[[nodiscard]] float HissAmplitude(int level);

// `frames` holds the programme and receives what is heard: mixed down to mono unless `stereo`, and with the
// hiss of the level, which is another one on each side in stereo.
void AddReception(int level, bool stereo, CHiss* hiss, float* frames, std::size_t count);

}  // namespace fm
