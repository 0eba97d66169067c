// WAV files as bytes: reading one to play it, and the header of one that is being written. Portable.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace fm {

struct WavSound {
    std::uint32_t rate_Hz = 0;
    std::size_t channels = 0;           // 1 or 2
    std::vector<std::int16_t> samples;  // whole frames, at least one
};

// Reads PCM of 8 or 16 bits, one or two channels, 1000 to 192000 Hz. A file that is cut short gives what is
// there. Null when the sound was read, else why not.
[[nodiscard]] const char* ReadWav(const std::vector<std::uint8_t>& bytes, WavSound* sound);

// The header of a file with `dataBytes` bytes of the receiver's sound behind it.
inline constexpr std::size_t kWavHeaderBytes = 44;
[[nodiscard]] std::array<std::uint8_t, kWavHeaderBytes> WavHeader(std::uint32_t dataBytes);

}  // namespace fm
