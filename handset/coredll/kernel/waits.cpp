// Waiting: every time-out runs on the handset's clock.
#include "handset/coredll/kernel/call_guard.h"
#include "handset/coredll/kernel/platform_call.h"

using coredll::CallGuard;
using coredll::CallKind;

COREDLL_EXPORT void WINAPI DeviceSleep(DWORD milliseconds) {
    const CallGuard guard(CallKind::Waits);
    Sleep(HandsetRealTimeout(milliseconds));
}

COREDLL_EXPORT DWORD WINAPI DeviceWaitForSingleObject(HANDLE object, DWORD milliseconds) {
    const CallGuard guard(CallKind::Waits);
    return WaitForSingleObject(object, HandsetRealTimeout(milliseconds));
}

// The device waits for any of the objects only.
COREDLL_EXPORT DWORD WINAPI DeviceWaitForMultipleObjects(DWORD count, const HANDLE* objects, BOOL all,
                                                         DWORD milliseconds) {
    const CallGuard guard(CallKind::Waits);
    if (all) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return WAIT_FAILED;
    }
    return WaitForMultipleObjects(count, objects, FALSE, HandsetRealTimeout(milliseconds));
}

COREDLL_EXPORT DWORD WINAPI DeviceMsgWaitForMultipleObjectsEx(DWORD count, const HANDLE* objects,
                                                              DWORD milliseconds, DWORD wakeMask,
                                                              DWORD flags) {
    const CallGuard guard(CallKind::CallsBack);
    return MsgWaitForMultipleObjectsEx(count, objects, HandsetRealTimeout(milliseconds), wakeMask, flags);
}
