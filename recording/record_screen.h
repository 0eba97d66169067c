// The main screen while a recording runs: what must not be used then is disabled. Thread of the window.
#pragma once

#include <windows.h>

class CMainState;

// Locks keys, seek and step buttons and the scan command.
void LockScreen(CMainState& state);

// Undoes all that a start has done to the screen: list, time, button, locks. The scan command is left to the
// caller.
void UnlockScreen(CMainState& state);
void EnableScanCommand(BOOL enable);

// The tuned frequency, and the name under which the selected list keeps it or "Unknown". Any thread that may
// paint.
void ShowStatusText(CMainState& state);

// Puts the record button out, without and with painting it.
void PutRecordButtonOut(CMainState& state);
void RepaintRecordButton(CMainState& state);
