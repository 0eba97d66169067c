#include "handset/fmdevice/sdr/rds/clock_reader.h"

#include <cmath>

#include "handset/base/calendar.h"

namespace sdr::rds {
namespace {

constexpr int kHoursOfDay = 24;
constexpr int kMinutesOfHour = 60;
// The standard has 12 hours either way (3.1.5.6); zones of 13 and 14 hours exist.
constexpr int kMostOffset_halfHours = 28;
// A group may be late by its place among the others.
constexpr double kTolerance_s = 2.0;

double Minutes(const ClockTime& time) {
    const std::int64_t day = handset::DayOf({time.year, time.month, time.day});
    return static_cast<double>((day * kHoursOfDay + time.hour) * kMinutesOfHour + time.minute);
}

// Whether both tell of the same clock.
bool Agree(const ClockTime& earlier, const ClockTime& later) {
    const double told_s = (Minutes(later) - Minutes(earlier)) * 60.0;
    return earlier.offset_min == later.offset_min &&
           std::abs(told_s - (later.at_s - earlier.at_s)) < kTolerance_s;
}

}  // namespace

void DateOfDayNumber(std::uint32_t day, ClockTime* time) {
    const handset::Date date = handset::DateOf(handset::kFirstJulianDay + day);
    time->year = date.year;
    time->month = date.month;
    time->day = date.day;
}

std::optional<ClockTime> ClockTimeOf(std::uint16_t b, std::uint16_t c, std::uint16_t d) {
    ClockTime time;
    time.hour = (c & 1) << 4 | (d >> 12 & 0xF);
    time.minute = d >> 6 & 0x3F;
    const int offset_halfHours = d & 0x1F;
    if (time.hour >= kHoursOfDay || time.minute >= kMinutesOfHour) return std::nullopt;
    if (offset_halfHours > kMostOffset_halfHours) return std::nullopt;
    time.offset_min = ((d & 0x20) != 0 ? -30 : 30) * offset_halfHours;
    const std::uint32_t day = std::uint32_t{b & 3u} << 15 | c >> 1;
    // An encoder that has no time sends zeros (3.1.5.6).
    if (day == 0) return std::nullopt;
    DateOfDayNumber(day, &time);
    return time;
}

bool CClockReader::Take(std::uint16_t b, std::uint16_t c, std::uint16_t d, bool certain, double now_s) {
    std::optional<ClockTime> time = ClockTimeOf(b, c, d);
    if (!time) return false;
    time->at_s = now_s;
    const bool believed =
        certain || (time_ && Agree(*time_, *time)) || (candidate_ && Agree(*candidate_, *time));
    candidate_ = time;
    if (believed) time_ = time;
    return believed;
}

}  // namespace sdr::rds
