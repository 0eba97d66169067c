// The formats in which the radio's sound may be recorded. Portable.
#pragma once

#include <cstdint>

// Which chain and which format a recorder is made for.
inline constexpr std::uint32_t kFormatAmr = 0;  // the only one that goes to the AMR encoder
inline constexpr std::uint32_t kFormatWav22Stereo = 3;
inline constexpr std::uint32_t kFormatWav = 9;

struct CaptureFormat {
    std::uint32_t uRate_Hz;
    std::uint16_t uChannels;
    std::uint16_t uBits;  // per sample
};

// What is asked of the capture pin for a format index; an unknown index is answered like the first.
CaptureFormat CaptureFormatOf(std::uint32_t index);
