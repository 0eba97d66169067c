// Window timers: the period runs on the handset's clock, and a timer procedure is given the handset's ticks.
#include <algorithm>
#include <map>
#include <mutex>
#include <utility>

#include "handset/base/module_edge.h"
#include "handset/coredll/kernel/call_guard.h"
#include "handset/coredll/kernel/platform_call.h"

extern "C" DWORD WINAPI DeviceGetTickCount(void);

namespace {

using coredll::CallGuard;
using coredll::CallKind;

std::mutex g_lock;  // guards g_procedures
std::map<std::pair<HWND, UINT_PTR>, TIMERPROC> g_procedures;

void Remember(HWND window, UINT_PTR id, TIMERPROC procedure) {
    const std::lock_guard<std::mutex> lock(g_lock);
    if (procedure != nullptr) {
        g_procedures[{window, id}] = procedure;
    } else {
        g_procedures.erase({window, id});
    }
}

TIMERPROC Remembered(HWND window, UINT_PTR id) {
    const std::lock_guard<std::mutex> lock(g_lock);
    const auto found = g_procedures.find({window, id});
    return found == g_procedures.end() ? nullptr : found->second;
}

void CALLBACK OnTimer(HWND window, UINT message, UINT_PTR id, DWORD /*hostTick*/) try {
    const TIMERPROC procedure = Remembered(window, id);
    if (procedure != nullptr) procedure(window, message, id, DeviceGetTickCount());
} catch (...) {
    handset::EdgeAnswer<void>();
}

}  // namespace

// Device differs: a period is never shorter than 10 ms of real time, the host's shortest.
COREDLL_EXPORT UINT_PTR WINAPI DeviceSetTimer(HWND window, UINT_PTR id, UINT period_ms,
                                              TIMERPROC procedure) try {
    const CallGuard guard;
    const UINT realPeriod_ms = std::max<UINT>(HandsetRealTimeout(period_ms), 1);
    const UINT_PTR made = SetTimer(window, id, realPeriod_ms, procedure != nullptr ? OnTimer : nullptr);
    if (made == 0) return 0;
    const UINT_PTR kept = window != nullptr ? id : made;
    try {
        Remember(window, kept, procedure);
    } catch (...) {
        KillTimer(window, kept);
        throw;
    }
    return made;
} catch (...) {
    return handset::EdgeAnswer<UINT_PTR>();
}

COREDLL_EXPORT BOOL WINAPI DeviceKillTimer(HWND window, UINT_PTR id) try {
    const CallGuard guard;
    Remember(window, id, nullptr);
    return KillTimer(window, id);
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}
