// What the compiler's exception library asks of its surroundings. Each thread has its own stack of caught
// exceptions; the library, made for a machine without threads, would have one for all.
#include <windows.h>

#include <cstdlib>
#include <exception>

namespace {

// The platform's inline TlsAlloc: one call with a function number, 0 for "allocate".
extern "C" DWORD TlsCall(DWORD function, DWORD index);
constexpr DWORD kAllocate = 0;
constexpr DWORD kNoSlot = 0xFFFFFFFF;

// ARM IHI 0041, 9.1: what __cxa_get_globals points to.
struct ThreadsExceptions {
    void* pCaught;
    unsigned uncaught;
    void* pPropagating;
};

DWORD Slot() {
    static const DWORD slot = TlsCall(kAllocate, 0);
    return slot;
}

// Taken when a thread has no memory for its own; then nothing can be done for it anyway.
ThreadsExceptions g_last = {};

ThreadsExceptions* OfThisThread() {
    const DWORD slot = Slot();
    if (slot == kNoSlot) return &g_last;
    auto* own = static_cast<ThreadsExceptions*>(TlsGetValue(slot));
    if (own != nullptr) return own;
    own = static_cast<ThreadsExceptions*>(std::calloc(1, sizeof(ThreadsExceptions)));
    if (own == nullptr) return &g_last;
    TlsSetValue(slot, own);
    return own;
}

// What no frame of C++ catches ends the program with the code that the desktop's runtime uses as well.
constexpr UINT kEndedByException = 3;

}  // namespace

extern "C" {

void* __cxa_get_globals() {
    return OfThisThread();
}
void* __cxa_get_globals_fast() {
    return OfThisThread();
}
void abort() {
    TerminateProcess(reinterpret_cast<HANDLE>(64 + 2), kEndedByException);
    for (;;) Sleep(INFINITE);
}

}  // extern "C"

namespace __gnu_cxx {

// Instead of the library's, which would bring its own console and the names of all types.
void __verbose_terminate_handler() {
    abort();
}

}  // namespace __gnu_cxx

namespace std {

struct KoraLengthError : exception {};

void __throw_length_error(const char*) {
    throw KoraLengthError();
}

}  // namespace std
