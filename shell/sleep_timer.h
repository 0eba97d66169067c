// The sleep timer: closes the radio after the chosen time.
#pragma once

#include <windows.h>

// Starts the timer anew for `seconds`, or stops it (0), and marks the menu's item `commandId` (IDC_SLEEP_…)
// alone. Main thread.
void SetSleepTimer(DWORD seconds, UINT commandId, HWND window);

// Timer procedure of TIMER_SLEEP, once a second. `time` is the tick count in milliseconds. At the end of the
// time it takes 2 s and posts WM_CLOSE. A fault in it is traced and the timer runs on.
void CALLBACK SleepTimerProc(HWND window, UINT message, UINT_PTR idEvent, DWORD time);
