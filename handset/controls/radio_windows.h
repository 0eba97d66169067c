// The running radio from outside: its windows, its keys, its soft keys and the stylus. Any thread.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace panel {

// Visible top-level windows of a process, uppermost first, without the shell's bar that it brings along.
std::vector<HWND> WindowsOfProcess(DWORD processId);
// Those of this handset's radio; empty when it does not run.
std::vector<HWND> RadioWindows();
// The main window (class "Kora") of a radio, shown or not; null when there is none.
HWND MainWindowOf(DWORD processId);
// That of this handset's radio.
HWND RadioMainWindow();
// The shell's bar above it; null when there is none.
HWND RadioTopBar();

// Upper left corner of the display on the host's screen.
POINT DisplayOrigin();

// Presses or releases a key, as the handset's keyboard does: for the window that has the radio's focus.
// False when the radio does not run or the phone sleeps, and when the display is dark and the radio has not
// asked for all keys.
bool SendKey(WORD virtualKey, bool down);
// Presses a soft key of the window or dialog in front. False when it has no soft keys or the display is dark.
bool PressSoftKey(bool right);

enum class Stylus { kDown, kMove, kUp };
// The stylus at a place of the display, in its pixels. False when the radio shows nothing there or the
// display is dark.
bool TouchDisplay(Stylus touch, int x, int y);

}  // namespace panel
