// What the channel list tells the main window.
#pragma once

#include <windows.h>

class CMainState;

// WM_NOTIFY of the list view (control id 0); the result of the message.
LRESULT OnChannelListNotify(CMainState& state, HWND window, NMHDR* header);
