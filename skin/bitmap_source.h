// Where a paint takes its images from: the skin's bitmaps, and above all the background, which lies under
// every element and is what erases it.
#pragma once

#include "shell/owned.h"
#include "skin/screen.h"
#include "skin/skin.h"

// One memory device context through which a paint copies whatever it needs; lives as long as the paint. Any
// thread, several at a time, also while another thread stands still in the middle of such a copy.
class BitmapSource {
  public:
    // `like` is the device context that is painted on. The kind of screen is asked here, once for the paint.
    BitmapSource(const CSkin& skin, HDC like)
        : m_skin(skin), m_screen(CurrentScreen()), m_dc(CreateCompatibleDC(like)) {}
    ~BitmapSource();
    BitmapSource(const BitmapSource&) = delete;
    BitmapSource& operator=(const BitmapSource&) = delete;

    const SkinScreen& Screen() const { return m_screen; }
    HBITMAP BitmapAt(int index) const;

    // Copies to.cx by to.cy pixels at (xSource, ySource) of a bitmap that only the caller's thread uses.
    void Copy(HBITMAP bitmap, int xSource, int ySource, HDC target, const SkinRect& to) const;

    // Copies the part `from` of the background to (x, y) of `target`.
    void CopyBackground(const SkinRect& from, HDC target, int x, int y) const;
    // Puts the background back over a rectangle of the window.
    void RestoreBackground(HDC window, const SkinRect& rect) const;

  private:
    bool Select(HBITMAP bitmap) const;
    bool TryCopy(HBITMAP bitmap, int xSource, int ySource, HDC target, const SkinRect& to) const;

    const CSkin& m_skin;
    SkinScreen m_screen;
    OwnedMemoryDC m_dc;
    mutable HBITMAP m_selected = nullptr;  // into m_dc, until another one is needed
    mutable HGDIOBJ m_original = nullptr;  // what m_dc began with
};
