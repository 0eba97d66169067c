// A bitmap's pixels.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <vector>

#include "handset/state/display_format.h"

namespace coredll {

// An image as 0x00RRGGBB, first row on top.
struct Pixels {
    LONG width = 0, height = 0;
    std::vector<std::uint32_t> values;

    BITMAPINFO Info() const { return handset::DisplayFormat(width, height); }
    const std::uint32_t* Row(LONG y) const { return values.data() + static_cast<std::ptrdiff_t>(y) * width; }
};

// False for what is no bitmap, or cannot be read. `dc` is any device context; the bitmap may be selected into
// another one.
[[nodiscard]] bool ReadPixels(HDC dc, HBITMAP bitmap, Pixels* pixels);

}  // namespace coredll
