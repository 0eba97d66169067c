// A picture as a PNG file, without compression. Portable.
#pragma once

#include <cstdint>
#include <string>

namespace panel {

// Pixels are 0x00RRGGBB, rows from the top; the file's bytes.
std::string PngOf(const std::uint32_t* pixels, int width, int height);

}  // namespace panel
