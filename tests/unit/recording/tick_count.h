// The tick count as the program under test sees it, for the length of a test.
#pragma once

#include <windows.h>

namespace test {

// Added to every answer of GetTickCount; 0 is the device's own.
extern DWORD g_tickOffset;

}  // namespace test
