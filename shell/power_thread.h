// The radio plays with the display dark: the device may go unattended instead of suspending, and while it is
// unattended its idle timer is kept from running out.
#pragma once

#include <windows.h>

// Thread procedure; `mainState` is the main state, of which nothing but the stop event is touched. Ends at
// that event, or at once when the platform gives no power notifications: the radio then plays on without it.
// Always 0.
DWORD WINAPI PowerNotifyProc(LPVOID mainState);
