// The platform's side of the calls in windows.h: a screen of any size, timers, and a clock that only moves
// when a test lets it.
#pragma once

#include <windows.h>

#include <set>
#include <vector>

namespace platform {

struct Tick {
    UINT_PTR id;
    DWORD tick_ms;
};

void UseScreen(int cx, int cy);
// The ids of the timers that run.
std::set<UINT_PTR> Timers();
// Stops every timer and forgets its ticks.
void StopTimers();
// Lets the time go on by one millisecond; the timers that are due tick.
void Elapse1ms();
// Every tick since the last StopTimers.
const std::vector<Tick>& Ticks();

}  // namespace platform
