// schedule, service: booked programs.
#include <windows.h>

#include <algorithm>

#include "handset/command/command.h"
#include "handset/controls/handset_clock.h"
#include "handset/controls/wait.h"
#include "handset/service/booking_service.h"
#include "handset/state/handset_state.h"

namespace panel {
namespace {

constexpr wchar_t kStopName[] = L"ServiceStop";
constexpr unsigned kStopTimeout_ms = 20000;

const wchar_t* RepeatText(handset::Repeat repeat) {
    static constexpr const wchar_t* kTexts[] = {L"once", L"every day", L"every week"};
    return kTexts[static_cast<std::size_t>(repeat)];
}

std::wstring DatedText(handset::LocalSeconds time) {
    static constexpr const wchar_t* kDays[] = {L"Sun", L"Mon", L"Tue", L"Wed", L"Thu", L"Fri", L"Sat"};
    return kDays[handset::DayOfWeek(time)] + (L" " + handset::LocalTimeText(time));
}

std::wstring NextText(const handset::AppBooking& booking, handset::LocalSeconds now) {
    const auto next = handset::NextTime(booking, now);
    if (!next) return L"never again";
    return DatedText(*next) + (*next <= now ? L" (due now)" : L"");
}

std::wstring StartedText(const handset::AppBooking& booking) {
    return booking.started ? L"last started for " + DatedText(*booking.started) : L"not started yet";
}

int Schedule(const Arguments& arguments, CConsole& console) {
    if (!arguments.empty()) return BadArguments(console, L"schedule", L"no arguments are wanted");
    const handset::LocalSeconds now = LocalNow();
    BookingList list = ReadBookings();
    const auto next = [now](const handset::AppBooking& booking) {
        return handset::NextTime(booking, now).value_or(INT64_MAX);
    };
    std::stable_sort(list.bookings.begin(), list.bookings.end(),
                     [&](const auto& one, const auto& other) { return next(one) < next(other); });
    console.Line(L"now  " + DatedText(now));
    for (const handset::AppBooking& booking : list.bookings) {
        console.Line(L"next " + NextText(booking, now) + L", " + RepeatText(booking.repeat) + L"  " +
                     booking.program + L" " + booking.commandLine + L"  " + booking.name + L", " +
                     StartedText(booking));
    }
    for (const std::wstring& name : list.unreadable) {
        console.Line(L"next never  " + name + L" cannot be read as a booking");
    }
    if (list.bookings.empty() && list.unreadable.empty()) console.Line(L"nothing is booked");
    if (!ServiceRuns()) console.Line(L"no service runs: nothing will be started until one does");
    return kDone;
}

int StopService(bool unlessBooked, CConsole& console) {
    if (unlessBooked && !ReadBookings().bookings.empty()) {
        console.Line(L"programs are booked; the service goes on");
        return kDone;
    }
    const auto open = [] {
        return handset::OwnedHandle(
            OpenEventW(EVENT_MODIFY_STATE, FALSE, handset::StateObjectName(kStopName).c_str()));
    };
    {
        const handset::OwnedHandle stop = open();
        if (!stop) return kDone;
        SetEvent(stop.get());
    }
    if (WaitUntil([&] { return !open(); }, kStopTimeout_ms)) return kDone;
    return Failure(console, L"service", L"the service did not end in 20 s");
}

int RunService(CConsole& console) {
    const handset::OwnedHandle stop(
        CreateEventW(nullptr, TRUE, FALSE, handset::StateObjectName(kStopName).c_str()));
    if (GetLastError() == ERROR_ALREADY_EXISTS) {
        console.Line(L"the service runs already");
        return kDone;
    }
    if (!stop) return Failure(console, L"service", L"the system refused");
    CBookingService(console).Run(stop.get());
    return kDone;
}

int Service(const Arguments& arguments, CConsole& console) {
    if (arguments.empty()) return RunService(console);
    const bool unlessBooked = arguments.size() == 2 && arguments[1] == L"--unless-booked";
    if (arguments[0] == L"stop" && (arguments.size() == 1 || unlessBooked)) {
        return StopService(unlessBooked, console);
    }
    return BadArguments(console, L"service", L"\"" + arguments.back() + L"\" is not understood");
}

const Command kCommands[] = {
    {L"schedule", Schedule, L"", L"lists what is booked and when it is started next", L"handset schedule",
     L"One line for each booking, the next one first: when it is started next by the handset's clock, how\n"
     L"often, the program with its command line, its name, and the time that was served last.\n"},
    {L"service", Service, L"[stop [--unless-booked]]", L"starts booked programs at their time",
     L"handset service",
     L"Runs until it is told to stop, and prints a line for each program that it starts. An open panel does\n"
     L"the same; with several at once each time is served once. A time that was missed, because no service\n"
     L"ran or the handset was off or the clock was set forward, is made up for within 60 minutes and passed\n"
     L"over later. \"stop\" ends it; with --unless-booked only when nothing is booked.\n"},
};

}  // namespace

CommandGroup ScheduleCommands() {
    return {L"Booked programs", kCommands, std::size(kCommands)};
}

}  // namespace panel
