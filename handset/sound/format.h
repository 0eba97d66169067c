// The one format of the receiver's sound: 44.1 kHz, stereo, 16 bits. A frame is one sample of each side.
// Portable.
#pragma once

#include <cstddef>
#include <cstdint>

namespace sound {

inline constexpr std::uint32_t kSampleRate_Hz = 44100;
inline constexpr std::size_t kChannels = 2;
inline constexpr std::size_t kFrameBytes = kChannels * sizeof(std::int16_t);
// Sound is made in blocks of this many frames, 20 ms of handset time.
inline constexpr std::size_t kBlockFrames = kSampleRate_Hz / 50;

// Frames on the handset's clock: frame f is heard at f / 44.1 ms.
inline constexpr std::uint64_t FrameAt(std::uint64_t handset_ms) {
    return handset_ms * 441 / 10;
}

}  // namespace sound
