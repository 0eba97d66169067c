// The handset's clock: how fast it runs and what it shows. Its programs read the rate when they start.
#pragma once

#include <cstdint>

#include "handset/state/app_booking.h"

namespace panel {

inline constexpr std::uint32_t kLargestClockRate =
    3600;  // handset seconds per real second; the smallest is 1

// A moment when real and handset time were known: FILETIME units of 100 ns, UTC.
struct ClockBase {
    std::uint64_t real;
    std::uint64_t handset;
    std::uint32_t rate;
};

// Handset time at a real time, not before the base.
std::uint64_t HandsetTimeAt(const ClockBase& base, std::uint64_t real);

// The clock as the state has it; without a base it shows real time now.
ClockBase CurrentClock();
std::uint64_t RealTimeNow();

// The local time that the handset shows now.
handset::LocalSeconds LocalNow();
// Real milliseconds until the handset shows a local time, at most `limit_ms`; 0 when it has passed.
std::uint32_t RealTimeUntil_ms(handset::LocalSeconds time, std::uint32_t limit_ms);

// Without a base every program's clock runs from its own start; this gives them one to share.
bool FixClockBase();
// Goes on from a local time at the present rate.
bool SetClockTime(handset::LocalSeconds time);

// Goes on at another rate from the time that it shows now. False when the user's registry refuses.
bool SetClockRate(std::uint32_t rate);
// Back to real time at the rate 1.
bool ResetClock();

}  // namespace panel
