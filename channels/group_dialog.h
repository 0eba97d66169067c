// The dialog of the channel groups: which one is shown, new ones, other names, and away with them.
#pragma once

#include <windows.h>

class CMainState;

// Runs the dialog over the main window.
void ShowGroupDialog(CMainState& state, HWND owner);
