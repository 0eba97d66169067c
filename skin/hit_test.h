// What the stylus touches: two tests, over the buttons and over the sliders, in the current orientation's
// places. Each changes the row that it finds (look, frame, position, repeat timer); painting is up to the
// caller. Both take WM_MOUSEMOVE, WM_LBUTTONDOWN and WM_LBUTTONUP; any other message reports the row under
// the point and changes nothing. Thread of the window.
#pragma once

#include "skin/skin.h"

inline constexpr int kNoHit = -1;
// Period of the timer that runs while an auto-repeat button is held; its id is the button's.
inline constexpr UINT kRepeatPeriod_ms = 100;

// Return the id of the row that was hit or let go, or kNoHit. `*index` is its row number; without a hit it is
// the number of rows, and 0 for an empty table.
int HitTestButtons(CSkin& skin, int x, int y, UINT message, int* index);
int HitTestSlider(CSkin& skin, int x, int y, UINT message, int* index);

// True for the three messages of the stylus.
[[nodiscard]] bool IsStylusMessage(UINT message);
