// The tuner device comes and goes: made once with the main window, released once at shut-down.
#pragma once

#include <windows.h>

class CMainState;

// Makes the device and starts it: powered, loudspeaker off, not muted, tuned to the channel of a scheduled
// start, the volume slider where the device's volume is. FALSE when there is no device: the end of the
// program is then requested, and no other call of the radio reaches a device. Main thread.
BOOL CreateTunerDevice(HWND window, CMainState& state);

// Loudspeaker off, not muted, the volume as it was before a weak-signal mute; then closes and releases the
// device. Safe when there is none. Main thread, after the worker threads have ended.
void CloseTunerDevice();
