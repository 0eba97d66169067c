// The shell's bar at the top of the display: the title of the window in front, the network, the sound, a call
// and the clock.
#pragma once

#include <windows.h>

namespace coredll {

// Puts the bar above a program's window; a moment after that window it goes. A process has one; on the
// window's own thread.
//
// Device differs: the device's bar belongs to the shell and is there before any program. Here a program
// brings it along, whether a phone is drawn around the display or not.
void ShowTopBarAbove(HWND window);

}  // namespace coredll
