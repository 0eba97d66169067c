// Speech frames of AMR narrow band as a file stores them (RFC 4867 section 5.3): one header byte, then the
// speech bits, for 20 ms of sound at 8 kHz. Portable.
#pragma once

#include <cstddef>
#include <cstdint>

namespace capture {

inline constexpr std::uint32_t kAmrRate_Hz = 8000;
inline constexpr std::size_t kAmrFrame_samples = 160;
inline constexpr std::size_t kLargestAmrFrame_bytes = 32;

// The length of the frame that begins with this byte, the byte included; 0 when no frame begins so.
std::size_t AmrFrameBytes(std::uint8_t header);

}  // namespace capture
