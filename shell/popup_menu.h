// The channel list's popup menu: add, delete, edit, programme guide.
#pragma once

#include <windows.h>

class CMainState;

// WM_CONTEXTMENU at a point of the screen.
void ShowChannelPopup(CMainState& state, HWND window, int x, int y);

// The menu command: the same for who has no stylus, at the selected row.
void ShowSelectedChannel(CMainState& state, HWND window);

// The menu command: adds the tuned frequency to the selected group.
void AddCurrentChannel(CMainState& state, HWND window);
