// The whole background, for WM_PAINT.
#include "skin/paint_steps.h"
#include "skin/shown_texts.h"
#include "skin/skin_paint.h"

void PaintBackground(CSkin& skin, const BitmapSource& source, HDC hdc) {
    const SkinRect whole = {0, 0, source.Screen().cx, source.Screen().cy};
    source.RestoreBackground(hdc, whole);
    MarkPaintedOver(skin, source.Screen(), whole);
}

void DrawBackground(CSkin& skin, HDC hdc) {
    PaintBackground(skin, BitmapSource(skin, hdc), hdc);
}
