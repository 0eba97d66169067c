#include "handset/coredll/drawing/pixels.h"

namespace coredll {
namespace {

constexpr std::uint32_t kColourBits = 0x00FFFFFF;

}  // namespace

bool ReadPixels(HDC dc, HBITMAP bitmap, Pixels* pixels) {
    BITMAP shape = {};
    if (GetObjectW(bitmap, sizeof shape, &shape) == 0) return false;
    pixels->width = shape.bmWidth;
    pixels->height = shape.bmHeight;
    pixels->values.resize(static_cast<std::size_t>(shape.bmWidth) * static_cast<std::size_t>(shape.bmHeight));
    BITMAPINFO info = pixels->Info();
    if (GetDIBits(dc, bitmap, 0, static_cast<UINT>(shape.bmHeight), pixels->values.data(), &info,
                  DIB_RGB_COLORS) != shape.bmHeight) {
        return false;
    }
    for (std::uint32_t& value : pixels->values) value &= kColourBits;
    return true;
}

}  // namespace coredll
