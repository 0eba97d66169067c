// Where a window of the application goes on the handset's display.
#pragma once

#include <windows.h>

namespace handset {

// Covers the whole display.
void FitToDisplay(HWND window);
// Centres a window at its own size in the display; its upper left corner never leaves it.
void CentreInDisplay(HWND window);
// True for the WM_SETTINGCHANGE that says the display has other dimensions now.
bool IsDisplayChange(UINT message, WPARAM wParam);

}  // namespace handset
