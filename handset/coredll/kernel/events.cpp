// Events as the device has them: one call that sets, resets or pulses.
#include <windows.h>

#include "handset/base/module_edge.h"
#include "handset/coredll/kernel/call_guard.h"

namespace {
constexpr DWORD kEventPulse = 1;
constexpr DWORD kEventReset = 2;
constexpr DWORD kEventSet = 3;
}  // namespace

COREDLL_EXPORT BOOL WINAPI EventModify(HANDLE event, DWORD function) try {
    const coredll::CCallGuard guard;
    if (function == kEventSet) return SetEvent(event);
    if (function == kEventReset) return ResetEvent(event);
    if (function == kEventPulse) return PulseEvent(event);
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}
