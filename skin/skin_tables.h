// The geometry of the main screen: four tables (bitmaps, buttons, sliders, text fields), each row with a
// portrait and a landscape placement. Coordinates are pixels of the window's client area, for a screen of
// 240 × 320 or 320 × 240.
#pragma once

#include <windows.h>

struct SkinRect {
    int x, y, cx, cy;
};

struct SkinBitmap {
    int nIndex;
    UINT uPortraitId;
    HBITMAP hPortrait;
    UINT uLandscapeId;
    HBITMAP hLandscape;
};

// Kind of a button, by bits; 0 = plain.
inline constexpr DWORD kButtonRepeats = 1;   // a timer runs while it is held
inline constexpr DWORD kButtonHasStates = 2; // its image is a strip of frames, two a state
// Look of a button or slider, by bits; a released one has kLookReleased alone.
inline constexpr DWORD kLookReleased = 1;
inline constexpr DWORD kLookPressed = 2;
inline constexpr DWORD kLookDisabled = 4;    // a button
inline constexpr DWORD kLookDragging = 6;    // a slider
inline constexpr DWORD kLookSlidOnto = 8;    // added to kLookPressed
inline constexpr int kNoFrame = -1;

struct SkinButtonPlace {
    SkinRect rect;
    int nBitmap, xSource, ySource;
    int nDisabledBitmap, xDisabled, yDisabled;
};

struct SkinButton {
    int nId;          // also the command id and the repeat timer's id
    DWORD dwKind;
    DWORD dwLook;
    int nFrame;       // current frame of a multi-state button (even = released look), else kNoFrame
    int nFrames;
    SkinButtonPlace portrait;
    SkinButtonPlace landscape;
};

struct SkinSliderPlace {
    SkinRect track;
    int cxThumb, cyThumb;
};

struct SkinSlider {
    int nId;
    int nOrientation;  // 1 = horizontal, 0 = vertical
    DWORD dwLook;
    SkinSliderPlace portrait;
    SkinSliderPlace landscape;
    int nPos;          // of the thumb, pixels from the track's start
};

struct SkinText {
    int nId;
    SkinRect portrait;
    SkinRect landscape;
    UINT uFormat;      // of DrawTextW
    COLORREF crText;
    LONG lfWidth, lfHeight, lfWeight;
};

// Pointers to the arrays and their lengths; the arrays live as long as the program.
struct SkinTables {
    SkinBitmap* pBitmaps;
    int nBitmaps;
    SkinButton* pButtons;
    int nButtons;
    SkinSlider* pSliders;
    int nSliders;
    SkinText* pTexts;
    int nTexts;
};

// The radio's main screen: 7 bitmaps, 9 buttons, 1 slider, 13 text fields.
SkinTables MainScreenTables();
