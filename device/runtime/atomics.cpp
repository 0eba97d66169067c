// Atomic access for a processor that has none: ARMv4T can only exchange a word. The system's Interlocked
// calls are restarted by the kernel when a thread is interrupted inside, so everything is built on these.
#include "device/runtime/interlocked.h"

namespace {

LONG* Word(volatile void* address) {
    return static_cast<LONG*>(const_cast<void*>(address));
}

}  // namespace

// The compiler knows some of these by name and would not let them be defined under it.
extern "C" {
unsigned LoadWord(const volatile void* address, int) __asm__("__atomic_load_4");
void StoreWord(volatile void* address, unsigned value, int) __asm__("__atomic_store_4");
unsigned AddToWord(volatile void* address, unsigned value, int) __asm__("__atomic_fetch_add_4");
unsigned char LoadByte(const volatile void* address, int) __asm__("__atomic_load_1");
void StoreByte(volatile void* address, unsigned char value, int) __asm__("__atomic_store_1");
unsigned char SetByte(volatile void* address, unsigned char value, int) __asm__("__atomic_exchange_1");
unsigned SyncAddToWord(volatile void* address, unsigned value) __asm__("__sync_fetch_and_add_4");
unsigned SyncSetWord(volatile void* address, unsigned value) __asm__("__sync_lock_test_and_set_4");
unsigned SyncSwapWord(volatile void* address, unsigned expected,
                      unsigned value) __asm__("__sync_val_compare_and_swap_4");
unsigned char SyncSwapByte(volatile void* address, unsigned char expected,
                           unsigned char value) __asm__("__sync_val_compare_and_swap_1");
void Synchronize() __asm__("__sync_synchronize");
}

// One processor: what is read or written in one instruction is whole, and in order.
unsigned LoadWord(const volatile void* address, int) {
    return *static_cast<const volatile unsigned*>(address);
}
void StoreWord(volatile void* address, unsigned value, int) {
    *static_cast<volatile unsigned*>(address) = value;
}
unsigned char LoadByte(const volatile void* address, int) {
    return *static_cast<const volatile unsigned char*>(address);
}
void StoreByte(volatile void* address, unsigned char value, int) {
    *static_cast<volatile unsigned char*>(address) = value;
}
void Synchronize() {}

unsigned char SetByte(volatile void* address, unsigned char value, int) {
    for (unsigned char seen = LoadByte(address, 0);;) {
        const unsigned char before = SyncSwapByte(address, seen, value);
        if (before == seen) return before;
        seen = before;
    }
}

unsigned AddToWord(volatile void* address, unsigned value, int) {
    return static_cast<unsigned>(SystemExchangeAdd(Word(address), static_cast<LONG>(value)));
}
unsigned SyncAddToWord(volatile void* address, unsigned value) {
    return static_cast<unsigned>(SystemExchangeAdd(Word(address), static_cast<LONG>(value)));
}
unsigned SyncSetWord(volatile void* address, unsigned value) {
    return static_cast<unsigned>(SystemExchange(Word(address), static_cast<LONG>(value)));
}
unsigned SyncSwapWord(volatile void* address, unsigned expected, unsigned value) {
    return static_cast<unsigned>(
        SystemCompareExchange(Word(address), static_cast<LONG>(value), static_cast<LONG>(expected)));
}

// A byte is changed as part of its word.
unsigned char SyncSwapByte(volatile void* address, unsigned char expected, unsigned char value) {
    const auto place = reinterpret_cast<ULONG_PTR>(address);
    auto* const word = reinterpret_cast<LONG*>(place & ~ULONG_PTR{3});
    const unsigned shift = 8 * (place & 3);
    const LONG mask = 0xFF << shift;
    for (;;) {
        const LONG seen = *static_cast<volatile LONG*>(word);
        const auto byte = static_cast<unsigned char>((seen & mask) >> shift);
        if (byte != expected) return byte;
        const LONG wanted = (seen & ~mask) | (static_cast<LONG>(value) << shift);
        if (SystemCompareExchange(word, wanted, seen) == seen) return byte;
    }
}
