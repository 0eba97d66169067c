// Tuning by typed digits: three digits make a frequency below 100 MHz, a first digit of 1 announces four.
#pragma once

#include <windows.h>

#include <cstdint>

class CMainState;

struct DigitEntry {
    std::uint32_t uCount;      // digits taken, 0 to 3
    std::uint32_t auDigit[4];  // d0 … d3
};

// Takes a key-down of '0' … '9'; other keys are ignored. Main thread.
void OnDigitKey(CMainState& state, HWND window, WPARAM virtualKey);

// Timer procedure of TIMER_DIGIT_ENTRY: an entry that got no digit since the last tick leaves the display.
void CALLBACK DigitEntryTimerProc(HWND window, UINT message, UINT_PTR idEvent, DWORD time);
