// Reading and enlarging the picture of a virtual display.
#include "handset/magnifier/framebuffer.h"

#include <algorithm>
#include <cstring>

namespace magnifier {
namespace {

// The header's words that are read here, by their place in it; each has 32 bits, the highest first.
enum HeaderWord : std::size_t {
    kHeaderSize = 0,
    kVersion = 1,
    kWidth = 4,
    kHeight = 5,
    kByteOrder = 7,
    kBitsPerPixel = 11,
    kBytesPerLine = 12,
    kRedMask = 14,
    kColours = 19,
};
constexpr std::size_t kHeaderWords = 25, kColourBytes = 12;
constexpr std::uint32_t kThisVersion = 7, kLowestFirst = 0, kRed = 0xFF0000, kLargestSide = 16384;

}  // namespace

std::optional<Framebuffer> ReadFramebuffer(const std::uint8_t* bytes, std::size_t size) {
    if (size < kHeaderWords * 4) return std::nullopt;
    const auto word = [bytes](HeaderWord place) {
        const std::uint8_t* at = bytes + place * 4;
        return std::uint32_t{at[0]} << 24 | std::uint32_t{at[1]} << 16 | std::uint32_t{at[2]} << 8 | at[3];
    };
    const std::uint32_t width = word(kWidth), height = word(kHeight), stride = word(kBytesPerLine);
    if (word(kVersion) != kThisVersion || word(kByteOrder) != kLowestFirst || word(kBitsPerPixel) != 32 ||
        word(kRedMask) != kRed || width == 0 || height == 0 || width > kLargestSide ||
        height > kLargestSide || stride < width * 4) {
        return std::nullopt;
    }
    const std::uint64_t first = word(kHeaderSize) + std::uint64_t{word(kColours)} * kColourBytes;
    if (first + std::uint64_t{stride} * height > size) return std::nullopt;
    return Framebuffer{static_cast<int>(width), static_cast<int>(height), bytes + first, stride};
}

void Enlarge(const Framebuffer& from, int top, int rows, int times, std::uint32_t* to) {
    const auto wide = static_cast<std::size_t>(from.width) * static_cast<std::size_t>(times);
    for (int row = top; row < top + rows; ++row) {
        const std::uint8_t* pixel = from.pixels + static_cast<std::size_t>(row) * from.stride;
        std::uint32_t* const line = to;
        for (int x = 0; x < from.width; ++x, pixel += 4) {
            std::uint32_t colour = 0;
            std::memcpy(&colour, pixel, sizeof colour);
            to = std::fill_n(to, times, colour);
        }
        for (int again = 1; again < times; ++again) to = std::copy_n(line, wide, to);
    }
}

}  // namespace magnifier
