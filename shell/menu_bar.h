// The two soft keys under the main screen and their menus.
#pragma once

#include <windows.h>

class CMainState;

// Creates the menu bar of the main window and stores the two menus in the application block. Null when the
// shell refuses.
HWND CreateMainMenuBar(HWND window);

// WM_INITMENUPOPUP: greys what cannot be chosen now.
void EnableMenuItems(HMENU menu);

// Whether the menu that has this command would show it grey now.
bool IsCommandGrey(const CMainState& state, WORD id);
