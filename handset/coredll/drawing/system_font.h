// The system's font as the device has it.
#pragma once

#include <windows.h>

namespace coredll {

// Tahoma of nine points: its rows are 14 pixels high.
[[nodiscard]] LOGFONTW SystemFontOfDevice();

// To a control that the program has just made. Controls write in the system's font until they are given
// another; the host has one of its own for them, with rows of another height.
void GiveSystemFont(HWND control);

}  // namespace coredll
