// How the rest of the program sets and asks the elements of the main screen, by id. An id that is not in its
// table does nothing or gives 0. Thread of the window, except where another thread only reads.
#pragma once

#include "skin/skin.h"

// `disable` = 1 disables the button; any other value changes it from enabled to disabled or back. Its
// rectangle is painted again later.
void EnableButton(CSkin& skin, int id, int disable);

[[nodiscard]] bool IsButtonEnabled(const CSkin& skin, int id);

// The frame of a button with states, 0 to its number of frames - 1; anything else is refused. Paints nothing.
void SetButtonFrame(CSkin& skin, int id, int frame);
// 1 and the frame for a button with states; 0 and frame 0 for anything else.
int GetButtonFrame(const CSkin& skin, int id, int* frame);

// Position of a slider's thumb, in pixels from the track's start, and its farthest one on this screen.
[[nodiscard]] int GetSliderPos(const CSkin& skin, int id);
[[nodiscard]] int GetSliderMax(const CSkin& skin, int id);
// 1 when the position was set, 0 when it lies outside 0 … GetSliderMax. Paints nothing.
int SetSliderPos(CSkin& skin, int id, int pos);
