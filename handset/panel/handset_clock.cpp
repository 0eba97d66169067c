// The handset's clock, kept in the handset's state.
#include "handset/panel/handset_clock.h"

#include <windows.h>

#include "handset/state/booking_lock.h"
#include "handset/state/handset_state.h"
#include "handset/state/handset_time.h"

namespace panel {
namespace {

constexpr std::uint64_t kSecond_100ns = 10000000;
constexpr std::uint64_t kMillisecond_100ns = 10000;

// The two values belong together: who holds the lock reads them as they are meant.
bool WriteBase(std::uint64_t real, std::uint64_t shown) {
    return handset::SetStateQword(L"ClockBaseReal", real) &&
           handset::SetStateQword(L"ClockBaseHandset", shown);
}

std::uint64_t LocalTicksNow() {
    return handset::LocalFromUniversal(HandsetTimeAt(CurrentClock(), RealTimeNow()));
}

}  // namespace

std::uint64_t HandsetTimeAt(const ClockBase& base, std::uint64_t real) {
    return base.handset + (real - base.real) * base.rate;
}

std::uint64_t RealTimeNow() {
    FILETIME now = {};
    GetSystemTimeAsFileTime(&now);
    return static_cast<std::uint64_t>(now.dwHighDateTime) << 32 | now.dwLowDateTime;
}

ClockBase CurrentClock() {
    const std::uint64_t now = RealTimeNow();
    const auto real = handset::StateQword(L"ClockBaseReal");
    const auto shown = handset::StateQword(L"ClockBaseHandset");
    const std::uint32_t rate = handset::StateDword(L"ClockRate", 1);
    if (!real || !shown || *real > now) return {now, now, rate};
    return {*real, *shown, rate};
}

bool SetClockRate(std::uint32_t rate) {
    const handset::BookingLock lock;
    const ClockBase before = CurrentClock();
    const std::uint64_t now = RealTimeNow();
    return WriteBase(now, HandsetTimeAt(before, now)) && handset::SetStateDword(L"ClockRate", rate);
}

handset::LocalSeconds LocalNow() {
    return static_cast<handset::LocalSeconds>(LocalTicksNow() / kSecond_100ns);
}

std::uint32_t RealTimeUntil_ms(handset::LocalSeconds time, std::uint32_t limit_ms) {
    const std::uint64_t now = LocalTicksNow();
    const std::uint64_t then = static_cast<std::uint64_t>(time) * kSecond_100ns;
    if (then <= now) return 0;
    const std::uint64_t real_ms = (then - now) / CurrentClock().rate / kMillisecond_100ns + 1;
    return real_ms < limit_ms ? static_cast<std::uint32_t>(real_ms) : limit_ms;
}

bool FixClockBase() {
    if (handset::StateQword(L"ClockBaseReal") && handset::StateQword(L"ClockBaseHandset")) return true;
    const handset::BookingLock lock;
    const std::uint64_t now = RealTimeNow();
    return WriteBase(now, now);
}

bool SetClockTime(handset::LocalSeconds time) {
    const handset::BookingLock lock;
    return WriteBase(RealTimeNow(),
                     handset::UniversalFromLocal(static_cast<std::uint64_t>(time) * kSecond_100ns));
}

bool ResetClock() {
    const handset::BookingLock lock;
    handset::DeleteStateValue(L"ClockBaseReal");
    handset::DeleteStateValue(L"ClockBaseHandset");
    return handset::SetStateDword(L"ClockRate", 1);
}

}  // namespace panel
