// CloseHandle, which on the device closes handles of databases and message queues as well.
#include "handset/coredll/call_guard.h"
#include "handset/coredll/cedb/mounts.h"
#include "handset/coredll/message_queues.h"

COREDLL_EXPORT BOOL WINAPI DeviceCloseHandle(HANDLE object) {
    const coredll::CallGuard guard;
    return CedbCloseHandle(object) || coredll::CloseQueueHandle(object) || CloseHandle(object);
}
