// The display goes dark and comes back while the radio plays.
#pragma once

#include <windows.h>

class CMainState;

// Whether a key is the window's to handle now: 1 for Return while the display is dark and for every other
// key while it is on, else 0. Traces which of the four cases it was.
int ScreenGate(WPARAM virtualKey);

// Return: the display goes dark, or comes on again.
void ToggleDisplay(CMainState& state);
