// The menu commands of the main window.
#pragma once

#include <windows.h>

class CMainState;

// Runs the command with this id; false for an id that is not in the table.
bool RunCommand(CMainState& state, HWND window, WORD id);
