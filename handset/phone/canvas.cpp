// What is painted goes over what is below, as far as it is opaque.
#include "handset/phone/canvas.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace panel {
namespace {

// `alpha` from 0 to 255.
std::uint32_t Over(std::uint32_t below, std::uint32_t colour, std::uint32_t alpha) {
    std::uint32_t mixed = 0;
    for (int shift = 0; shift < 24; shift += 8) {
        const std::uint32_t under = (below >> shift) & 0xFF;
        const std::uint32_t upper = (colour >> shift) & 0xFF;
        mixed |= (under * (255 - alpha) + upper * alpha + 127) / 255 << shift;
    }
    return mixed;
}

// How much of the pixel that begins at `place` lies between the two.
double Covered(int place, double from, double to) {
    return std::clamp(std::min(to, place + 1.0) - std::max(from, static_cast<double>(place)), 0.0, 1.0);
}

// One side of a picture that is drawn out over a side of a box.
struct Side {
    int corner, picture, box;
    // The picture's row, or column, for that of the box.
    [[nodiscard]] int Source(int place) const {
        if (place < corner) return place;
        if (place >= box - corner) return place - box + picture;
        const int from = picture - 2 * corner, to = box - 2 * corner;
        return corner + (2 * (place - corner) + 1) * from / (2 * to);
    }
    [[nodiscard]] bool HasRoom() const {
        const int corners = 2 * corner;
        return picture >= corners && (box == corners || (box > corners && picture > corners));
    }
};

}  // namespace

// Null outside.
std::uint32_t* CCanvas::PixelAt(int x, int y) const {
    if (x < 0 || y < 0 || x >= width_ || y >= height_) return nullptr;
    return pixels_ + static_cast<std::ptrdiff_t>(y) * width_ + x;
}

void CCanvas::Fill(const Area& area, Paint paint) {
    const std::uint32_t colour = static_cast<std::uint32_t>(paint.red) << 16 |
                                 static_cast<std::uint32_t>(paint.green) << 8 | paint.blue;
    const int right = std::min(width_, static_cast<int>(std::ceil(area.x + area.w)));
    const int lower = std::min(height_, static_cast<int>(std::ceil(area.y + area.h)));
    for (int y = std::max(0, static_cast<int>(std::floor(area.y))); y < lower; ++y) {
        for (int x = std::max(0, static_cast<int>(std::floor(area.x))); x < right; ++x) {
            const double covered = Covered(x, area.x, area.x + area.w) * Covered(y, area.y, area.y + area.h);
            std::uint32_t* const pixel = PixelAt(x, y);
            *pixel =
                Over(*pixel, colour, static_cast<std::uint32_t>(std::lround(255 * paint.alpha * covered)));
        }
    }
}

void CCanvas::Draw(const ArtPicture& picture, int x, int y) {
    DrawOut(picture, 0, {x, y, picture.width, picture.height});
}

void CCanvas::DrawOut(const ArtPicture& picture, int corner, const Box& box) {
    const Side across = {corner, picture.width, box.w};
    const Side down = {corner, picture.height, box.h};
    if (!across.HasRoom() || !down.HasRoom()) return;
    for (int y = 0; y < box.h; ++y) {
        const std::uint32_t* const row =
            &picture
                 .pixels[static_cast<std::size_t>(down.Source(y)) * static_cast<std::size_t>(picture.width)];
        for (int x = 0; x < box.w; ++x) {
            std::uint32_t* const pixel = PixelAt(box.x + x, box.y + y);
            const std::uint32_t colour = row[across.Source(x)];
            if (pixel != nullptr && colour >> 24 != 0) *pixel = Over(*pixel, colour, colour >> 24);
        }
    }
}

}  // namespace panel
