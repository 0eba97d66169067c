// Where a window of the application goes on the handset's display.
#pragma once

#include <windows.h>

namespace handset {

// Fills the display below the shell's bar.
void FillWorkArea(HWND window);
// Centres a window there at its own size; its upper left corner never leaves that place.
void CentreInWorkArea(HWND window);
// True for the WM_SETTINGCHANGE that says the display has other dimensions now.
bool IsDisplayChange(UINT message, WPARAM wParam);

}  // namespace handset
