// The scroll bar of a list that has a picture behind its rows: drawn in the picture's colours, as the
// device's lists follow the look of what they stand on. The host draws every bar in the colours of its own
// controls.
#pragma once

#include <windows.h>

namespace coredll {

// To a list view that the program has just made. Until it is given a picture, its bar is the host's.
void DrawScrollBarLikePicture(HWND list);

// 0x00BBGGRR. The thumb and the arrows stand out from the track by at least 3 to 1.
struct ScrollBarColours {
    COLORREF track;
    COLORREF thumb;
};
[[nodiscard]] ScrollBarColours ScrollBarColoursOn(COLORREF ground);

}  // namespace coredll
