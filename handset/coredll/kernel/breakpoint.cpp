// A break without a debugger: the device's kernel notes it and goes on, the desktop would end the program.
#include <windows.h>

#include "handset/base/module_edge.h"

namespace {

constexpr BYTE kBreakInstruction = 0xCC;

#if defined(__x86_64__)
DWORD64& InstructionPointer(CONTEXT& context) {
    return context.Rip;
}
#else
DWORD& InstructionPointer(CONTEXT& context) {
    return context.Eip;
}
#endif

LPTOP_LEVEL_EXCEPTION_FILTER g_previous = nullptr;

// For what no guard of the program has taken.
LONG WINAPI GoOnAfterBreak(EXCEPTION_POINTERS* exception) try {
    if (exception->ExceptionRecord->ExceptionCode != static_cast<DWORD>(EXCEPTION_BREAKPOINT)) {
        return g_previous != nullptr ? g_previous(exception) : EXCEPTION_CONTINUE_SEARCH;
    }
    auto& next = InstructionPointer(*exception->ContextRecord);
    if (*reinterpret_cast<const BYTE*>(next) == kBreakInstruction) ++next;
    return EXCEPTION_CONTINUE_EXECUTION;
} catch (...) {
    return handset::EdgeAnswer<LONG>(EXCEPTION_CONTINUE_SEARCH);
}

struct BreakFilter {
    BreakFilter() { g_previous = SetUnhandledExceptionFilter(GoOnAfterBreak); }
} const g_filter;

}  // namespace
