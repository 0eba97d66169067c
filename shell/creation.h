// The main window comes into being.
#pragma once

#include <windows.h>

// WM_CREATE: the tuner device, the notifications, the threads' events, the channel list and the menu bar.
// FALSE, and the window is not made, when there is no tuner device.
BOOL OnCreate(HWND window, const CREATESTRUCTW& create);
