// The settings dialog: every choice is written to the registry the moment its control is clicked, and read
// there by whoever needs it. There is nothing to confirm and nothing to take back.
#pragma once

#include <windows.h>

// Runs the dialog in the layout of the screen as it stands.
void ShowSettings(HWND owner);

INT_PTR CALLBACK SettingsProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
