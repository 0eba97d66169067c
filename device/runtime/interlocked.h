// The system's own Interlocked calls. The platform headers make compiler built-ins of these names, and those
// come to atomics.cpp, which is built on the calls.
#pragma once

#include <windows.h>

extern "C" {
LONG SystemCompareExchange(LONG* word, LONG value, LONG expected) __asm__("InterlockedCompareExchange");
LONG SystemExchange(LONG* word, LONG value) __asm__("InterlockedExchange");
LONG SystemExchangeAdd(LONG* word, LONG value) __asm__("InterlockedExchangeAdd");
}
