// Marks a call of COREDLL as a platform call for the length of a scope, and defines in one line a call that
// the desktop supplies and that needs nothing but the mark.
#pragma once

#include "handset/base/module_edge.h"
#include "handset/coredll/kernel/coredll_exports.h"
#include "handset/coredll/kernel/thread_record.h"

namespace coredll {

class CCallGuard {
  public:
    // Inlined always: the stack address is that of the platform call itself.
    __attribute__((always_inline)) explicit CCallGuard(CallKind kind = CallKind::Plain)
        : thread_(CurrentThreadRecord()) {
        if (thread_ != nullptr) thread_->Enter(kind, reinterpret_cast<std::uintptr_t>(__builtin_dwarf_cfa()));
    }
    ~CCallGuard() {
        if (thread_ != nullptr) thread_->Leave();
    }
    CCallGuard(const CCallGuard&) = delete;
    CCallGuard& operator=(const CCallGuard&) = delete;

  private:
    CThreadRecord* thread_;
};

}  // namespace coredll

// GUARDED(BOOL, CloseHandle, (HANDLE object), (object), Plain) defines DeviceCloseHandle. One whose failure
// is not 0, null or nothing names it behind the kind.
#define GUARDED(result, name, parameters, arguments, kind, ...)   \
    COREDLL_EXPORT result WINAPI Device##name parameters try {    \
        const coredll::CCallGuard guard(coredll::CallKind::kind); \
        return name arguments;                                    \
    } catch (...) {                                               \
        return handset::EdgeAnswer<result>(__VA_ARGS__);          \
    }
