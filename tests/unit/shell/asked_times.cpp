#include "tests/unit/shell/asked_times.h"

namespace test {
namespace {

AskedTimes* g_asked = nullptr;

}  // namespace

AskedTimes::AskedTimes() {
    g_asked = this;
}

AskedTimes::~AskedTimes() {
    g_asked = nullptr;
}

}  // namespace test

extern "C" {
// The linker sends the program's calls of Sleep and SetTimer here.
using SleepCall = decltype(Sleep);
extern SleepCall* g_realSleep __asm__("__real___imp_Sleep");
static void WINAPI NotedSleep(DWORD time_ms) {
    test::AskedTimes* asked = test::g_asked;
    if (asked != nullptr && asked->thread == GetCurrentThreadId()) asked->sleeps_ms.push_back(time_ms);
    g_realSleep(time_ms);
}
SleepCall* g_notedSleep __asm__("__wrap___imp_Sleep") = NotedSleep;

using SetTimerCall = decltype(SetTimer);
extern SetTimerCall* g_realSetTimer __asm__("__real___imp_SetTimer");
static UINT_PTR WINAPI NotedSetTimer(HWND window, UINT_PTR id, UINT period_ms, TIMERPROC proc) {
    test::AskedTimes* asked = test::g_asked;
    if (asked != nullptr && asked->thread == GetCurrentThreadId()) asked->timers_ms.push_back(period_ms);
    return g_realSetTimer(window, id, period_ms, proc);
}
SetTimerCall* g_notedSetTimer __asm__("__wrap___imp_SetTimer") = NotedSetTimer;
}
