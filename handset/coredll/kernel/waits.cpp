// Waiting: every time-out runs on the handset's clock.
#include "handset/base/module_edge.h"
#include "handset/coredll/kernel/call_guard.h"
#include "handset/coredll/kernel/platform_call.h"

using coredll::CallGuard;
using coredll::CallKind;

COREDLL_EXPORT void WINAPI DeviceSleep(DWORD milliseconds) try {
    const CallGuard guard(CallKind::Waits);
    Sleep(HandsetRealTimeout(milliseconds));
} catch (...) {
    handset::EdgeAnswer<void>();
}

COREDLL_EXPORT DWORD WINAPI DeviceWaitForSingleObject(HANDLE object, DWORD milliseconds) try {
    const CallGuard guard(CallKind::Waits);
    return WaitForSingleObject(object, HandsetRealTimeout(milliseconds));
} catch (...) {
    return handset::EdgeAnswer<DWORD>(WAIT_FAILED);
}

// The device waits for any of the objects only.
COREDLL_EXPORT DWORD WINAPI DeviceWaitForMultipleObjects(DWORD count, const HANDLE* objects, BOOL all,
                                                         DWORD milliseconds) try {
    const CallGuard guard(CallKind::Waits);
    if (all) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return WAIT_FAILED;
    }
    return WaitForMultipleObjects(count, objects, FALSE, HandsetRealTimeout(milliseconds));
} catch (...) {
    return handset::EdgeAnswer<DWORD>(WAIT_FAILED);
}

COREDLL_EXPORT DWORD WINAPI DeviceMsgWaitForMultipleObjectsEx(DWORD count, const HANDLE* objects,
                                                              DWORD milliseconds, DWORD wakeMask,
                                                              DWORD flags) try {
    const CallGuard guard(CallKind::CallsBack);
    return MsgWaitForMultipleObjectsEx(count, objects, HandsetRealTimeout(milliseconds), wakeMask, flags);
} catch (...) {
    return handset::EdgeAnswer<DWORD>(WAIT_FAILED);
}
