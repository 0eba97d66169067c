// A small picture in memory, composed out of sight and then copied to the window in one step, so that a value
// that changes does not flicker over the background.
#pragma once

#include "shell/owned.h"

class OffscreenImage {
  public:
    // Pixels as `like` has them; `cx` by `cy`, both at least 1. False in a condition when memory is short.
    OffscreenImage(HDC like, int cx, int cy)
        : m_dc(CreateCompatibleDC(like)),
          m_bitmap(CreateCompatibleBitmap(like, cx, cy)),
          m_selected(m_dc.get(), m_bitmap.get()),
          m_cx(cx),
          m_cy(cy) {}

    HDC dc() const { return m_dc.get(); }
    explicit operator bool() const { return static_cast<bool>(m_selected); }
    void CopyTo(HDC target, int x, int y) const {
        BitBlt(target, x, y, m_cx, m_cy, m_dc.get(), 0, 0, SRCCOPY);
    }

  private:
    // In this order: deselected before it is deleted, deleted before its device context goes.
    OwnedMemoryDC m_dc;
    OwnedBitmap m_bitmap;
    SelectObjectGuard m_selected;
    int m_cx, m_cy;
};
