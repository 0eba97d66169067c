// The rules of a booking: its times, how long it lasts, when it is in another's way, and the command line
// that it leads to. Portable.
#pragma once

#include <cstddef>
#include <cstdint>

// Room of every text of a booking, terminator included. Times of day are texts in the form "HH : mm".
inline constexpr std::size_t kBookingTextCapacity = 16;

// Minutes since midnight: the number at the text's beginning times 60 plus the one at its sixth character.
// Where there is no number it is 0; one that does not fit 32 bits becomes the nearest that does.
std::int32_t MinuteOfDay(const wchar_t* time);

// Minutes from start to end, at least 0. False when the end is the earlier one: no booking crosses midnight.
bool BookingDuration(const wchar_t* start, const wchar_t* end, std::int32_t* duration_min);

struct BookedSpan {
    std::int32_t nStart_min, nEnd_min;  // minutes since midnight
};

// The span of a booking of this length.
BookedSpan SpanOf(const wchar_t* start, std::int32_t duration_min);

// Whether a new booking is in the way of one in the list on the same day. Touching ends are; a new booking
// that begins before the other one and ends after it is not.
bool IsConflict(const BookedSpan& booking, const BookedSpan& listed);

// A channel's text in megahertz ("87.5") as the command line gives it ("8750", units of 10 kHz).
struct ChannelArgument {
    wchar_t sz[10];
};
ChannelArgument ChannelArgumentOf(const wchar_t* channel);

// "-Rec -Channel 8750 -Duration 60".
struct BookingCommandLine {
    wchar_t sz[64];
};
BookingCommandLine CommandLineOf(const wchar_t* channel, std::int32_t duration_min);
