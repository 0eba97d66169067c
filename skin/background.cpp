// The background: the whole of it for WM_PAINT, parts of it under every element.
#include "skin/background.h"

#include "skin/offscreen.h"
#include "skin/skin_paint.h"
#include "skin/skin_rows.h"

namespace {

bool TryCopyBitmap(HBITMAP bitmap, int xSource, int ySource, HDC target, const SkinRect& to) {
    const OwnedMemoryDC source(CreateCompatibleDC(target));
    const SelectObjectGuard selected(source.get(), bitmap);
    if (!selected) return false;
    BitBlt(target, to.x, to.y, to.cx, to.cy, source.get(), xSource, ySource, SRCCOPY);
    return true;
}

// A brush takes a copy of the image without selecting it, so this works whoever holds the image.
void CopyThroughBrush(HBITMAP bitmap, int xSource, int ySource, HDC target, const SkinRect& to) {
    const OwnedBrush brush(CreatePatternBrush(bitmap));
    if (!brush) return;
    const OffscreenImage image(target, to.cx, to.cy);
    if (!image) return;
    SetBrushOrgEx(image.dc(), -xSource, -ySource, nullptr);
    const SelectObjectGuard selected(image.dc(), brush.get());
    PatBlt(image.dc(), 0, 0, to.cx, to.cy, PATCOPY);
    image.CopyTo(target, to.x, to.y);
}

}  // namespace

void CopyBitmap(HBITMAP bitmap, int xSource, int ySource, HDC target, const SkinRect& to) {
    TryCopyBitmap(bitmap, xSource, ySource, target, to);
}

// A bitmap can be selected into one device context at a time, and a worker thread may be suspended in the
// middle of a paint for as long as a scan lasts: a lock would stop everybody else for that time, hence none.
// Whoever finds the image taken goes by the slower way.
void CopyBackground(const CSkin& skin, const SkinRect& from, HDC target, int x, int y) {
    const HBITMAP background = BitmapOf(skin, kBitmapBackground);
    if (background == nullptr) return;
    const SkinRect to = {x, y, from.cx, from.cy};
    if (TryCopyBitmap(background, from.x, from.y, target, to)) return;
    CopyThroughBrush(background, from.x, from.y, target, to);
}

void RestoreBackground(const CSkin& skin, HDC window, const SkinRect& rect) {
    CopyBackground(skin, rect, window, rect.x, rect.y);
}

void DrawBackground(const CSkin& skin, HDC hdc) {
    RestoreBackground(skin, hdc, {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)});
}
