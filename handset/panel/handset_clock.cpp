// The handset's clock, kept in the handset's state.
#include "handset/panel/handset_clock.h"

#include <windows.h>

#include "handset/state/handset_state.h"

namespace panel {

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
    const ClockBase before = CurrentClock();
    const std::uint64_t now = RealTimeNow();
    return handset::SetStateQword(L"ClockBaseReal", now) &&
           handset::SetStateQword(L"ClockBaseHandset", HandsetTimeAt(before, now)) &&
           handset::SetStateDword(L"ClockRate", rate);
}

bool ResetClock() {
    handset::DeleteStateValue(L"ClockBaseReal");
    handset::DeleteStateValue(L"ClockBaseHandset");
    return handset::SetStateDword(L"ClockRate", 1);
}

}  // namespace panel
