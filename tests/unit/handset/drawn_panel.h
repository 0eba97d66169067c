// The panel's picture as it is drawn, pixel by pixel.
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "handset/base/owned.h"
#include "handset/phone/panel_picture.h"
#include "handset/state/display_format.h"

namespace panel {

struct DrawnPanel {
    int width, height;
    std::vector<std::uint32_t> pixels;
    [[nodiscard]] std::uint32_t At(int x, int y) const {
        return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)] &
               0xFFFFFF;
    }
};

inline DrawnPanel Draw(const PanelView& view) {
    const int width = view.phone.width, height = view.phone.height;
    CPanelPicture picture;
    picture.Make(view);
    const BITMAPINFO info = handset::DisplayFormat(width, height);
    void* bits = nullptr;
    const handset::OwnedBitmap bitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    const handset::OwnedMemoryDC dc(CreateCompatibleDC(nullptr));
    const handset::CSelectedObject selected(dc.get(), bitmap.get());
    picture.Show(dc.get(), {0, 0, width, height});
    GdiFlush();
    const auto* first = static_cast<const std::uint32_t*>(bits);
    return {width, height, {first, first + static_cast<std::ptrdiff_t>(width) * height}};
}

// The pixels in which two pictures differ; of no width when they do not.
inline Box Difference(const DrawnPanel& one, const DrawnPanel& other) {
    int left = one.width, top = one.height, right = 0, bottom = 0;
    for (int y = 0; y < one.height; ++y) {
        for (int x = 0; x < one.width; ++x) {
            if (one.At(x, y) == other.At(x, y)) continue;
            left = std::min(left, x), right = std::max(right, x + 1);
            top = std::min(top, y), bottom = std::max(bottom, y + 1);
        }
    }
    return right == 0 ? Box{} : Box{left, top, right - left, bottom - top};
}

inline PanelView ViewOf(int width, int height) {
    PanelView view{};
    view.phone = LayOutPhone(width, height);
    view.column = LayOutColumn(view.phone.column);
    view.now.lit = true;
    view.now.screenWidth = width;
    view.now.screenHeight = height;
    view.band.levels.fill(handset::kLevelNotSeen);
    return view;
}

}  // namespace panel
