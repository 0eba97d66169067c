// EnterCriticalSection: a thread that is suspended while it waits for a section must not come to own it.
#include "handset/base/module_edge.h"
#include "handset/coredll/kernel/call_guard.h"

COREDLL_EXPORT void WINAPI DeviceEnterCriticalSection(CRITICAL_SECTION* section) try {
    coredll::CThreadRecord* const thread = coredll::CurrentThreadRecord();
    if (thread == nullptr) return EnterCriticalSection(section);
    for (;;) {
        thread->Enter(coredll::CallKind::Waits, reinterpret_cast<std::uintptr_t>(__builtin_dwarf_cfa()));
        EnterCriticalSection(section);
        if (thread->LeaveUnlessSuspended()) return;
        LeaveCriticalSection(section);
        thread->Leave();
    }
} catch (...) {
    handset::EdgeAnswer<void>();
}
