// Waiting for the next time, and starting programs.
#include "handset/service/booking_service.h"

#include <algorithm>

#include "handset/base/module_edge.h"
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

// Signals when something under a key of the state changes.
class KeyWatch {
  public:
    KeyWatch(const std::wstring& path, bool subtree)
        : event_(CreateEventW(nullptr, FALSE, FALSE, nullptr)), path_(path), subtree_(subtree) {
        Arm();
    }
    ~KeyWatch() { Close(); }
    KeyWatch(const KeyWatch&) = delete;
    KeyWatch& operator=(const KeyWatch&) = delete;

    // Call it before reading what is watched. The key is made when it is missing, or nobody would tell of it.
    void Arm() {
        constexpr DWORD kWhat = REG_NOTIFY_CHANGE_NAME | REG_NOTIFY_CHANGE_LAST_SET;
        Close();
        // The host signals a watch that is given up.
        ResetEvent(event_.get());
        RegCreateKeyExW(HKEY_CURRENT_USER, path_.c_str(), 0, nullptr, 0, KEY_NOTIFY | KEY_QUERY_VALUE,
                        nullptr, &key_, nullptr);
        if (key_ != nullptr) RegNotifyChangeKeyValue(key_, subtree_, kWhat, event_.get(), TRUE);
    }
    // A key that was deleted says nothing any more, also when another one of its name has come.
    [[nodiscard]] bool IsDeaf() const {
        return key_ == nullptr ||
               RegQueryInfoKeyW(key_, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                nullptr, nullptr, nullptr) != ERROR_SUCCESS;
    }
    [[nodiscard]] HANDLE event() const { return event_.get(); }

  private:
    void Close() {
        if (key_ != nullptr) RegCloseKey(key_);
        key_ = nullptr;
    }

    OwnedHandle event_;
    std::wstring path_;
    HKEY key_ = nullptr;
    bool subtree_;
};

// A handset that is switched off starts nothing; what is due then is made up for when it is on again.
bool IsSwitchedOn() {
    static constexpr const wchar_t* kOff[] = {L"off", L"shutdown", L"critical", L"boot", L"reset", L"reboot"};
    const std::wstring state = PowerState();
    return std::none_of(std::begin(kOff), std::end(kOff),
                        [&state](const wchar_t* name) { return _wcsicmp(state.c_str(), name) == 0; });
}

}  // namespace

// With its display off.
void BookingService::Wake() {
    if (_wcsicmp(PowerState().c_str(), L"suspend") != 0) return;
    SetPowerState(L"unattended");
    awakeUntil_ms_ = GetTickCount64() + kKeptAwake_ms;
}

void BookingService::KeepAwake() {
    const ULONGLONG now = GetTickCount64();
    if (now >= awakeUntil_ms_ || now - lastReset_ms_ < kResetPeriod_ms) return;
    handset::ResetIdleTimer();
    lastReset_ms_ = now;
}

void BookingService::Say(const handset::AppBooking& booking, const std::wstring& outcome) {
    console_.Line(handset::LocalTimeText(LocalNow()) + L"  " + booking.name + L"  " + booking.program + L" " +
                  booking.commandLine + L"  " + outcome);
}

bool BookingService::Serve(const handset::AppBooking& due) {
    std::optional<RadioTurn> turn;
    if (IsRadio(due.program) && !turn.emplace(0)) return false;
    std::optional<handset::AppBooking> booking;
    {
        // Another service may have served it since, or the user deleted it; and the clock is not set
        // meanwhile.
        const handset::BookingLock lock;
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

bool BookingService::ServeDue() {
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

DWORD BookingService::RealTimeToNext_ms() const {
    const handset::LocalSeconds now = LocalNow();
    DWORD wait_ms = GetTickCount64() < awakeUntil_ms_ ? kResetPeriod_ms : kLongestWait_ms;
    for (const handset::AppBooking& booking : list_.bookings) {
        const auto next = handset::NextTime(booking, now);
        if (next && *next > now) wait_ms = std::min<DWORD>(wait_ms, RealTimeUntil_ms(*next, kLongestWait_ms));
    }
    return wait_ms;
}

void BookingService::Run(HANDLE stop) {
    // Named, so that others see that a service runs; it goes with the process.
    const OwnedHandle sign(CreateEventW(nullptr, TRUE, FALSE, handset::StateObjectName(kRunsName).c_str()));
    KeyWatch bookings(BookingsHostKey(), true);
    KeyWatch state(handset::StateKeyPath(), false);
    const HANDLE events[] = {stop, bookings.event(), state.event()};
    DWORD woken = WAIT_OBJECT_0 + 1;
    while (woken != WAIT_OBJECT_0) {
        if (woken == WAIT_OBJECT_0 + 1 || bookings.IsDeaf()) {
            bookings.Arm();
            list_ = ReadBookings();
        }
        if (woken == WAIT_OBJECT_0 + 2 || state.IsDeaf()) state.Arm();
        handset::FixClock();
        const DWORD wait_ms = ServeDue() ? RealTimeToNext_ms() : kTurnPeriod_ms;
        KeepAwake();
        woken = WaitForMultipleObjects(static_cast<DWORD>(std::size(events)), events, FALSE, wait_ms);
    }
}

BackgroundService::BackgroundService(Console& console)
    : stop_(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      service_(console),
      thread_(handset::WorkerThread(
          [this] {
              JoinHandsetDesktop();
              service_.Run(stop_.get());
          },
          [this] { return WaitForSingleObject(stop_.get(), 0) == WAIT_TIMEOUT; })) {}

BackgroundService::~BackgroundService() {
    SetEvent(stop_.get());
    thread_.join();
}

bool ServiceRuns() {
    return static_cast<bool>(
        OwnedHandle(OpenEventW(SYNCHRONIZE, FALSE, handset::StateObjectName(kRunsName).c_str())));
}

}  // namespace panel
