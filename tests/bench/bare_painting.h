// The peer of the skin's paints: the same drawing calls, one after another, with nothing around them. No
// table is searched, nobody asks what kind of screen it is, and nothing looks whether a call has failed.
#pragma once

#include <windows.h>

// What is drawn from; each bitmap is the portrait one of its row of the skin's table.
struct BarePictures {
    HBITMAP hBackground, hThumb, hOutput, hRecord, hMute;
};

// The whole screen at the start: background, nine released buttons, the slider.
void PaintBareScreen(HDC dc, const BarePictures& pictures);
// The frequency: font, picture in memory with the background in it, text, one copy to the window.
void PaintBareFrequency(HWND window, HBITMAP background, const WCHAR* text);
// The released seek key, whose look is part of the background.
void PaintBareSeekUp(HWND window, HBITMAP background);
