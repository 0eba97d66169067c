// The radio moves to the strongest alternative frequency of its station by itself.
#pragma once

#include <windows.h>

// Tries every alternative frequency, muted, tunes to the strongest and posts WM_AF_SWITCHED. Of equal ones
// the first wins. False, and nothing was done, when the station has none. Monitor thread; takes as long as
// the tuner needs for the frequencies and 100 ms more.
bool SwitchToBestAF(HWND window);
