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
inline constexpr DWORD kButtonRepeats = 1;    // a timer runs while it is held
inline constexpr DWORD kButtonHasStates = 2;  // its image is a strip of frames, two a state
// Look of a button or slider, by bits; a released one has kLookReleased alone.
inline constexpr DWORD kLookReleased = 1;
inline constexpr DWORD kLookPressed = 2;
inline constexpr DWORD kLookDisabled = 4;  // a button
inline constexpr DWORD kLookDragging = 6;  // a slider
inline constexpr DWORD kLookSlidOnto = 8;  // added to kLookPressed
inline constexpr int kNoFrame = -1;
// Orientation of a slider.
inline constexpr int kSliderVertical = 0;
inline constexpr int kSliderHorizontal = 1;
// Rows of the bitmap table.
inline constexpr int kBitmapBackground = 0;  // also what any element is erased with
inline constexpr int kBitmapDisabled = 1;    // disabled images of the buttons
inline constexpr int kBitmapButtons = 2;     // pressed images of the buttons without states
inline constexpr int kBitmapThumb = 3;       // two frames side by side: released, pressed
inline constexpr int kBitmapOutput = 4;      // frames of SKIN_OUTPUT
inline constexpr int kBitmapRecord = 5;      // frames of SKIN_RECORD
inline constexpr int kBitmapMute = 6;        // frames of SKIN_MUTE
// What TransparentImage leaves out: magenta.
inline constexpr COLORREF kTransparentColour = 0xFF00FF;
// Wider screens get the larger images.
inline constexpr int kNarrowScreenWidth = 320;

struct SkinButtonPlace {
    SkinRect rect;
    int nBitmap, xSource, ySource;
    int nDisabledBitmap, xDisabled, yDisabled;
};

struct SkinButton {
    int nId;  // also the command id and the repeat timer's id
    DWORD dwKind;
    DWORD dwLook;
    int nFrame;  // current frame of a multi-state button (even = released look), else kNoFrame
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
    int nOrientation;  // kSliderHorizontal or kSliderVertical
    DWORD dwLook;
    SkinSliderPlace portrait;
    SkinSliderPlace landscape;
    int nPos;  // of the thumb, pixels from the track's start
};

struct SkinText {
    int nId;
    SkinRect portrait;
    SkinRect landscape;
    UINT uFormat;  // of DrawTextW
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
