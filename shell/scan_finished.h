// What an automatic scan had switched off comes back.
#pragma once

#include <windows.h>

class CMainState;

// WM_AUTOSCAN_FINISHED: the window takes input again, the sound is on, the list is shown, the monitor runs.
void FinishScan(CMainState& state, HWND window);
