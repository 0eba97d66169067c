// The title of a message box on a display of twice the pixels: the host's titles know one size alone, so one
// of the box's own controls takes the place of the host's.
#pragma once

#include <windows.h>

namespace coredll {

// Takes the host's title away and puts one in its place that is `scale` times as large, at the top of the
// client area. Gives the rows that it takes there; 0 where the box has no title.
int GiveLargeTitle(HWND box, int scale);
// As wide as the client area.
void FitLargeTitle(HWND box);

}  // namespace coredll
