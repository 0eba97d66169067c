// The steps of a paint, each on the same source of images: the whole screen, or what the stylus has touched.
#pragma once

#include "skin/bitmap_source.h"

// As the Draw… of the same name (skin/skin_paint.h).
void PaintBackground(CSkin& skin, const BitmapSource& source, HDC hdc);
void PaintButtons(CSkin& skin, const BitmapSource& source, HDC hdc, BOOL all, int id);
void PaintSliders(CSkin& skin, const BitmapSource& source, HDC hdc, BOOL all, int id);
