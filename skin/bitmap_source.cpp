#include "skin/bitmap_source.h"

#include "skin/offscreen.h"
#include "skin/skin_rows.h"

namespace {

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

HBITMAP BitmapSource::BitmapAt(int index) const {
    return BitmapOf(m_skin, m_screen, index);
}

BitmapSource::~BitmapSource() {
    KeptLastError kept;
    if (m_original != nullptr) SelectObject(m_dc.get(), m_original);
}

// Stays selected for the next copy: to change between a bitmap and the one of one bit a pixel that a device
// context begins with takes far longer than a copy.
bool BitmapSource::Select(HBITMAP bitmap) const {
    if (bitmap != nullptr && bitmap == m_selected) return true;
    const HGDIOBJ previous = SelectObject(m_dc.get(), bitmap);
    if (previous == nullptr) return false;
    if (m_original == nullptr) m_original = previous;
    m_selected = bitmap;
    return true;
}

bool BitmapSource::TryCopy(HBITMAP bitmap, int xSource, int ySource, HDC target, const SkinRect& to) const {
    if (!Select(bitmap)) return false;
    BitBlt(target, to.x, to.y, to.cx, to.cy, m_dc.get(), xSource, ySource, SRCCOPY);
    return true;
}

void BitmapSource::Copy(HBITMAP bitmap, int xSource, int ySource, HDC target, const SkinRect& to) const {
    TryCopy(bitmap, xSource, ySource, target, to);
}

// A bitmap can be selected into one device context at a time, and a worker thread may be suspended in the
// middle of a paint for as long as a scan lasts: a lock would stop everybody else for that time, hence none.
// Whoever finds the image taken goes by the slower way.
void BitmapSource::CopyBackground(const SkinRect& from, HDC target, int x, int y) const {
    const HBITMAP background = BitmapAt(kBitmapBackground);
    if (background == nullptr) return;
    const SkinRect to = {x, y, from.cx, from.cy};
    if (TryCopy(background, from.x, from.y, target, to)) return;
    CopyThroughBrush(background, from.x, from.y, target, to);
}

void BitmapSource::RestoreBackground(HDC window, const SkinRect& rect) const {
    CopyBackground(rect, window, rect.x, rect.y);
}
