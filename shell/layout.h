// Where the parts of the main window stand, by orientation.
#pragma once

#include <windows.h>

class CMainState;

// WM_SIZE: moves the channel list, fits its second column, and has the screen painted anew. Result 0.
LRESULT LayOutMainWindow(CMainState& state, HWND window);

// The painted main screen follows a change: everything is drawn again at the next paint. Result 0.
LRESULT UpdateMainScreen(HWND window);
