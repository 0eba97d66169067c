// The main window goes, and everything with it, in a fixed order.
#pragma once

#include <windows.h>

class CMainState;

// WM_DESTROY. Joins the worker threads without a time-out: a thread that does not honour its stop event hangs
// the exit.
void ShutDown(CMainState& state, HWND window);
