// Bitmap files of 32 bits a pixel.
#include "handset/phone/art_picture.h"

#include <cstring>

namespace panel {
namespace {

// Places in the file: its own header, then that of the bitmap.
constexpr std::size_t kPixelsAt = 10, kWidthAt = 18, kHeightAt = 22, kBitsAt = 28, kHeadersEnd = 54;
constexpr std::uint32_t kLargest = 1 << 14;

template <typename Number>
Number NumberAt(const std::uint8_t* bytes, std::size_t place) {
    Number number = 0;
    std::memcpy(&number, bytes + place, sizeof number);
    return number;
}

}  // namespace

ArtPicture ReadBitmapFile(const std::uint8_t* bytes, std::size_t size) {
    if (size < kHeadersEnd || bytes[0] != 'B' || bytes[1] != 'M') return {};
    const auto first = NumberAt<std::uint32_t>(bytes, kPixelsAt);
    const auto width = NumberAt<std::uint32_t>(bytes, kWidthAt);
    const auto height = NumberAt<std::uint32_t>(bytes, kHeightAt);
    if (NumberAt<std::uint16_t>(bytes, kBitsAt) != 32 || width == 0 || height == 0 || width > kLargest ||
        height > kLargest) {
        return {};
    }
    const std::size_t row = std::size_t{width} * sizeof(std::uint32_t);
    if (first > size || size - first < row * height) return {};
    ArtPicture picture = {static_cast<int>(width), static_cast<int>(height), {}};
    picture.pixels.resize(std::size_t{width} * height);
    // The file begins with the lowest row.
    for (std::size_t y = 0; y < height; ++y)
        std::memcpy(&picture.pixels[y * width], bytes + first + (height - 1 - y) * row, row);
    return picture;
}

}  // namespace panel
