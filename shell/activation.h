// The window comes to the front or goes to the back: keys, focus and the monitor thread follow.
#pragma once

#include <windows.h>

class CMainState;

// WM_ACTIVATE. The radio plays on in the back; only the polling of the tuner stops.
void HandleActivation(CMainState& state, HWND window, WPARAM wParam, LPARAM lParam);
