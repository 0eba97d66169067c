// The platform's state store tells the main window about the headset and the telephone.
#pragma once

#include <windows.h>

class CMainState;

// Every change of the headset's and the telephone's state arrives as WM_HEADSET_CHANGED and WM_PHONE_CHANGED.
void WatchPhoneState(CMainState& state, HWND window);

// Ends both; safe when one was never made.
void UnwatchPhoneState(CMainState& state);
