// Pictures of the desktop.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

namespace screens {

struct Picture {
    LONG width = 0, height = 0;
    std::vector<std::uint32_t> pixels;  // 0x00RRGGBB, rows from the top
    [[nodiscard]] std::uint32_t At(LONG x, LONG y) const {
        return pixels[static_cast<std::size_t>(y * width + x)] & 0xFFFFFF;
    }
};

// As it stands on the screen now.
[[nodiscard]] Picture PictureOf(const RECT& area);

// As a PNG, once it has stood still for a moment. What moves all the time, like a text that runs, is taken as
// it is.
void TakePicture(const RECT& area, const std::wstring& file);

}  // namespace screens
