// Tuning from the channel list: at once when a row is activated, and after a rest when the selection moves.
#pragma once

#include <windows.h>

class CMainState;

// Selects the first row whose frequency text is that of the tuned channel, to the last blank.
void HighlightTunedChannel(HWND list);

void TuneToRow(CMainState& state, HWND window, int row);

// The row's frequency is remembered; it is tuned when no other row was selected for 1.5 s.
void TuneToRowAfterRest(CMainState& state, HWND window, int row);
