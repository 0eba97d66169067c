// The handset's clock as all of its programs share it: one moment, in one value of the state, changed by one
// program at a time. Host code only.
#pragma once

#include <cstdint>
#include <optional>

#include "handset/base/clock_moment.h"

namespace handset {

// The host's time.
std::uint64_t RealTime();
// The rate as it was written by hand, or is given in the environment.
std::uint32_t ClockRate();
// From where the date and the time of every program run, and at what rate its ticks, waits and timers go.
// Nothing before anybody has set the clock: then each program shows the host's time at its start, and goes on
// from there at ClockRate().
std::optional<ClockMoment> SharedMoment();
// The rate by which the handset goes now. One in the environment is its program's own and never changes.
std::uint32_t RateNow();
// The same for a program that starts, which takes over what was written by hand since the moment.
std::uint32_t RateAtStart();

// A new rate reaches the running programs at once. The following are false when the user's registry refuses,
// or another program holds the clock for too long. Goes on from a universal time at the present rate.
bool SetShownTime(std::uint64_t shown);
// Goes on at another rate from the time that is shown now.
bool SetClockRate(std::uint32_t rate);
// Back to the host's time at the rate 1.
bool ResetClock();
// Gives all programs a moment to share when there is none, and takes over a rate that was written by hand.
bool FixClock();

}  // namespace handset
