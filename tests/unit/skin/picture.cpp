// Pixels in memory, made, captured and compared.
#include "tests/unit/skin/picture.h"

#include "tests/support/bitmap_file.h"

namespace {

// A device context with a 32-bit picture of its own, whose rows run from the top.
class Canvas {
  public:
    Canvas(int cx, int cy) : m_dc(CreateCompatibleDC(nullptr)) {
        BITMAPINFO info = {};
        info.bmiHeader.biSize = sizeof(info.bmiHeader);
        info.bmiHeader.biWidth = cx;
        info.bmiHeader.biHeight = -cy;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        void* bits = nullptr;
        m_bitmap.reset(CreateDIBSection(m_dc.get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
        m_bits = static_cast<Pixel*>(bits);
    }
    HDC dc() const { return m_dc.get(); }
    Pixel* bits() const { return m_bits; }
    HBITMAP bitmap() const { return m_bitmap.get(); }
    OwnedBitmap TakeBitmap() { return std::move(m_bitmap); }

  private:
    OwnedMemoryDC m_dc;
    OwnedBitmap m_bitmap;
    Pixel* m_bits = nullptr;
};

}  // namespace

Picture::Picture(int cx, int cy, Pixel fill)
    : m_cx(cx), m_cy(cy), m_pixels(static_cast<std::size_t>(cx) * static_cast<std::size_t>(cy), fill) {}

Picture Picture::Pattern(int cx, int cy, int seed) {
    Picture picture(cx, cy);
    for (int y = 0; y < cy; ++y) {
        for (int x = 0; x < cx; ++x) {
            const auto red = static_cast<Pixel>(x * 7 + seed * 31) & 0xFF;
            const auto green = static_cast<Pixel>(y * 5 + seed * 17) & 0xFF;
            const auto blue = static_cast<Pixel>((x >> 8) + (y >> 8) * 4 + seed * 4) & 0x7F;
            picture.at(x, y) = red << 16 | green << 8 | blue;
        }
    }
    return picture;
}

Picture Picture::OfDC(HDC dc, int cx, int cy) {
    const Canvas canvas(cx, cy);
    const SelectObjectGuard selected(canvas.dc(), canvas.bitmap());
    EXPECT_TRUE(BitBlt(canvas.dc(), 0, 0, cx, cy, dc, 0, 0, SRCCOPY));
    GdiFlush();
    Picture picture(cx, cy);
    for (std::size_t i = 0; i < picture.m_pixels.size(); ++i)
        picture.m_pixels[i] = canvas.bits()[i] & 0xFFFFFF;
    return picture;
}

Picture Picture::OfWindow(HWND window) {
    RECT client = {};
    GetClientRect(window, &client);
    const WindowDC dc(window);
    return OfDC(dc.get(), client.right, client.bottom);
}

Picture Picture::OfBitmap(HBITMAP bitmap) {
    BITMAP size = {};
    EXPECT_NE(GetObjectW(bitmap, sizeof(size), &size), 0) << "not a bitmap";
    const OwnedMemoryDC dc(CreateCompatibleDC(nullptr));
    const SelectObjectGuard selected(dc.get(), bitmap);
    return OfDC(dc.get(), size.bmWidth, size.bmHeight);
}

Picture Picture::OfResource(int id) {
    const HMODULE module = GetModuleHandleW(nullptr);
    const HRSRC found = FindResourceW(module, MAKEINTRESOURCEW(id), L"GIF");
    const auto* file = static_cast<const BYTE*>(LockResource(LoadResource(module, found)));
    if (file == nullptr) {
        ADD_FAILURE() << "the test has no image " << id;
        return Picture(0, 0);
    }
    const OwnedBitmap bitmap(test::BitmapOfFile(file));
    return OfBitmap(bitmap.get());
}

Pixel& Picture::at(int x, int y) {
    return m_pixels.at(static_cast<std::size_t>(y * m_cx + x));
}
Pixel Picture::at(int x, int y) const {
    return m_pixels.at(static_cast<std::size_t>(y * m_cx + x));
}

void Picture::Copy(const Picture& from, int xFrom, int yFrom, const SkinRect& to) {
    for (int y = 0; y < to.cy && to.y + y < m_cy; ++y) {
        for (int x = 0; x < to.cx && to.x + x < m_cx; ++x)
            at(to.x + x, to.y + y) = from.at(xFrom + x, yFrom + y);
    }
}

void Picture::Overlay(const Picture& from, int xFrom, int yFrom, const SkinRect& to) {
    for (int y = 0; y < to.cy; ++y) {
        for (int x = 0; x < to.cx; ++x) {
            const Pixel pixel = from.at(xFrom + x, yFrom + y);
            if (pixel != kMagenta) at(to.x + x, to.y + y) = pixel;
        }
    }
}

void Picture::Fill(const SkinRect& rect, Pixel pixel) {
    for (int y = rect.y; y < rect.y + rect.cy; ++y) {
        for (int x = rect.x; x < rect.x + rect.cx; ++x) at(x, y) = pixel;
    }
}

int Picture::Count(const SkinRect& rect, Pixel pixel) const {
    int count = 0;
    for (int y = rect.y; y < rect.y + rect.cy; ++y) {
        for (int x = rect.x; x < rect.x + rect.cx; ++x) count += at(x, y) == pixel ? 1 : 0;
    }
    return count;
}

OwnedBitmap Picture::ToBitmap() const {
    Canvas canvas(m_cx, m_cy);
    for (std::size_t i = 0; i < m_pixels.size(); ++i) canvas.bits()[i] = m_pixels[i];
    return canvas.TakeBitmap();
}

::testing::AssertionResult Same(const Picture& expected, const Picture& actual) {
    if (expected.cx() != actual.cx() || expected.cy() != actual.cy()) {
        return ::testing::AssertionFailure()
               << "sizes differ: expected " << expected.cx() << "x" << expected.cy() << ", got "
               << actual.cx() << "x" << actual.cy();
    }
    int differences = 0, xFirst = 0, yFirst = 0;
    for (int y = expected.cy() - 1; y >= 0; --y) {
        for (int x = expected.cx() - 1; x >= 0; --x) {
            if (expected.at(x, y) == actual.at(x, y)) continue;
            ++differences;
            xFirst = x;
            yFirst = y;
        }
    }
    if (differences == 0) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << differences << " pixels differ, the first at (" << xFirst << ", " << yFirst << "): expected 0x"
           << std::hex << expected.at(xFirst, yFirst) << ", got 0x" << actual.at(xFirst, yFirst);
}
