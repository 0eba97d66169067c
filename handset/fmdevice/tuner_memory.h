// What the tuner remembers from one power-up to the next, as a chip's driver does: the station and the
// volume, with the state of the handset. Any thread, with the receiver's lock.
#pragma once

#include <cstdint>

namespace fm {

struct TunerMemory {
    std::uint32_t channel;  // of the band
    std::uint32_t volume;   // percent
};

// What was remembered last. What was never stored, is damaged or out of range is the bottom of the band, and
// half volume.
[[nodiscard]] TunerMemory Remembered();

// Both are remembered at once, so that a radio that is killed comes back as it was. Without memory or
// registry for it, it is not remembered, and nothing else fails.
void RememberChannel(std::uint32_t channel) noexcept;
void RememberVolume(std::uint32_t percent) noexcept;

}  // namespace fm
