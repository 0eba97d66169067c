// The radio falls silent while the telephone rings or dials, and comes back after the call.
#pragma once

#include <windows.h>

class CMainState;

// WM_PHONE_CHANGED with the telephone's status bits. An incoming call mutes; an outgoing one mutes when its
// number is known; a status without the talking bit ends a mute that a call began. A running recording is
// stopped, not started again. Main thread; takes up to 1.1 s at the end of a call.
void OnPhoneChanged(CMainState& state, HWND window, DWORD status);
