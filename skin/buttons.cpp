// The buttons. The released look of a button without states is part of the background.
#include "skin/background.h"
#include "skin/skin_paint.h"
#include "skin/skin_rows.h"

namespace {

bool HasStates(const SkinButton& button) {
    return (button.dwKind & kButtonHasStates) != 0;
}

void DrawFrame(const CSkin& skin, HDC hdc, const SkinButton& button) {
    const SkinButtonPlace& place = PlaceOf(button);
    // The frames begin at the left edge of their strip, whatever source the row gives.
    CopyBitmap(BitmapOf(skin, place.nBitmap), button.nFrame * place.rect.cx, 0, hdc, place.rect);
}

void DrawDisabled(const CSkin& skin, HDC hdc, const SkinButton& button) {
    const SkinButtonPlace& place = PlaceOf(button);
    CopyBitmap(BitmapOf(skin, place.nDisabledBitmap), place.xDisabled, place.yDisabled, hdc, place.rect);
}

// Erases the button from which the stylus came.
void EraseOtherPressed(const CSkin& skin, HDC hdc, const SkinButton& button) {
    for (int i = 0; i < skin.nButtons; ++i) {
        const SkinButton& other = skin.pButtons[i];
        if (&other == &button || (other.dwLook & kLookPressed) == 0) continue;
        RestoreBackground(skin, hdc, PlaceOf(other).rect);
        return;
    }
}

void DrawPressed(const CSkin& skin, HDC hdc, const SkinButton& button) {
    const SkinButtonPlace& place = PlaceOf(button);
    if (HasStates(button)) {
        DrawFrame(skin, hdc, button);
    } else {
        CopyBitmap(BitmapOf(skin, place.nBitmap), place.xSource, place.ySource, hdc, place.rect);
    }
    if ((button.dwLook & kLookSlidOnto) != 0) EraseOtherPressed(skin, hdc, button);
}

void DrawReleased(const CSkin& skin, HDC hdc, SkinButton& button) {
    if (!HasStates(button)) {
        RestoreBackground(skin, hdc, PlaceOf(button).rect);
        return;
    }
    // Odd frames are the pressed looks.
    if (button.nFrame % 2 != 0) --button.nFrame;
    DrawFrame(skin, hdc, button);
}

void DrawOneButton(const CSkin& skin, HDC hdc, SkinButton& button) {
    if ((button.dwLook & kLookDisabled) != 0) {
        DrawDisabled(skin, hdc, button);
    } else if ((button.dwLook & kLookPressed) != 0) {
        DrawPressed(skin, hdc, button);
    } else if (button.dwLook == kLookReleased) {
        DrawReleased(skin, hdc, button);
    }
}

}  // namespace

void DrawButtons(CSkin& skin, HDC hdc, BOOL all, int id) {
    if (skin.pButtons == nullptr) return;
    for (int i = 0; i < skin.nButtons; ++i) {
        SkinButton& button = skin.pButtons[i];
        if (all || button.nId == id) DrawOneButton(skin, hdc, button);
    }
}
