#include "tests/unit/recording/tick_count.h"

namespace test {
DWORD g_tickOffset = 0;
}

extern "C" {
// The linker sends the program's calls of GetTickCount here.
extern DWORD(WINAPI* g_realTickCount)() __asm__("__real___imp_GetTickCount");
static DWORD WINAPI ShiftedTickCount() {
    return g_realTickCount() + test::g_tickOffset;
}
DWORD(WINAPI* g_shiftedTickCount)() __asm__("__wrap___imp_GetTickCount") = ShiftedTickCount;
}
