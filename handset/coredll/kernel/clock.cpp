// The handset's clock: milliseconds since the process started, at the handset's rate, and what a handset
// time-out takes in real time.
#include <cstdint>

#include "handset/base/module_edge.h"
#include "handset/coredll/kernel/call_guard.h"
#include "handset/coredll/kernel/platform_call.h"
#include "handset/state/handset_clock.h"

namespace {

std::uint64_t Microseconds() {
    static const std::uint64_t frequency = [] {
        LARGE_INTEGER value;
        QueryPerformanceFrequency(&value);
        return static_cast<std::uint64_t>(value.QuadPart);
    }();
    LARGE_INTEGER now;
    QueryPerformanceCounter(&now);
    const auto count = static_cast<std::uint64_t>(now.QuadPart);
    return count / frequency * 1000000 + count % frequency * 1000000 / frequency;
}

// Taken when the DLL is loaded: with a rate of 1 the handset's ticks are the host's.
const std::uint64_t g_start_us = Microseconds();
const DWORD g_startTick_ms = GetTickCount();

}  // namespace

COREDLL_EXPORT DWORD WINAPI HandsetClockRate(void) try {
    static const DWORD rate = handset::ClockRate();
    return rate;
} catch (...) {
    return handset::EdgeAnswer<DWORD>(1);
}

COREDLL_EXPORT std::uint64_t WINAPI HandsetMilliseconds(void) try {
    return (Microseconds() - g_start_us) * HandsetClockRate() / 1000;
} catch (...) {
    return handset::EdgeAnswer<std::uint64_t>();
}

COREDLL_EXPORT DWORD WINAPI HandsetRealTimeout(DWORD handset_ms) try {
    if (handset_ms == INFINITE) return INFINITE;
    const DWORD rate = HandsetClockRate();
    return handset_ms / rate + (handset_ms % rate != 0 ? 1 : 0);
} catch (...) {
    return handset::EdgeAnswer(handset_ms);
}

COREDLL_EXPORT DWORD WINAPI DeviceGetTickCount(void) try {
    const coredll::CallGuard guard;
    return g_startTick_ms + static_cast<DWORD>(HandsetMilliseconds());
} catch (...) {
    return handset::EdgeAnswer<DWORD>();
}
