// TransparentImage: a copy that leaves one colour out. The device takes a bitmap, one that is selected into
// no device context, or a device context as the source; the desktop's TransparentBlt takes only the latter.
#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <vector>

#include "handset/base/module_edge.h"
#include "handset/base/owned.h"
#include "handset/coredll/drawing/pixels.h"
#include "handset/coredll/kernel/call_guard.h"
#include "handset/state/display_format.h"

namespace {

using coredll::Pixels;

// A device context into which a bitmap can be selected that is in no other one.
class CSelectionProbe {
  public:
    bool IsSelected(HBITMAP bitmap) {
        AcquireSRWLockExclusive(&lock_);
        const HGDIOBJ previous = SelectObject(dc_, bitmap);
        if (previous != nullptr) SelectObject(dc_, own_);
        ReleaseSRWLockExclusive(&lock_);
        return previous == nullptr;
    }

  private:
    static HBITMAP OwnBitmap() {
        const BITMAPINFO info = handset::DisplayFormat(1, 1);
        void* bits = nullptr;
        return CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    }

    SRWLOCK lock_ = SRWLOCK_INIT;
    HDC dc_ = CreateCompatibleDC(nullptr);
    // Of the display's format, as the images are: a change between formats takes long.
    HBITMAP own_ = OwnBitmap();
};

// Where an image goes, in the logical coordinates of the device context, and from where in the bitmap it
// comes.
struct Copy {
    LONG x, y, width, height, sourceX, sourceY;

    bool LiesIn(const Pixels& pixels) const {
        return sourceX >= 0 && sourceY >= 0 && width > 0 && height > 0 && sourceX + width <= pixels.width &&
               sourceY + height <= pixels.height;
    }
    Pixels From(const Pixels& pixels) const {
        Pixels part = {width, height, {}};
        for (LONG row = 0; row < height; ++row) {
            const std::uint32_t* begin = pixels.Row(sourceY + row) + sourceX;
            part.values.insert(part.values.end(), begin, begin + width);
        }
        return part;
    }
};

// The runs of pixels that are not left out, for an image that goes to (x, y).
std::vector<RECT> OpaqueRuns(const Pixels& image, LONG x, LONG y, std::uint32_t leftOut) {
    std::vector<RECT> runs;
    for (LONG row = 0; row < image.height; ++row) {
        const std::uint32_t* pixel = image.Row(row);
        for (LONG from = 0; from < image.width;) {
            LONG to = from;
            while (to < image.width && pixel[to] != leftOut) ++to;
            if (to > from) runs.push_back({x + from, y + row, x + to, y + row + 1});
            from = to + 1;
        }
    }
    return runs;
}

handset::OwnedRegion RegionOf(const std::vector<RECT>& runs) {
    std::vector<BYTE> data(sizeof(RGNDATAHEADER) + runs.size() * sizeof(RECT));
    auto* region = reinterpret_cast<RGNDATA*>(data.data());
    region->rdh = {sizeof(RGNDATAHEADER), RDH_RECTANGLES, static_cast<DWORD>(runs.size()), 0, {}};
    auto* rects = reinterpret_cast<RECT*>(region->Buffer);
    for (std::size_t i = 0; i < runs.size(); ++i) rects[i] = runs[i];
    return handset::OwnedRegion(ExtCreateRegion(nullptr, static_cast<DWORD>(data.size()), region));
}

// A device context without scaling: a region's units are then its own, but for the origin.
bool IsUnscaled(HDC dc) {
    return GetMapMode(dc) == MM_TEXT && GetGraphicsMode(dc) == GM_COMPATIBLE && GetLayout(dc) == 0;
}

// The whole image at once, through a clip region that lets only the runs through. TransparentBlt makes two
// bitmaps and two device contexts for the same, which costs ten times as much.
bool CopyRuns(HDC destination, const Pixels& image, LONG x, LONG y, std::uint32_t leftOut) {
    const std::vector<RECT> runs = OpaqueRuns(image, x, y, leftOut);
    if (runs.empty()) return true;
    const handset::OwnedRegion region = RegionOf(runs);
    if (!region) return false;
    POINT origin = {0, 0};
    LPtoDP(destination, &origin, 1);
    OffsetRgn(region.get(), origin.x, origin.y);
    const BITMAPINFO info = image.Info();
    const auto height = static_cast<UINT>(image.height);
    const int saved = SaveDC(destination);
    const bool done = saved != 0 && ExtSelectClipRgn(destination, region.get(), RGN_AND) != ERROR &&
                      SetDIBitsToDevice(destination, x, y, static_cast<DWORD>(image.width), height, 0, 0, 0,
                                        height, image.values.data(), &info, DIB_RGB_COLORS) != 0;
    if (saved != 0) RestoreDC(destination, saved);
    return done;
}

std::uint32_t PixelOf(COLORREF colour) {
    return static_cast<std::uint32_t>(GetRValue(colour)) << 16 |
           static_cast<std::uint32_t>(GetGValue(colour)) << 8 | GetBValue(colour);
}

bool CopyUnscaled(HDC destination, const Copy& copy, HBITMAP bitmap, COLORREF transparent) {
    Pixels pixels;
    return IsUnscaled(destination) && coredll::ReadPixels(destination, bitmap, &pixels) &&
           copy.LiesIn(pixels) &&
           CopyRuns(destination, copy.From(pixels), copy.x, copy.y, PixelOf(transparent));
}

}  // namespace

COREDLL_EXPORT BOOL WINAPI TransparentImage(HDC destination, LONG x, LONG y, LONG width, LONG height,
                                            HANDLE source, LONG sourceX, LONG sourceY, LONG sourceWidth,
                                            LONG sourceHeight, COLORREF transparent) try {
    const coredll::CCallGuard guard;
    const auto object = static_cast<HGDIOBJ>(source);
    const DWORD type = GetObjectType(object);
    if (type == OBJ_DC || type == OBJ_MEMDC) {
        return TransparentBlt(destination, x, y, width, height, static_cast<HDC>(object), sourceX, sourceY,
                              sourceWidth, sourceHeight, transparent);
    }
    if (type != OBJ_BITMAP) {
        SetLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    static CSelectionProbe probe;
    if (probe.IsSelected(static_cast<HBITMAP>(object))) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const bool sameSize = width == sourceWidth && height == sourceHeight;
    if (sameSize && CopyUnscaled(destination, {x, y, width, height, sourceX, sourceY},
                                 static_cast<HBITMAP>(object), transparent)) {
        return TRUE;
    }
    const handset::OwnedMemoryDC memory(CreateCompatibleDC(destination));
    const handset::CSelectedObject selected(memory.get(), object);
    return TransparentBlt(destination, x, y, width, height, memory.get(), sourceX, sourceY, sourceWidth,
                          sourceHeight, transparent);
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}
