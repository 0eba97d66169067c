// Deleting bookings, from the list's context menu.
#pragma once

#include <windows.h>

// WM_CONTEXTMENU at a point of the screen: offers to delete the selected booking or all of them, and does
// what is chosen once the user has confirmed it.
void OnBookingContextMenu(HWND dialog, POINT point);
