// Parts of the background image: what lies under an element, and what erases it.
#pragma once

#include "skin/skin.h"

// Copies the part `from` of the current orientation's background to (x, y) of `target`. Any thread, several
// at a time, also while another thread stands still in the middle of such a copy.
void CopyBackground(const CSkin& skin, const SkinRect& from, HDC target, int x, int y);

// Puts the background back over a rectangle of the window.
void RestoreBackground(const CSkin& skin, HDC window, const SkinRect& rect);

// Copies cx by cy pixels at (xSource, ySource) of a bitmap that only the caller's thread uses.
void CopyBitmap(HBITMAP bitmap, int xSource, int ySource, HDC target, const SkinRect& to);
