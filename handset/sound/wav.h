// WAV files (RIFF, little endian) as bytes: reading one, and the header of one that is being written.
// Portable.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace sound {

struct WavSound {
    std::uint32_t rate_Hz = 0;
    std::size_t channels = 0;           // 1 or 2
    std::vector<std::int16_t> samples;  // whole frames, at least one
};

// Where the sound of a file ends. One that is still being written may be longer than its header says.
enum class WavEnd { kAsStated, kAtTheFilesEnd };

// Reads PCM of 8 or 16 bits, one or two channels, 1000 to 192000 Hz. A file that is cut short gives what is
// there. Null when the sound was read, else why not.
[[nodiscard]] const char* ReadWav(const std::vector<std::uint8_t>& bytes, WavSound* sound,
                                  WavEnd end = WavEnd::kAsStated);

// The mean of the channels, -1 to 1.
[[nodiscard]] std::vector<double> Mono(const WavSound& sound);

struct WavShape {
    std::uint32_t rate_Hz = 0;
    std::uint16_t channels = 0;
    std::uint16_t bits = 0;  // 8 or 16

    std::uint32_t FrameBytes() const { return channels * bits / 8u; }
};

// The header of a file of PCM with `dataBytes` bytes behind it, and one more where that is odd.
inline constexpr std::uint32_t kWavHeader_bytes = 44;
[[nodiscard]] std::array<std::uint8_t, kWavHeader_bytes> WavHeader(const WavShape& shape,
                                                                   std::uint32_t dataBytes);

}  // namespace sound
