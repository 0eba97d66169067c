// Platform calls of the handset's other DLLs, marked for SuspendThread.
#include "handset/coredll/kernel/platform_call.h"

#include "handset/base/module_edge.h"
#include "handset/coredll/kernel/coredll_exports.h"
#include "handset/coredll/kernel/thread_record.h"

COREDLL_EXPORT void WINAPI HandsetEnterCall(BOOL mayWait) try {
    if (coredll::CThreadRecord* const thread = coredll::CurrentThreadRecord()) {
        thread->Enter(mayWait ? coredll::CallKind::Waits : coredll::CallKind::Plain,
                      reinterpret_cast<std::uintptr_t>(__builtin_dwarf_cfa()),
                      reinterpret_cast<std::uintptr_t>(__builtin_return_address(0)));
    }
} catch (...) {
    handset::EdgeAnswer<void>();
}

COREDLL_EXPORT void WINAPI HandsetLeaveCall(void) try {
    if (coredll::CThreadRecord* const thread = coredll::CurrentThreadRecord()) thread->Leave();
} catch (...) {
    handset::EdgeAnswer<void>();
}
