// Clock time and date from group 4A (IEC 62106, 3.1.5.6 and annex G). Portable.
#pragma once

#include <cstdint>
#include <optional>

#include "handset/fmdevice/sdr/rds/station.h"

namespace sdr::rds {

// The day of a modified Julian day number in the Gregorian calendar (annex G).
void DateOfDayNumber(std::uint32_t day, ClockTime* time);
// The time that the 5 low bits of block 2 and blocks 3 and 4 give; nothing when it is none.
[[nodiscard]] std::optional<ClockTime> ClockTimeOf(std::uint16_t b, std::uint16_t c, std::uint16_t d);

class CClockReader {
  public:
    void Restart() { *this = CClockReader(); }
    // A group as it was received, with the time of its end, at which the minute begins. True when it is
    // believed.
    bool Take(std::uint16_t b, std::uint16_t c, std::uint16_t d, bool certain, double now_s);
    const std::optional<ClockTime>& Time() const { return time_; }

  private:
    std::optional<ClockTime> time_, candidate_;
};

}  // namespace sdr::rds
