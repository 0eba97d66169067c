#include "schedule/booking_add.h"

#include <aygshell.h>
#include <strsafe.h>

#include <cwchar>

#include "resources/resource_ids.h"
#include "schedule/booking_list.h"
#include "schedule/day_buttons.h"
#include "shell/settings_key.h"
#include "shell/texts.h"

namespace {

constexpr WCHAR kProgram[] = L"\\Windows\\UI.exe";
constexpr int kMessageCapacity = 320;

struct Booking {
    WCHAR szChannel[kBookingTextCapacity];
    WCHAR szStart[kBookingTextCapacity];
    WCHAR szEnd[kBookingTextCapacity];
    std::int32_t nDuration_min;
};

Booking ReadFields(HWND dialog) {
    Booking booking = {};
    GetDlgItemTextW(dialog, IDC_SCHEDULE_CHANNEL, booking.szChannel, ARRAYSIZE(booking.szChannel));
    GetDlgItemTextW(dialog, IDC_SCHEDULE_START, booking.szStart, ARRAYSIZE(booking.szStart));
    GetDlgItemTextW(dialog, IDC_SCHEDULE_END, booking.szEnd, ARRAYSIZE(booking.szEnd));
    return booking;
}

bool CheckFields(HWND dialog, const DayButtons& days, Booking& booking) {
    if (!days.AnySelected()) {
        ShowText(dialog, IDS_SCHEDULE_NO_DAY, L"FM", MB_OK);
        return false;
    }
    if (wcscmp(booking.szStart, booking.szEnd) == 0) {
        ShowText(dialog, IDS_SCHEDULE_SAME_TIME, L"FM", MB_OK);
        return false;
    }
    if (!BookingDuration(booking.szStart, booking.szEnd, &booking.nDuration_min)) {
        ShowText(dialog, IDS_SCHEDULE_END_FIRST, L"WARNING", MB_ICONEXCLAMATION);
        return false;
    }
    NKDbgPrintfW(L"PreRecord total time is\t%d min\r\n", booking.nDuration_min);
    return true;
}

// Compares with the rows of the day one after another, and tells the user of the first that is in the way.
bool IsDayFree(HWND dialog, const Booking& booking, const DayName& day) {
    const BookedSpan span = SpanOf(booking.szStart, booking.nDuration_min);
    const int count = BookingCount(dialog);
    for (int row = 0; row < count; ++row) {
        const ScheduleEntry entry = BookingAt(dialog, row);
        if (wcscmp(entry.szWeek, day.sz) != 0) continue;
        const BookedSpan listed = {MinuteOfDay(entry.szStartTime), MinuteOfDay(entry.szEndTime)};
        NKDbgPrintfW(
            L"Insert_Start  time is %d ,Insert_End  time is %d, LV_Start time is %d , LV_End time is %d\r\n",
            span.nStart_min, span.nEnd_min, listed.nStart_min, listed.nEnd_min);
        if (!IsConflict(span, listed)) continue;
        WCHAR message[kMessageCapacity] = L"";
        StringCchPrintfW(message, kMessageCapacity, ResourceText(IDS_SCHEDULE_CONFLICT).sz, day.sz,
                         booking.szStart, booking.szEnd);
        MessageBoxW(dialog, message, L"Warning", MB_OK);
        return false;
    }
    return true;
}

// Kept: on today's day of the week it is today, even when the time has passed.
SYSTEMTIME FirstTime(const WCHAR* start, int day) {
    constexpr std::uint64_t kDay_100ns = 864000000000;
    SYSTEMTIME time = {};
    GetLocalTime(&time);
    const std::int32_t minute = MinuteOfDay(start);
    time.wHour = static_cast<WORD>(minute / 60);
    time.wMinute = static_cast<WORD>(minute % 60);
    time.wSecond = 0;
    time.wMilliseconds = 0;
    for (int tried = 0; time.wDayOfWeek != day && tried < kDays; ++tried) {
        FILETIME file = {};
        if (!SystemTimeToFileTime(&time, &file)) break;
        const std::uint64_t next =
            (std::uint64_t{file.dwHighDateTime} << 32 | file.dwLowDateTime) + kDay_100ns;
        file = {static_cast<DWORD>(next), static_cast<DWORD>(next >> 32)};
        FileTimeToSystemTime(&file, &time);
    }
    return time;
}

ScheduleEntry EntryOf(const Booking& booking, const DayName& day) {
    ScheduleEntry entry = {};
    StringCchCopyW(entry.szChannel, ARRAYSIZE(entry.szChannel), booking.szChannel);
    StringCchCopyW(entry.szWeek, ARRAYSIZE(entry.szWeek), day.sz);
    StringCchCopyW(entry.szStartTime, ARRAYSIZE(entry.szStartTime), booking.szStart);
    StringCchCopyW(entry.szEndTime, ARRAYSIZE(entry.szEndTime), booking.szEnd);
    return entry;
}

// The entry is written whatever the platform answers.
void Register(const Booking& booking, int day, ScheduleEntry& entry) {
    SYSTEMTIME time = FirstTime(booking.szStart, day);
    RunAppAtTimeEx(kProgram, CommandLineOf(booking.szChannel, booking.nDuration_min).sz, &time,
                   RUNAPP_EVERY_WEEK, entry.szName, ARRAYSIZE(entry.szName));
    WriteScheduleEntry(HKEY_CLASSES_ROOT, kSettingsKey, entry);
}

}  // namespace

void AddBookings(HWND dialog, const DayButtons& days) {
    Booking booking = ReadFields(dialog);
    if (!CheckFields(dialog, days, booking)) return;
    int position = 0;
    for (int day = 0; day < kDays; ++day) {
        if (!days.bSelected[day]) continue;
        const DayName name(day);
        if (!IsDayFree(dialog, booking, name)) return;
        ScheduleEntry entry = EntryOf(booking, name);
        if (!InsertBooking(dialog, position, entry)) return;
        ++position;
        Register(booking, day, entry);
    }
}
