#include "handset/fmdevice/sdr/rds/clock_reader.h"

#include <cmath>

namespace sdr::rds {
namespace {

constexpr int kHoursOfDay = 24;
constexpr int kMinutesOfHour = 60;
// The standard has 12 hours either way (3.1.5.6); zones of 13 and 14 hours exist.
constexpr int kMostOffset_halfHours = 28;
// A group may be late by its place among the others.
constexpr double kTolerance_s = 2.0;

// Days since 1 March of year 0, by whole eras of 400 years.
std::int64_t DayOf(const ClockTime& time) {
    const std::int64_t year = time.month <= 2 ? time.year - 1 : time.year;
    const std::int64_t month = (time.month + 9) % 12;
    return 365 * year + year / 4 - year / 100 + year / 400 + (153 * month + 2) / 5 + time.day - 1;
}

double Minutes(const ClockTime& time) {
    return static_cast<double>(DayOf(time) * kHoursOfDay * kMinutesOfHour + time.hour * kMinutesOfHour +
                               time.minute);
}

// Whether both tell of the same clock.
bool Agree(const ClockTime& earlier, const ClockTime& later) {
    const double told_s = (Minutes(later) - Minutes(earlier)) * 60.0;
    return earlier.offset_min == later.offset_min &&
           std::abs(told_s - (later.at_s - earlier.at_s)) < kTolerance_s;
}

}  // namespace

void DateOfDayNumber(std::uint32_t day, ClockTime* time) {
    // Day 0 is 17 November 1858; counted from 1 March of year 0.
    constexpr std::int64_t kDayZero = 678881;
    constexpr std::int64_t kEra = 146097;  // days of 400 years
    const std::int64_t days = kDayZero + day;
    const std::int64_t era = days / kEra;
    const std::int64_t ofEra = days % kEra;
    const std::int64_t yearOfEra = (ofEra - ofEra / 1460 + ofEra / 36524 - ofEra / 146096) / 365;
    const std::int64_t ofYear = ofEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t month = (5 * ofYear + 2) / 153;
    time->day = static_cast<int>(ofYear - (153 * month + 2) / 5 + 1);
    time->month = static_cast<int>(month < 10 ? month + 3 : month - 9);
    time->year = static_cast<int>(yearOfEra + era * 400 + (time->month <= 2 ? 1 : 0));
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
