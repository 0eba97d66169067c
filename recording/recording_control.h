// Start and stop of a recording, by the user's hand or for a booked one. Thread of the main window, except
// where another is named.
#pragma once

#include <windows.h>

class CMainState;

// The record button was pressed, or somebody acts as if: in state 2 it starts a recording, in any other it
// stops one. A silent start replaces a file without a question; a silent stop shows no box.
void StartOrStopRecording(CMainState& state, HWND owner, BOOL silent);

// Ends the recording, if one runs, and frees the screen in any case. `bByPreRecord` = 1 shows no box.
void stop_record(CMainState& state, HWND owner, BOOL bByPreRecord);

// For other parts of the radio that need the recording ended, such as a telephone call: as if the user had
// pressed the button. It ends when the main window next handles its messages. Takes 100 ms.
void RequestStopRecording(CMainState& state);
