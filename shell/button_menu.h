// The buttons of the main screen as entries of the right soft key's menu. Thread of the window.
#pragma once

#include <windows.h>

class CMainState;

// Checks the entries of the toggles that are on and greys those of buttons that are disabled, wherever in the
// menu they stand.
void ShowButtonStates(const CMainState& state, HMENU menu);

// Taps the button whose entry this is; false when it is no such entry.
bool TapButtonOf(CMainState& state, HWND window, WORD command);
