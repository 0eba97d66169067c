// The skin's share of the main window procedure. Thread of the window.
#pragma once

#include "skin/skin.h"

// In the result of a stylus message and in WM_SKIN_CLICK: what kind of element the low word names.
inline constexpr int kResultSlider = 1 << 16;
inline constexpr int kResultButton = 2 << 16;
inline constexpr int kNoElement = -1;

// Takes WM_PAINT, WM_TIMER, the three stylus messages, WM_SKIN_SETPOS and WM_SKIN_GETPOS; any other gives 0.
// What the user does is sent to `window` as WM_SKIN_SLIDER, WM_SKIN_REPEAT and WM_SKIN_CLICK and handled
// before this returns. The result of a stylus release names the element that was let go; see above. Stores
// `window` in the skin.
LRESULT SkinWindowProc(CSkin& skin, HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// A button, enabled, that is tapped by something else than the stylus: what a press and a release on it do,
// and one step of a button that repeats while it is held. A disabled one, or none of that id, does nothing.
void TapButton(CSkin& skin, HWND window, int id);

// Paints at once: the background (withBackground = 1), then one button, then one slider; kNoElement skips
// one.
void RepaintElements(CSkin& skin, HWND window, BOOL withBackground, int buttonId, int sliderId);
