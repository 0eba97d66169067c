// The buttons. The released look of a button without states is part of the background.
#include "skin/paint_steps.h"
#include "skin/shown_texts.h"
#include "skin/skin_paint.h"
#include "skin/skin_rows.h"

namespace {

// One paint of one button or all of them.
struct ButtonPaint {
    CSkin& skin;
    HDC hdc;
    const BitmapSource& source;

    const SkinButtonPlace& Place(const SkinButton& button) const { return PlaceOf(button, source.Screen()); }
    void Copy(int bitmap, int xSource, int ySource, const SkinButton& button) const {
        source.Copy(source.BitmapAt(bitmap), xSource, ySource, hdc, Place(button).rect);
    }
    void Erase(const SkinButton& button) const { source.RestoreBackground(hdc, Place(button).rect); }
    void MarkPainted(const SkinButton& button) const {
        MarkPaintedOver(skin, source.Screen(), Place(button).rect);
    }
};

bool HasStates(const SkinButton& button) {
    return (button.dwKind & kButtonHasStates) != 0;
}

void DrawFrame(const ButtonPaint& paint, const SkinButton& button) {
    const SkinButtonPlace& place = paint.Place(button);
    // The frames begin at the left edge of their strip, whatever source the row gives.
    paint.Copy(place.nBitmap, button.nFrame * place.rect.cx, 0, button);
}

void DrawDisabled(const ButtonPaint& paint, const SkinButton& button) {
    const SkinButtonPlace& place = paint.Place(button);
    paint.Copy(place.nDisabledBitmap, place.xDisabled, place.yDisabled, button);
}

// Erases the button from which the stylus came.
void EraseOtherPressed(const ButtonPaint& paint, const SkinButton& button) {
    for (int i = 0; i < paint.skin.nButtons; ++i) {
        const SkinButton& other = paint.skin.pButtons[i];
        if (&other == &button || (other.dwLook & kLookPressed) == 0) continue;
        paint.Erase(other);
        paint.MarkPainted(other);
        return;
    }
}

void DrawPressed(const ButtonPaint& paint, const SkinButton& button) {
    const SkinButtonPlace& place = paint.Place(button);
    if (HasStates(button)) {
        DrawFrame(paint, button);
    } else {
        paint.Copy(place.nBitmap, place.xSource, place.ySource, button);
    }
    if ((button.dwLook & kLookSlidOnto) != 0) EraseOtherPressed(paint, button);
}

void DrawReleased(const ButtonPaint& paint, SkinButton& button) {
    if (!HasStates(button)) {
        paint.Erase(button);
        return;
    }
    // Odd frames are the pressed looks.
    if (button.nFrame % 2 != 0) --button.nFrame;
    DrawFrame(paint, button);
}

void DrawOneButton(const ButtonPaint& paint, SkinButton& button) {
    if ((button.dwLook & kLookDisabled) != 0) {
        DrawDisabled(paint, button);
    } else if ((button.dwLook & kLookPressed) != 0) {
        DrawPressed(paint, button);
    } else if (button.dwLook == kLookReleased) {
        DrawReleased(paint, button);
    }
}

}  // namespace

void PaintButtons(CSkin& skin, const BitmapSource& source, HDC hdc, BOOL all, int id) {
    if (skin.pButtons == nullptr) return;
    const ButtonPaint paint = {skin, hdc, source};
    for (int i = 0; i < skin.nButtons; ++i) {
        SkinButton& button = skin.pButtons[i];
        if (!all && button.nId != id) continue;
        DrawOneButton(paint, button);
        paint.MarkPainted(button);
    }
}

void DrawButtons(CSkin& skin, HDC hdc, BOOL all, int id) {
    PaintButtons(skin, BitmapSource(skin, hdc), hdc, all, id);
}
