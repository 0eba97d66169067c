// Waiting for the next time, and starting programs.
#include "handset/service/booking_service.h"

#include <algorithm>
#include <iterator>

#include "handset/base/module_edge.h"
#include "handset/base/registry_watch.h"
#include "handset/controls/handset_clock.h"
#include "handset/controls/handset_desktop.h"
#include "handset/controls/radio_process.h"
#include "handset/controls/switches.h"
#include "handset/state/booking_lock.h"
#include "handset/state/handset_clock.h"
#include "handset/state/handset_state.h"
#include "handset/state/power_manager.h"

namespace panel {
namespace {

// The host's clock may be set without a word, so the handset's is looked at this often at least.
constexpr DWORD kLongestWait_ms = 1000;
constexpr DWORD kKeptAwake_ms = 15000;
constexpr DWORD kResetPeriod_ms = 300;
// While a radio that was started is on its way to its window, this often.
constexpr DWORD kTurnPeriod_ms = 50;
constexpr wchar_t kRunsName[] = L"ServiceRuns";

// A handset that is switched off starts nothing; what is due then is made up for when it is on again.
bool IsSwitchedOn() {
    static constexpr const wchar_t* kOff[] = {L"off", L"shutdown", L"critical", L"boot", L"reset", L"reboot"};
    const std::wstring state = PowerState();
    return std::none_of(std::begin(kOff), std::end(kOff),
                        [&state](const wchar_t* name) { return _wcsicmp(state.c_str(), name) == 0; });
}

}  // namespace

// With its display off.
void CBookingService::Wake() {
    if (_wcsicmp(PowerState().c_str(), L"suspend") != 0) return;
    SetPowerState(L"unattended");
    awakeUntil_ms_ = GetTickCount64() + kKeptAwake_ms;
}

void CBookingService::KeepAwake() {
    const ULONGLONG now = GetTickCount64();
    if (now >= awakeUntil_ms_ || now - lastReset_ms_ < kResetPeriod_ms) return;
    handset::ResetIdleTimer();
    lastReset_ms_ = now;
}

void CBookingService::Say(const handset::AppBooking& booking, const std::wstring& outcome) {
    console_.Line(handset::LocalTimeText(LocalNow()) + L"  " + booking.name + L"  " + booking.program + L" " +
                  booking.commandLine + L"  " + outcome);
}

bool CBookingService::Serve(const handset::AppBooking& due) {
    std::optional<CRadioTurn> turn;
    if (IsRadio(due.program) && !turn.emplace(0)) return false;
    std::optional<handset::AppBooking> booking;
    {
        // Another service may have served it since, or the user deleted it; and the clock is not set
        // meanwhile.
        const handset::CBookingLock lock;
        if (!lock) return false;
        booking = ReadBooking(due.name);
        const auto time = booking ? handset::DueTime(*booking, LocalNow()) : std::nullopt;
        if (!time || !MarkStarted(due.name, *time)) return true;
    }
    Wake();
    const RadioStart started = LaunchProgram(booking->program, booking->commandLine);
    Say(*booking, started.process ? L"started, process " + std::to_wstring(started.processId)
                                  : L"not started: " + started.fault);
    return true;
}

bool CBookingService::ServeDue() {
    if (!IsSwitchedOn()) return true;
    const handset::LocalSeconds now = LocalNow();
    std::vector<std::pair<handset::LocalSeconds, const handset::AppBooking*>> due;
    for (const handset::AppBooking& booking : list_.bookings) {
        if (const auto time = handset::DueTime(booking, now)) due.emplace_back(*time, &booking);
    }
    // By their times, and those of one time in the order in which they were booked.
    std::stable_sort(due.begin(), due.end(),
                     [](const auto& one, const auto& other) { return one.first < other.first; });
    const bool all =
        std::all_of(due.begin(), due.end(), [this](const auto& row) { return Serve(*row.second); });
    if (!due.empty()) list_ = ReadBookings();
    return all;
}

DWORD CBookingService::RealTimeToNext_ms() const {
    const handset::LocalSeconds now = LocalNow();
    DWORD wait_ms = GetTickCount64() < awakeUntil_ms_ ? kResetPeriod_ms : kLongestWait_ms;
    for (const handset::AppBooking& booking : list_.bookings) {
        const auto next = handset::NextTime(booking, now);
        if (next && *next > now) wait_ms = std::min<DWORD>(wait_ms, RealTimeUntil_ms(*next, kLongestWait_ms));
    }
    return wait_ms;
}

void CBookingService::Run(HANDLE stop) {
    // Named, so that others see that a service runs; it goes with the process.
    const handset::OwnedHandle sign(
        CreateEventW(nullptr, TRUE, FALSE, handset::StateObjectName(kRunsName).c_str()));
    using handset::CRegistryWatch;
    CRegistryWatch bookings(BookingsHostKey(), CRegistryWatch::Depth::kTree, CRegistryWatch::Missing::kMade);
    CRegistryWatch state(handset::StateKeyPath(), CRegistryWatch::Depth::kKey,
                         CRegistryWatch::Missing::kMade);
    const HANDLE events[] = {stop, bookings.KeyEvent(), bookings.ParentEvent(), state.KeyEvent(),
                             state.ParentEvent()};
    DWORD wait_ms = 0;
    do {
        if (!bookings.Unchanged()) list_ = ReadBookings();
        // What it tells of is read below in any case.
        (void)state.Unchanged();
        handset::FixClock();
        wait_ms = ServeDue() ? RealTimeToNext_ms() : kTurnPeriod_ms;
        KeepAwake();
    } while (WaitForMultipleObjects(static_cast<DWORD>(std::size(events)), events, FALSE, wait_ms) !=
             WAIT_OBJECT_0);
}

CBackgroundService::CBackgroundService(CConsole& console)
    : stop_(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      service_(console),
      thread_(handset::WorkerThread(
          [this] {
              JoinHandsetDesktop();
              service_.Run(stop_.get());
          },
          [this] { return WaitForSingleObject(stop_.get(), 0) == WAIT_TIMEOUT; })) {}

CBackgroundService::~CBackgroundService() {
    SetEvent(stop_.get());
    thread_.join();
}

bool ServiceRuns() {
    return static_cast<bool>(
        handset::OwnedHandle(OpenEventW(SYNCHRONIZE, FALSE, handset::StateObjectName(kRunsName).c_str())));
}

}  // namespace panel
