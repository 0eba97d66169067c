#include "handset/state/app_booking.h"

#include <cwchar>
#include <iterator>

#include "handset/base/calendar.h"

namespace handset {
namespace {

constexpr LocalSeconds kMinute_s = 60;
constexpr LocalSeconds kHour_s = 60 * kMinute_s;
constexpr LocalSeconds kDay_s = kSecondsOfDay;

constexpr LocalSeconds Period(Repeat repeat) {
    return repeat == Repeat::kEveryWeek ? 7 * kDay_s : kDay_s;
}

// The last time of the booking up to `now`.
std::optional<LocalSeconds> LatestTime(const AppBooking& booking, LocalSeconds now) {
    if (now < booking.start) return std::nullopt;
    if (booking.repeat == Repeat::kOnce) return booking.start;
    const LocalSeconds period = Period(booking.repeat);
    return booking.start + (now - booking.start) / period * period;
}

// Asked at `now`. When what was served last lies a repetition ahead or more, the calendar was wrong then.
bool IsServed(const AppBooking& booking, LocalSeconds time, LocalSeconds now) {
    if (!booking.started || time > *booking.started) return false;
    return time == *booking.started || *booking.started - now < Period(booking.repeat);
}

constexpr int kFirstYear = 1601;
constexpr int kLastYear = 9999;

// The day of a time, as the calendar counts them.
constexpr std::int64_t CalendarDay(LocalSeconds time) {
    return kFirstDayOfFileTimes + time / kDay_s;
}

// Reads a number of exactly `digits` digits and what follows it; false when they are not there.
bool TakeNumber(const wchar_t*& text, int digits, wchar_t end, int* number) {
    *number = 0;
    for (int i = 0; i < digits; ++i, ++text) {
        if (*text < L'0' || *text > L'9') return false;
        *number = *number * 10 + (*text - L'0');
    }
    return *text++ == end;
}

}  // namespace

std::optional<Repeat> RepeatOf(std::uint32_t number) {
    if (number > static_cast<std::uint32_t>(Repeat::kEveryWeek)) return std::nullopt;
    return static_cast<Repeat>(number);
}

std::optional<LocalSeconds> DueTime(const AppBooking& booking, LocalSeconds now) {
    const auto time = LatestTime(booking, now);
    if (!time || IsServed(booking, *time, now) || (now - *time) / kMinute_s > kLatestStart_min)
        return std::nullopt;
    return time;
}

std::optional<LocalSeconds> NextTime(const AppBooking& booking, LocalSeconds now) {
    if (const auto due = DueTime(booking, now)) return due;
    const auto latest = LatestTime(booking, now);
    if (booking.repeat == Repeat::kOnce) {
        if (latest || IsServed(booking, booking.start, booking.start)) return std::nullopt;
        return booking.start;
    }
    const LocalSeconds period = Period(booking.repeat);
    const LocalSeconds next = latest ? *latest + period : booking.start;
    return IsServed(booking, next, next) ? next + period : next;
}

std::wstring LocalTimeText(LocalSeconds time) {
    const Date date = DateOf(CalendarDay(time));
    const LocalSeconds inDay = time % kDay_s;
    wchar_t text[64];
    std::swprintf(text, std::size(text), L"%04d-%02d-%02d %02d:%02d:%02d", date.year, date.month, date.day,
                  static_cast<int>(inDay / kHour_s), static_cast<int>(inDay % kHour_s / kMinute_s),
                  static_cast<int>(inDay % kMinute_s));
    return text;
}

std::optional<LocalSeconds> ReadLocalTime(const std::wstring& text) {
    const wchar_t* rest = text.c_str();
    Date date = {};
    int hour = 0, minute = 0, second = 0;
    if (!TakeNumber(rest, 4, L'-', &date.year) || !TakeNumber(rest, 2, L'-', &date.month) ||
        !TakeNumber(rest, 2, L' ', &date.day) || !TakeNumber(rest, 2, L':', &hour) ||
        !TakeNumber(rest, 2, L':', &minute) || !TakeNumber(rest, 2, L'\0', &second) ||
        rest != text.c_str() + text.size() + 1) {
        return std::nullopt;
    }
    const bool exists = date.year >= kFirstYear && date.year <= kLastYear && Exists(date) && hour < 24 &&
                        minute < 60 && second < 60;
    if (!exists) return std::nullopt;
    return (DayOf(date) - kFirstDayOfFileTimes) * kDay_s + hour * kHour_s + minute * kMinute_s + second;
}

int DayOfWeek(LocalSeconds time) {
    return WeekdayOf(CalendarDay(time));
}

std::wstring BookingName(std::uint32_t number) {
    wchar_t text[64];
    std::swprintf(text, std::size(text), L"RunAppAtTime-%010u", static_cast<unsigned>(number));
    return text;
}

}  // namespace handset
