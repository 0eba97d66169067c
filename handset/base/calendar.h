// Days of the Gregorian calendar, each a number: 0 is 1 January 1970, days before it are negative. Portable.
#pragma once

#include <cstdint>

namespace handset {

struct Date {
    int year = 0, month = 0, day = 0;
};

inline constexpr std::int64_t kSecondsOfDay = 86400;
// Where others begin to count.
inline constexpr std::int64_t kFirstDayOfFileTimes = -134774;  // 1 January 1601
inline constexpr std::int64_t kFirstJulianDay = -40587;        // 17 November 1858, modified Julian day 0
inline constexpr std::int64_t kFirstDayOfMovies = -24107;      // 1 January 1904
// Behind the last day of four digits.
inline constexpr std::int64_t kFirstDayOf10000 = 2932897;

[[nodiscard]] bool Exists(const Date& date);
// Of a date that exists.
[[nodiscard]] std::int64_t DayOf(const Date& date);
[[nodiscard]] Date DateOf(std::int64_t day);
// 0 is Sunday.
[[nodiscard]] int WeekdayOf(std::int64_t day);

}  // namespace handset
