// A program that is booked for a time, and when it is to be started. Portable: all times are seconds of the
// handset's local time since 1 January 1601, so that they follow the clock that the user sees.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace handset {

// Where bookings are kept: a key of the device's registry below HKEY_LOCAL_MACHINE, one subkey a booking,
// named by the booking's name. Times are texts such as "2026-11-23 10:00:00".
inline constexpr wchar_t kBookingsKey[] = L"System\\Notifications";
inline constexpr wchar_t kBookingProgram[] = L"Application";
inline constexpr wchar_t kBookingCommandLine[] = L"CommandLine";
inline constexpr wchar_t kBookingStart[] = L"Start";
inline constexpr wchar_t kBookingRepeat[] = L"Repeat";
inline constexpr wchar_t kBookingStarted[] = L"Started";  // missing before the first start
// A value of the key itself: the number of the last booking, so that no name is given twice.
inline constexpr wchar_t kBookingNumber[] = L"LastNumber";

// The numbers are those of RunAppAtTimeEx.
enum class Repeat : std::uint32_t { kOnce = 0, kEveryDay = 1, kEveryWeek = 2 };

using LocalSeconds = std::int64_t;

struct AppBooking {
    std::wstring name, program, commandLine;
    LocalSeconds start = 0;  // the first time
    Repeat repeat = Repeat::kOnce;
    std::optional<LocalSeconds> started;  // the time that was last served
};

// A time that was missed by more than these whole minutes is passed over. An hour, so that what is booked for
// the hour that daylight saving leaves out is started when that hour would have ended.
inline constexpr int kLatestStart_min = 60;

std::optional<Repeat> RepeatOf(std::uint32_t number);

// The time at which the program ought to be started now: the last one up to `now`, unless it has been served
// or was missed by too much. After the clock was set back to less than a repetition before the time that was
// served last, neither that one nor one before it is served again.
std::optional<LocalSeconds> DueTime(const AppBooking& booking, LocalSeconds now);
// The time that is served next: the one that is due, or the first after `now`. Nothing when there is none.
std::optional<LocalSeconds> NextTime(const AppBooking& booking, LocalSeconds now);

// "2026-11-23 10:00:00" and back; nothing for any other text, or for a day or time that does not exist.
std::wstring LocalTimeText(LocalSeconds time);
std::optional<LocalSeconds> ReadLocalTime(const std::wstring& text);
// 0 = Sunday.
int DayOfWeek(LocalSeconds time);

// The name of the booking with this number: at least 20 characters.
std::wstring BookingName(std::uint32_t number);

}  // namespace handset
