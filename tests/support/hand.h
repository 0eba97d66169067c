// What a hand does to a dialog of the radio: types, presses buttons and soft keys, picks rows.
#pragma once

#include <windows.h>

#include <string>

namespace test {

// Replaces what stands in an edit control, character by character. Returns at once; what is pressed
// afterwards comes after it.
void TypeInto(HWND dialog, int id, const std::wstring& text);
void PressButton(HWND dialog, int id);
enum class SoftKey { kLeft, kRight };
void PressSoftKey(HWND dialog, SoftKey key);
// Picks a row of a list box, as a tap does.
void PickRow(HWND dialog, int id, int row);
// Taps the minutes of a date-time picker and steps them up; they go on from 59 with 0, and the hour stays.
void StepMinutes(HWND picker, int times);
std::wstring TextOf(HWND dialog, int id);
std::wstring ListBoxText(HWND dialog, int id, int row);

}  // namespace test
