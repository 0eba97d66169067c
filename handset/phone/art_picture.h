// A picture that may be clear in places, and how it is read. Portable.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace panel {

// Pixels are 0xAARRGGBB, rows from the top; the colours are whole whatever the alpha is.
struct ArtPicture {
    int width = 0, height = 0;
    std::vector<std::uint32_t> pixels;
};

// A bitmap file of 32 bits a pixel. Without a size when the bytes are no such file.
ArtPicture ReadBitmapFile(const std::uint8_t* bytes, std::size_t size);

}  // namespace panel
