// The handset's clock: how fast it runs and what it shows. Its programs read the rate when they start.
#pragma once

#include <cstdint>

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

// Goes on at another rate from the time that it shows now. False when the user's registry refuses.
bool SetClockRate(std::uint32_t rate);
// Back to real time at the rate 1.
bool ResetClock();

}  // namespace panel
