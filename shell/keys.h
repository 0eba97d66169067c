// Hardware keys of the main window.
#pragma once

#include <windows.h>

class CMainState;

// WM_KEYDOWN: digits tune, left and right change the volume, up and down go to the list, Return toggles the
// display. Nothing while a recording runs; with the display dark, Return alone.
void HandleKeyDown(CMainState& state, HWND window, WPARAM virtualKey);

// Whether a key has an effect now: none while a recording runs, and with the display dark Return alone.
bool KeyPasses(const CMainState& state, WPARAM virtualKey);
