#include "schedule/booking_rule.h"

#include <strsafe.h>

#include <algorithm>
#include <cwchar>
#include <iterator>
#include <limits>

namespace {

constexpr std::size_t kMinutesPosition = 5;
constexpr std::int32_t kMinutesOfHour = 60;
constexpr std::int32_t kMinutesOfDay = 24 * kMinutesOfHour;

bool IsDigit(wchar_t c) {
    return c >= L'0' && c <= L'9';
}

std::int64_t LeadingNumber(const wchar_t* text) {
    constexpr std::int64_t kLargest = std::numeric_limits<std::int32_t>::max();
    while (*text == L' ') ++text;
    const bool negative = *text == L'-';
    if (negative) ++text;
    std::int64_t number = 0;
    for (; IsDigit(*text); ++text) number = std::min(number * 10 + (*text - L'0'), kLargest);
    return negative ? -number : number;
}

std::int64_t HoursOf(const wchar_t* time) {
    return LeadingNumber(time);
}

std::int64_t MinutesOf(const wchar_t* time) {
    return std::wcslen(time) <= kMinutesPosition ? 0 : LeadingNumber(time + kMinutesPosition);
}

// A key that was edited by hand may hold any number.
std::int32_t Fitting(std::int64_t number) {
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(
        number, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()));
}

bool IsWithin(std::int32_t moment, const BookedSpan& span) {
    return span.nStart_min <= moment && moment <= span.nEnd_min;
}

}  // namespace

std::int32_t MinuteOfDay(const wchar_t* time) {
    return Fitting(HoursOf(time) * kMinutesOfHour + MinutesOf(time));
}

bool BookingDuration(const wchar_t* start, const wchar_t* end, std::int32_t* duration_min) {
    std::int64_t hours = HoursOf(end) - HoursOf(start);
    if (hours < 0) return false;
    std::int64_t minutes = MinutesOf(end) - MinutesOf(start);
    if (minutes < 0) {
        --hours;
        minutes += kMinutesOfHour;
    }
    if (hours < 0) return false;
    *duration_min = Fitting(hours * kMinutesOfHour + minutes);
    return true;
}

BookedSpan SpanOf(const wchar_t* start, std::int32_t duration_min) {
    const std::int32_t begin = MinuteOfDay(start);
    const std::int64_t end = std::int64_t{begin} + duration_min;
    return {begin, Fitting(end > kMinutesOfDay ? end - kMinutesOfDay : end)};
}

bool IsConflict(const BookedSpan& booking, const BookedSpan& listed) {
    const bool listedTurned = listed.nStart_min >= listed.nEnd_min;
    // Kept: a new booking that strictly contains a listed one has neither end within it and is accepted; one
    // that begins in the minute when the other ends is refused.
    const bool anEndWithin = IsWithin(booking.nStart_min, listed) || IsWithin(booking.nEnd_min, listed);
    if (booking.nStart_min >= booking.nEnd_min) return listedTurned || anEndWithin;
    if (!listedTurned) return anEndWithin;
    // What is listed runs from its start over midnight to its end.
    return booking.nStart_min >= listed.nStart_min || booking.nStart_min <= listed.nEnd_min ||
           booking.nEnd_min >= listed.nStart_min || booking.nEnd_min <= listed.nEnd_min;
}

// Kept: the digits are put together without being counted, so that a text with no decimal or with two leads
// to a number that the tuner refuses.
ChannelArgument ChannelArgumentOf(const wchar_t* channel) {
    ChannelArgument argument = {};
    constexpr std::size_t kMost = std::size(argument.sz) - 1;
    std::size_t length = 0;
    bool point = false;
    for (; *channel != L'\0' && length < kMost; ++channel) {
        if (*channel != L'.') {
            argument.sz[length++] = *channel;
        } else if (point) {
            break;
        } else {
            point = true;
        }
    }
    if (length < kMost) argument.sz[length] = L'0';
    return argument;
}

BookingCommandLine CommandLineOf(const wchar_t* channel, std::int32_t duration_min) {
    BookingCommandLine line = {};
    StringCchPrintfW(line.sz, std::size(line.sz), L"-Rec -Channel %s -Duration %d",
                     ChannelArgumentOf(channel).sz, static_cast<int>(duration_min));
    return line;
}
