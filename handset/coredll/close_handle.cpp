// CloseHandle, which on the device closes handles of databases and message queues as well.
#include "handset/base/module_edge.h"
#include "handset/coredll/cedb/mounts.h"
#include "handset/coredll/kernel/call_guard.h"
#include "handset/coredll/power/message_queues.h"

COREDLL_EXPORT BOOL WINAPI DeviceCloseHandle(HANDLE object) try {
    const coredll::CCallGuard guard;
    return CedbCloseHandle(object) || coredll::CloseQueueHandle(object) || CloseHandle(object);
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}
