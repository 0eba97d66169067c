#include "tests/unit/tuner/refused_threads.h"

#include <windows.h>

namespace test {
bool g_threadsRefused = false;
}

extern "C" {
// The linker sends the program's calls of CreateThread here.
using CreateThreadCall = decltype(CreateThread);
extern CreateThreadCall* g_realCreateThread __asm__("__real___imp_CreateThread");
static HANDLE WINAPI CreateThreadUnlessRefused(LPSECURITY_ATTRIBUTES security, SIZE_T stack,
                                               LPTHREAD_START_ROUTINE start, LPVOID parameter, DWORD flags,
                                               LPDWORD id) {
    if (!test::g_threadsRefused) return g_realCreateThread(security, stack, start, parameter, flags, id);
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}
CreateThreadCall* g_createThread __asm__("__wrap___imp_CreateThread") = CreateThreadUnlessRefused;
}
