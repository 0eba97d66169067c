// A dialog of a running radio, worked with the stylus from outside.
#pragma once

#include <windows.h>

#include <string>

namespace test {

// The stylus on the middle of a control. Returns at once: wait for what it brings about.
void TapControl(HWND dialog, int id);
bool IsChecked(HWND dialog, int id);
bool IsEnabled(HWND dialog, int id);
std::wstring ControlText(HWND dialog, int id);
// Left, top, width and height in the dialog's client area.
std::string ControlPlace(HWND dialog, int id);

}  // namespace test
