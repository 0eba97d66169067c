// The channel list on the main window: two columns, name and frequency, over the part of the skin that lies
// behind it.
#pragma once

#include <windows.h>

class CMainState;

// Creates the list view (control id 0) with its columns, background and font, and subclasses it. False when
// the list view cannot be made. Main thread.
bool CreateChannelList(CMainState& state, HWND window);

// Gives the list the ground that belongs to the screen as it stands, unless it has it. Main thread.
void ShowListBackground(CMainState& state, HWND window);
