// The menu commands of the main window.
#pragma once

#include <windows.h>

class CMainState;

// Runs the command with this id; false for an id that is not in the table.
bool RunCommand(CMainState& state, HWND window, WORD id);

// The same for a shortcut, which is a key: what stops the keys stops it, and it starts nothing that the menus
// show grey.
bool RunShortcut(CMainState& state, HWND window, WORD id);
