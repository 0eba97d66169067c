// A fault that a window procedure leaves unhandled ends the program, as on the device. The desktop calls a
// procedure back from its kernel for many messages (WM_CREATE, WM_PAINT, what another thread sends), passes
// over a fault there and goes on as if the message had been answered.
#include <windows.h>

#include <cwchar>

#include "handset/base/module_edge.h"

namespace {

// The handler that the device's compiler, and seh.h, put behind __except.
const void* const g_guard =
    reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "__C_specific_handler"));
// Where the kernel enters a program's code for a message.
const void* const g_callback =
    reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "KiUserCallbackDispatcher"));

// Its own pointer stands at offset 0x30. (GCC takes NtCurrentTeb for a read behind an empty array.)
const NT_TIB& ThreadBlock() {
    const NT_TIB* block = nullptr;
    __asm__("movq %%gs:0x30, %0" : "=r"(block));
    return *block;
}

struct Frame {
    const BYTE* image;     // of the module whose code runs in it
    const void* function;  // its first instruction
    DWORD64 stack;
    const BYTE* handler;  // null when it has none
};

// One function of a thread's stack, and `context` as it is in that function's caller. False at the stack's
// end.
bool NextFrame(CONTEXT& context, Frame& frame) {
    const NT_TIB& limits = ThreadBlock();
    if (context.Rsp < reinterpret_cast<DWORD64>(limits.StackLimit) ||
        context.Rsp + sizeof(DWORD64) > reinterpret_cast<DWORD64>(limits.StackBase))
        return false;
    frame = {nullptr, nullptr, context.Rsp, nullptr};
    DWORD64 image = 0;
    const PRUNTIME_FUNCTION entry = RtlLookupFunctionEntry(context.Rip, &image, nullptr);
    if (entry == nullptr) {  // one without a frame of its own, or a jump to nowhere
        context.Rip = *reinterpret_cast<const DWORD64*>(context.Rsp);
        context.Rsp += sizeof(DWORD64);
        return true;
    }
    void* data = nullptr;
    DWORD64 base = 0;
    frame.image = reinterpret_cast<const BYTE*>(image);
    frame.function = frame.image + entry->BeginAddress;
    frame.handler = reinterpret_cast<const BYTE*>(reinterpret_cast<void*>(
        RtlVirtualUnwind(UNW_FLAG_EHANDLER, image, context.Rip, entry, &context, &data, &base, nullptr)));
    return true;
}

// Behind the jump through an import: FF 25, and how far from its end the import stands.
const void* Imported(const BYTE* code) {
    if (code[0] != 0xFF || code[1] != 0x25) return code;
    LONG distance = 0;
    CopyMemory(&distance, code + 2, sizeof distance);
    return *reinterpret_cast<void* const*>(code + 6 + distance);
}

bool IsOfTheHost(const BYTE* image) {
    WCHAR module[MAX_PATH] = L"", system[MAX_PATH] = L"";
    GetModuleFileNameW(reinterpret_cast<HMODULE>(const_cast<BYTE*>(image)), module, MAX_PATH);
    const UINT length = GetSystemDirectoryW(system, MAX_PATH);
    return _wcsnicmp(module, system, length) == 0;
}

// What the host's own code does about a fault is its affair. In the handset's and the radio's code a handler
// that is not a guard belongs to C++, which does not take faults.
bool MayTakeFault(const Frame& frame) {
    return frame.handler != nullptr && (Imported(frame.handler) == g_guard || IsOfTheHost(frame.image));
}

// Whether a fault at `context` leaves a window procedure that was called from the kernel.
bool LeavesWindowProcedure(CONTEXT context) {
    // Older than the handlers that a compiler lists: a chain on the stack itself, which Wine uses still.
    const auto chain = reinterpret_cast<DWORD64>(ThreadBlock().ExceptionList);
    for (Frame frame; NextFrame(context, frame);) {
        if (frame.function == g_callback) return chain == 0 || chain >= frame.stack;
        if (MayTakeFault(frame)) return false;
    }
    return false;
}

// STATUS_ACCESS_VIOLATION and its like: errors of the system's own, not what a language throws.
bool IsFault(DWORD code) {
    return (code & 0xF0000000) == 0xC0000000;
}

LONG CALLBACK EndAtFault(EXCEPTION_POINTERS* exception) try {
    const DWORD code = exception->ExceptionRecord->ExceptionCode;
    if (!IsFault(code) || IsDebuggerPresent() || !LeavesWindowProcedure(*exception->ContextRecord))
        return EXCEPTION_CONTINUE_SEARCH;
    UnhandledExceptionFilter(exception);
    TerminateProcess(GetCurrentProcess(), code);
    return EXCEPTION_CONTINUE_SEARCH;
} catch (...) {
    return handset::EdgeAnswer<LONG>(EXCEPTION_CONTINUE_SEARCH);
}

struct FaultHandler {
    FaultHandler() { AddVectoredExceptionHandler(1, EndAtFault); }
} const g_handler;

}  // namespace
