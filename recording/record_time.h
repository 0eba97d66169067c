// The running time of a recording on the main screen, and the recorder as the thread that shows it sees it.
#pragma once

#include <windows.h>

class CMainState;

// Starts the thread that shows the time every 500 ms until the stop event, and ends the recording when the
// space runs out. Main thread, after the recorder has started.
void StartRecordTime(CMainState& state);

// Puts the recording flag down and clears the time, which does not come back. Main thread.
void EndRecordTime(CMainState& state);

// Deletes the recorder, once the thread does not look at it any more. Main thread.
void DiscardRecorder(CMainState& state);
