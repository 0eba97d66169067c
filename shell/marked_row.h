// Where the menu of a list's row opens when no stylus has said where. Thread of the window.
#pragma once

#include <windows.h>

// The middle of the list's selection mark on the screen; of the list when no row is marked, or the marked one
// is out of sight.
POINT MarkedRowOnScreen(HWND list);
