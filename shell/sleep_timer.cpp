#include "shell/sleep_timer.h"

#include "resources/resource_ids.h"
#include "shell/app_block.h"
#include "shell/exception_guard.h"

namespace {

constexpr UINT kTick_ms = 1000;
constexpr DWORD kBeforeClose_ms = 2000;
constexpr UINT kSleepItems[] = {IDC_SLEEP_OFF, IDC_SLEEP_15, IDC_SLEEP_30, IDC_SLEEP_60};

void MarkItem(UINT commandId) {
    for (const UINT id : kSleepItems) {
        const UINT mark = id == commandId ? MF_CHECKED : MF_UNCHECKED;
        CheckMenuItem(g_app.hRightSoftKeyMenu, id, MF_BYCOMMAND | mark);
    }
}

void Start(HWND window, DWORD seconds) {
    g_app.dwSleepStart_s = GetTickCount() / 1000;
    g_app.dwSleepLength_s = seconds;
    SetTimer(window, TIMER_SLEEP, kTick_ms, SleepTimerProc);
}

void Tick(HWND window, DWORD time) {
    g_app.dwSleepLastTick_s = time / 1000;
    const DWORD elapsed_s = g_app.dwSleepLastTick_s - g_app.dwSleepStart_s;
    NKDbgPrintfW(L"FM: SleepTimer: %d / %d s\n", elapsed_s, g_app.dwSleepLength_s);
    if (elapsed_s < g_app.dwSleepLength_s) return;
    KillTimer(window, TIMER_SLEEP);
    NKDbgPrintfW(L"\nClose FM -- SleepTimer Time out:%d s\n", elapsed_s);
    Sleep(kBeforeClose_ms);
    PostMessageW(window, WM_CLOSE, 0, 0);
}

}  // namespace

void SetSleepTimer(DWORD seconds, UINT commandId, HWND window) {
    MarkItem(commandId);
    if (seconds != 0) {
        Start(window, seconds);
    } else if (g_app.dwSleepLength_s != 0) {
        // The length stays as it was; it is read only while the timer runs.
        KillTimer(window, TIMER_SLEEP);
    }
}

void CALLBACK SleepTimerProc(HWND window, UINT, UINT_PTR, DWORD time) {
    if (!RunGuarded([&] { Tick(window, time); })) NKDbgPrintfW(L"FM: *** SleepTimerProc Crash");
}
