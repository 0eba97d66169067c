// The volume by keys.
#pragma once

#include <windows.h>

class CMainState;

// Moves the volume slider by `delta` positions, held between 0 and the slider's maximum. The skin paints it
// and reports the move, which sets the volume. Main thread.
void StepVolume(HWND window, CMainState& state, int delta);
