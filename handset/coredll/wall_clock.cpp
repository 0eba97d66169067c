// The handset's date and time. They run at the handset's rate from a pair of moments that every process
// shares (ClockBaseReal, ClockBaseHandset), or else from the moment at which the process started.
#include <cstdint>

#include "handset/coredll/call_guard.h"
#include "handset/coredll/platform_call.h"
#include "handset/state/booking_lock.h"
#include "handset/state/handset_state.h"
#include "handset/state/handset_time.h"

namespace {

constexpr std::uint64_t kTicksPerMillisecond = 10000;  // of a FILETIME, 100 ns each

std::uint64_t Ticks(const FILETIME& time) {
    return static_cast<std::uint64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
}

FILETIME FileTime(std::uint64_t ticks) {
    return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
}

std::uint64_t RealNow() {
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    return Ticks(now);
}

const std::uint64_t g_processStart = RealNow();

FILETIME HandsetNow() {
    const auto baseReal = handset::StateQword(L"ClockBaseReal");
    const auto baseHandset = handset::StateQword(L"ClockBaseHandset");
    if (!baseReal || !baseHandset) {
        return FileTime(g_processStart + HandsetMilliseconds() * kTicksPerMillisecond);
    }
    // Signed: the host's clock may have been set back since.
    const auto passed = static_cast<std::int64_t>(RealNow() - *baseReal);
    return FileTime(*baseHandset + static_cast<std::uint64_t>(passed * HandsetClockRate()));
}

BOOL SetHandsetNow(const FILETIME& time) {
    const handset::BookingLock lock;
    if (handset::SetStateQword(L"ClockBaseReal", RealNow()) &&
        handset::SetStateQword(L"ClockBaseHandset", Ticks(time))) {
        return TRUE;
    }
    SetLastError(ERROR_ACCESS_DENIED);
    return FALSE;
}

}  // namespace

COREDLL_EXPORT void WINAPI DeviceGetSystemTime(SYSTEMTIME* time) {
    const coredll::CallGuard guard;
    const FILETIME now = HandsetNow();
    FileTimeToSystemTime(&now, time);
}

COREDLL_EXPORT void WINAPI DeviceGetLocalTime(SYSTEMTIME* time) {
    const coredll::CallGuard guard;
    const FILETIME local = FileTime(handset::LocalFromUniversal(Ticks(HandsetNow())));
    FileTimeToSystemTime(&local, time);
}

COREDLL_EXPORT BOOL WINAPI DeviceSetSystemTime(const SYSTEMTIME* time) {
    const coredll::CallGuard guard;
    FILETIME universal;
    return SystemTimeToFileTime(time, &universal) && SetHandsetNow(universal);
}

COREDLL_EXPORT BOOL WINAPI DeviceSetLocalTime(const SYSTEMTIME* time) {
    const coredll::CallGuard guard;
    FILETIME local;
    return SystemTimeToFileTime(time, &local) &&
           SetHandsetNow(FileTime(handset::UniversalFromLocal(Ticks(local))));
}
