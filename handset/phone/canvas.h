// A small painter over a bitmap's pixels: pictures, and rectangles with smooth edges. Portable.
#pragma once

#include <cstdint>

#include "handset/phone/art_picture.h"
#include "handset/phone/phone_layout.h"

namespace panel {

struct Paint {
    std::uint8_t red, green, blue;
    double alpha = 1;  // 0 = nothing, 1 = opaque
};
constexpr Paint Rgb(std::uint32_t rrggbb, double alpha = 1) {
    return {static_cast<std::uint8_t>(rrggbb >> 16), static_cast<std::uint8_t>(rrggbb >> 8),
            static_cast<std::uint8_t>(rrggbb), alpha};
}

// A pixel at the edge is covered as far as the area reaches into it.
struct Area {
    double x, y, w, h;
};

// Pixels are 0x00RRGGBB, rows from the top; the canvas does not own them. What lies outside is not painted.
class CCanvas {
  public:
    CCanvas(std::uint32_t* pixels, int width, int height) : pixels_(pixels), width_(width), height_(height) {}

    void Fill(const Area& area, Paint paint);
    // As it is, its upper left corner there.
    void Draw(const ArtPicture& picture, int x, int y);
    // All over the box: the picture's corners, so many pixels each way, stay as they are, and what is between
    // them is drawn out, or pressed together. A box without room for the corners is left alone.
    void DrawOut(const ArtPicture& picture, int corner, const Box& box);

  private:
    [[nodiscard]] std::uint32_t* PixelAt(int x, int y) const;

    std::uint32_t* pixels_;
    int width_, height_;
};

}  // namespace panel
