// The headset is the aerial: the radio does not start without one and closes when it is pulled.
#pragma once

#include <windows.h>

// True when the platform reports no headset, or nothing at all.
[[nodiscard]] bool IsHeadsetMissing();

// The warning box without an owner; returns when it was answered.
void ShowHeadsetWarning();

// WM_HEADSET_CHANGED with the new value: at 0 the radio warns, and closes 2 s later, answered or not.
void OnHeadsetChanged(HWND window, WPARAM headset);
