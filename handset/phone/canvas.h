// A small painter for rounded, shaded shapes with smooth edges, over a bitmap's pixels. Portable.
#pragma once

#include <cstdint>

namespace panel {

struct Paint {
    std::uint8_t red, green, blue;
    double alpha = 1;  // 0 = nothing, 1 = opaque
};
constexpr Paint Rgb(std::uint32_t rrggbb, double alpha = 1) {
    return {static_cast<std::uint8_t>(rrggbb >> 16), static_cast<std::uint8_t>(rrggbb >> 8),
            static_cast<std::uint8_t>(rrggbb), alpha};
}

struct Spot {
    double x, y;
};
// A rectangle with rounded corners; a radius of half its smaller side makes a pill or a circle.
struct Rounded {
    double x, y, w, h, radius;
    // The same shape, smaller by `by` on every side.
    [[nodiscard]] Rounded Inset(double by) const {
        return {x + by, y + by, w - 2 * by, h - 2 * by, radius > by ? radius - by : 0};
    }
};

// Pixels are 0x00RRGGBB, rows from the top; the canvas does not own them. What lies outside is not painted.
class CCanvas {
  public:
    CCanvas(std::uint32_t* pixels, int width, int height) : pixels_(pixels), width_(width), height_(height) {}

    // Shaded evenly from the top colour to the bottom one.
    void Fill(const Rounded& shape, Paint top, Paint bottom);
    void Fill(const Rounded& shape, Paint paint) { Fill(shape, paint, paint); }
    // A line along the shape's edge, inside it.
    void Outline(const Rounded& shape, double thickness, Paint top, Paint bottom);
    // Fades out over `spread` pixels around the shape.
    void Shadow(const Rounded& shape, double spread, Paint paint);
    // A line with round ends.
    void Stroke(Spot from, Spot to, double thickness, Paint paint);
    // Corners in either order of rotation.
    void Triangle(Spot a, Spot b, Spot c, Paint paint);

  private:
    template <typename Coverage>
    void Cover(double x, double y, double w, double h, Paint top, Paint bottom, Coverage coverage);

    std::uint32_t* pixels_;
    int width_, height_;
};

}  // namespace panel
