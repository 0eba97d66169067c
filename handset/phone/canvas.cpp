// Shapes by their distance functions: a pixel is covered as far as its middle lies inside.
#include "handset/phone/canvas.h"

#include <algorithm>
#include <cmath>

namespace panel {
namespace {

double Clamped(double value) {
    return std::min(1.0, std::max(0.0, value));
}

// Distance from the shape's edge; negative inside.
double Distance(const Rounded& shape, double x, double y) {
    const double halfWidth = shape.w / 2;
    const double halfHeight = shape.h / 2;
    const double radius = std::min(shape.radius, std::min(halfWidth, halfHeight));
    const double dx = std::abs(x - shape.x - halfWidth) - halfWidth + radius;
    const double dy = std::abs(y - shape.y - halfHeight) - halfHeight + radius;
    const double outside = std::hypot(std::max(dx, 0.0), std::max(dy, 0.0));
    return outside + std::min(std::max(dx, dy), 0.0) - radius;
}

double SegmentDistance(Spot from, Spot to, double x, double y) {
    const double ax = to.x - from.x;
    const double ay = to.y - from.y;
    const double length = ax * ax + ay * ay;
    const double t = length == 0 ? 0 : Clamped(((x - from.x) * ax + (y - from.y) * ay) / length);
    return std::hypot(x - from.x - t * ax, y - from.y - t * ay);
}

// On which side of the line through a and b, in pixels; positive on the left.
double SideDistance(Spot a, Spot b, double x, double y) {
    const double length = std::hypot(b.x - a.x, b.y - a.y);
    return ((b.x - a.x) * (y - a.y) - (b.y - a.y) * (x - a.x)) / std::max(length, 1e-9);
}

std::uint8_t Mixed(std::uint8_t from, std::uint8_t to, double share) {
    return static_cast<std::uint8_t>(std::lround(from + (to - from) * share));
}

Paint Shade(Paint top, Paint bottom, double share) {
    return {Mixed(top.red, bottom.red, share), Mixed(top.green, bottom.green, share),
            Mixed(top.blue, bottom.blue, share), top.alpha + (bottom.alpha - top.alpha) * share};
}

std::uint32_t Over(std::uint32_t below, Paint paint, double alpha) {
    const auto channel = [&](int shift, std::uint8_t value) {
        const auto under = static_cast<std::uint8_t>(below >> shift);
        return static_cast<std::uint32_t>(Mixed(under, value, alpha)) << shift;
    };
    return channel(16, paint.red) | channel(8, paint.green) | channel(0, paint.blue);
}

}  // namespace

template <typename Coverage>
void CCanvas::Cover(double x, double y, double w, double h, Paint top, Paint bottom, Coverage coverage) {
    const int left = std::max(0, static_cast<int>(std::floor(x)));
    const int upper = std::max(0, static_cast<int>(std::floor(y)));
    const int right = std::min(width_, static_cast<int>(std::ceil(x + w)));
    const int lower = std::min(height_, static_cast<int>(std::ceil(y + h)));
    for (int row = upper; row < lower; ++row) {
        const Paint paint = Shade(top, bottom, Clamped((row + 0.5 - y) / std::max(h, 1.0)));
        std::uint32_t* pixel = pixels_ + static_cast<std::ptrdiff_t>(row) * width_ + left;
        for (int column = left; column < right; ++column, ++pixel) {
            const double alpha = paint.alpha * coverage(column + 0.5, row + 0.5);
            if (alpha > 0) *pixel = Over(*pixel, paint, alpha);
        }
    }
}

void CCanvas::Fill(const Rounded& shape, Paint top, Paint bottom) {
    Cover(shape.x, shape.y, shape.w, shape.h, top, bottom,
          [&](double x, double y) { return Clamped(0.5 - Distance(shape, x, y)); });
}

void CCanvas::Outline(const Rounded& shape, double thickness, Paint top, Paint bottom) {
    Cover(shape.x, shape.y, shape.w, shape.h, top, bottom, [&](double x, double y) {
        const double distance = Distance(shape, x, y);
        return Clamped(0.5 - distance) * Clamped(0.5 + distance + thickness);
    });
}

void CCanvas::Shadow(const Rounded& shape, double spread, Paint paint) {
    Cover(shape.x - spread, shape.y - spread, shape.w + 2 * spread, shape.h + 2 * spread, paint, paint,
          [&](double x, double y) {
              const double depth = Clamped(1 - Distance(shape, x, y) / spread);
              return depth * depth;
          });
}

void CCanvas::Stroke(Spot from, Spot to, double thickness, Paint paint) {
    const double half = thickness / 2;
    const double left = std::min(from.x, to.x) - half - 1;
    const double top = std::min(from.y, to.y) - half - 1;
    Cover(left, top, std::abs(from.x - to.x) + thickness + 2, std::abs(from.y - to.y) + thickness + 2, paint,
          paint, [&](double x, double y) { return Clamped(0.5 + half - SegmentDistance(from, to, x, y)); });
}

void CCanvas::Triangle(Spot a, Spot b, Spot c, Paint paint) {
    if (SideDistance(a, b, c.x, c.y) < 0) std::swap(b, c);
    const double left = std::min({a.x, b.x, c.x}) - 1;
    const double top = std::min({a.y, b.y, c.y}) - 1;
    const double right = std::max({a.x, b.x, c.x}) + 1;
    const double bottom = std::max({a.y, b.y, c.y}) + 1;
    Cover(left, top, right - left, bottom - top, paint, paint, [&](double x, double y) {
        const double inside =
            std::min({SideDistance(a, b, x, y), SideDistance(b, c, x, y), SideDistance(c, a, x, y)});
        return Clamped(0.5 + inside);
    });
}

}  // namespace panel
