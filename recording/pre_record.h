// A recording that was booked: it starts by itself, runs for its minutes, and closes the radio.
#pragma once

#include <windows.h>

// Thread procedure of a booked start; the parameter is the main window, whose request names the minutes.
// Starts a silent recording after 5 s. When the minutes are over it stops the recording silently and closes
// the window; a recording that was ended before leaves the radio open. Gives 1.
DWORD WINAPI PreRecordThread(LPVOID mainWindow);

// The recording was ended: the booked one's wait is over too, if there is one. Any thread.
void EndPreRecordWait();
