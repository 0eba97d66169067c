// Marks a call of COREDLL as a platform call for the length of a scope, and defines in one line a call that
// the desktop supplies and that needs nothing but the mark.
#pragma once

#include "handset/coredll/kernel/coredll_exports.h"
#include "handset/coredll/kernel/thread_record.h"

namespace coredll {

class CallGuard {
  public:
    // Inlined always: the stack address is that of the platform call itself.
    __attribute__((always_inline)) explicit CallGuard(CallKind kind = CallKind::Plain)
        : thread_(CurrentThreadRecord()) {
        thread_.Enter(kind, reinterpret_cast<std::uintptr_t>(__builtin_dwarf_cfa()));
    }
    ~CallGuard() { thread_.Leave(); }
    CallGuard(const CallGuard&) = delete;
    CallGuard& operator=(const CallGuard&) = delete;

  private:
    ThreadRecord& thread_;
};

}  // namespace coredll

// GUARDED(BOOL, CloseHandle, (HANDLE object), (object), Plain) defines DeviceCloseHandle.
#define GUARDED(result, name, parameters, arguments, kind)       \
    COREDLL_EXPORT result WINAPI Device##name parameters {       \
        const coredll::CallGuard guard(coredll::CallKind::kind); \
        return name arguments;                                   \
    }
