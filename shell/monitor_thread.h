// The monitor thread: keeps the main screen's indicators in step with the tuner and guards the radio against
// a weak signal.
#pragma once

#include <windows.h>

class CMainState;

// Thread procedure; `window` is the main window (HWND). Polls until the main state's stop event, which ends
// it after the round in hand. A fault in a round is traced and never ends the thread. Always 0.
DWORD WINAPI Main_threadProc(LPVOID window);

// One round: signal, weak-signal mute, stereo, RDS, alternative frequencies, storage card. The settings are
// read anew each time, so a change takes effect with the next round. Monitor thread.
void RunMonitorRound(CMainState& state, HWND window);
