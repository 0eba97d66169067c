// A rectangle of pixels in memory: what a window shows, or what it is expected to show.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>
#include <vector>

#include "shell/owned.h"
#include "skin/skin_tables.h"

// Red, green, blue from the highest byte down, as one writes colours (a COLORREF has them the other way
// round).
using Pixel = std::uint32_t;

inline constexpr Pixel kMagenta = 0xFF00FF;
// On the screen before a paint: no test image and no text has it.
inline constexpr Pixel kUntouched = 0x1133F5;

class Picture {
  public:
    Picture(int cx, int cy, Pixel fill = kUntouched);
    // Every pixel differs from its neighbours and from the pixel at the same place of another seed's pattern,
    // so that a copy from the wrong place shows. No pixel is magenta. `seed` is 0 to 31.
    static Picture Pattern(int cx, int cy, int seed);
    static Picture OfWindow(HWND window);
    static Picture OfBitmap(HBITMAP bitmap);
    // An image of the program, a resource of the type GIF that is a bitmap's file; read without the image
    // loader.
    static Picture OfResource(int id);
    // The first cx by cy pixels of a device context.
    static Picture OfDC(HDC dc, int cx, int cy);

    int cx() const { return m_cx; }
    int cy() const { return m_cy; }
    Pixel& at(int x, int y);
    Pixel at(int x, int y) const;

    // Copies a part of another picture to a place of this one; what falls outside is left out.
    void Copy(const Picture& from, int xFrom, int yFrom, const SkinRect& to);
    // The same without the magenta pixels.
    void Overlay(const Picture& from, int xFrom, int yFrom, const SkinRect& to);
    void Fill(const SkinRect& rect, Pixel pixel);
    // How many pixels of the rectangle have the colour.
    int Count(const SkinRect& rect, Pixel pixel) const;
    OwnedBitmap ToBitmap() const;

  private:
    int m_cx, m_cy;
    std::vector<Pixel> m_pixels;
};

// Success when both are the same; else says where they first differ, how and how often.
::testing::AssertionResult Same(const Picture& expected, const Picture& actual);
