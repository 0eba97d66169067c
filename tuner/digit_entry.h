// Tuning by typed digits: what the keys and the timer do on the screen and at the tuner.
#pragma once

#include <windows.h>

#include "tuner/digit_machine.h"

class CMainState;

// Takes a key-down of '0' … '9'; other keys are ignored. Main thread.
void OnDigitKey(CMainState& state, HWND window, WPARAM virtualKey);

// Timer procedure of TIMER_DIGIT_ENTRY: an entry that got no digit since the last tick leaves the display.
// Main thread.
void CALLBACK DigitEntryTimerProc(HWND window, UINT message, UINT_PTR idEvent, DWORD time);
