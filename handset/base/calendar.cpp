#include "handset/base/calendar.h"

#include <chrono>

namespace handset {
namespace {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr year_month_day Calendar(const Date& date) {
    return {std::chrono::year{date.year}, std::chrono::month{static_cast<unsigned>(date.month)},
            std::chrono::day{static_cast<unsigned>(date.day)}};
}

constexpr std::int64_t Number(const Date& date) {
    return sys_days{Calendar(date)}.time_since_epoch().count();
}

constexpr sys_days Day(std::int64_t day) {
    return sys_days{days{static_cast<days::rep>(day)}};
}

static_assert(Number({1601, 1, 1}) == kFirstDayOfFileTimes);
static_assert(Number({1858, 11, 17}) == kFirstJulianDay);
static_assert(Number({1904, 1, 1}) == kFirstDayOfMovies);
static_assert(Number({10000, 1, 1}) == kFirstDayOf10000);
static_assert(days{1} == std::chrono::seconds{kSecondsOfDay});

}  // namespace

bool Exists(const Date& date) {
    return Calendar(date).ok();
}

std::int64_t DayOf(const Date& date) {
    return Number(date);
}

Date DateOf(std::int64_t day) {
    const year_month_day date{Day(day)};
    return {static_cast<int>(date.year()), static_cast<int>(static_cast<unsigned>(date.month())),
            static_cast<int>(static_cast<unsigned>(date.day()))};
}

int WeekdayOf(std::int64_t day) {
    return static_cast<int>(std::chrono::weekday{Day(day)}.c_encoding());
}

}  // namespace handset
