// Samples of an aerial as the bytes of files and servers. Portable.
#pragma once

#include <complex>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace transmitter {

enum class StreamFormat {
    kCu8,   // unsigned bytes, 127.5 being 0, as receiver sticks send them
    kCs8,   // signed bytes
    kCs16,  // 16 bits, low byte first
    kCf32,  // floats as they are in memory
};

// Appends real and imaginary part of each sample in turn. What is beyond full scale is clipped; the count of
// clipped parts is returned.
std::size_t Append(const std::complex<float>* samples, std::size_t count, StreamFormat format,
                   std::vector<std::uint8_t>* bytes);

}  // namespace transmitter
