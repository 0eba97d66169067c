// Static objects of a function: made once, also when two threads come to them at once (Itanium C++
// ABI, 3.3.3; the guard's form is that of ARM IHI 0041: bit 0 of its first byte says that the object is
// there).
#include "device/runtime/interlocked.h"

namespace {

constexpr LONG kMade = 1;
constexpr LONG kBeingMade = 0x100;

}  // namespace

extern "C" {

int __cxa_guard_acquire(LONG* guard) {
    for (;;) {
        const LONG before = SystemCompareExchange(guard, kBeingMade, 0);
        if (before == 0) return 1;
        if ((before & kMade) != 0) return 0;
        Sleep(1);
    }
}
void __cxa_guard_release(LONG* guard) {
    SystemExchange(guard, kMade);
}
void __cxa_guard_abort(LONG* guard) {
    SystemExchange(guard, 0);
}

// The process ends without running destructors of static objects (see start.cpp).
int __cxa_atexit(void (*)(void*), void*, void*) {
    return 0;
}
int __aeabi_atexit(void*, void (*)(void*), void*) {
    return 0;
}
void* __dso_handle = nullptr;

}  // extern "C"
