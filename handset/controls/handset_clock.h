// The clock as the phone shows it and as people set it: the local time, and how fast it goes.
#pragma once

#include <cstdint>

#include "handset/state/app_booking.h"

namespace panel {

// Handset seconds per real second, as the time that is shown goes on.
std::uint32_t ShownRate();

// The local time that the handset shows now.
handset::LocalSeconds LocalNow();
// Real milliseconds until the handset shows a local time, at most `limit_ms`; 0 when it has passed.
std::uint32_t RealTimeUntil_ms(handset::LocalSeconds time, std::uint32_t limit_ms);

// Goes on from a local time at the present rate. False when the user's registry refuses.
bool SetClockTime(handset::LocalSeconds time);

}  // namespace panel
