// CloseHandle, which on the device closes database handles as well.
#include "handset/coredll/call_guard.h"
#include "handset/coredll/cedb/mounts.h"

COREDLL_EXPORT BOOL WINAPI DeviceCloseHandle(HANDLE object) {
    const coredll::CallGuard guard;
    return CedbCloseHandle(object) || CloseHandle(object);
}
