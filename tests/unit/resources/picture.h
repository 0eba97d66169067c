// A bitmap resource as rows of colours.
#pragma once

#include <cstdint>
#include <vector>

// 0xRRGGBB.
using Colour = std::uint32_t;
inline constexpr Colour kMagenta = 0xFF00FF;

struct Picture {
    int width = 0, height = 0;  // 0 when the resource is missing or is not a plain 24-bit bitmap
    std::vector<Colour> pixels;

    [[nodiscard]] Colour At(int x, int y) const { return pixels[static_cast<std::size_t>(y) * width + x]; }
    // The rectangle as a picture of its own; it has to lie inside.
    [[nodiscard]] Picture Part(int x, int y, int cx, int cy) const;
    bool operator==(const Picture& other) const {
        return width == other.width && height == other.height && pixels == other.pixels;
    }
};

[[nodiscard]] Picture LoadPicture(unsigned id);

inline int Red(Colour colour) {
    return colour >> 16;
}
inline int Green(Colour colour) {
    return colour >> 8 & 0xFF;
}
inline int Blue(Colour colour) {
    return colour & 0xFF;
}
