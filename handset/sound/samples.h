// Samples of both sides: from numbers, and to one side. Portable.
#pragma once

#include <cstddef>
#include <cstdint>

namespace sound {

// Samples of 16 bits; the gain goes evenly from `gainBefore` to `gain`, so that a switch does not click.
void ToSamples(const float* frames, std::size_t count, float gainBefore, float gain, std::int16_t* samples);
// The mean of both sides of each frame, as numbers of the samples' size.
void MeanOfSides(const std::int16_t* frames, std::size_t count, float* mean);
// Both sides become their mean, as one loudspeaker gives them.
void MixDown(std::int16_t* samples, std::size_t count);

}  // namespace sound
