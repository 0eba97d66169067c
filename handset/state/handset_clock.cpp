#include "handset/state/handset_clock.h"

#include <windows.h>

#include "handset/base/file_time.h"
#include "handset/state/booking_lock.h"
#include "handset/state/handset_state.h"
#include "handset/state/power_manager.h"
#include "handset/state/stored_value.h"

namespace handset {
namespace {

constexpr wchar_t kMoment[] = L"ClockMoment";
constexpr wchar_t kRate[] = L"ClockRate";

// With the lock held.
bool Write(const ClockMoment& moment) {
    const StoredMoment bytes = Stored(moment);
    return SetStateBinary(kMoment, bytes.data(), bytes.size());
}

// What is shown goes on without a jump.
bool GoOnAt(std::uint32_t rate) {
    const std::uint64_t now = RealTime();
    const auto moment = SharedMoment();
    return Write({now, moment ? ShownAt(*moment, now) : now, rate});
}

std::uint32_t SharedRate() {
    const auto moment = SharedMoment();
    return moment ? moment->rate : ClockRate();
}

// There is a moment, and nobody has written another rate by hand since.
bool IsFixed() {
    const auto moment = SharedMoment();
    return moment && moment->rate == ClockRate();
}

// Tests run side by side with one each.
bool HasOwnRate() {
    return GetEnvironmentVariableW(L"KORA_CLOCKRATE", nullptr, 0) != 0;
}

// Tells the running programs of what was changed since its making. Not with the clock's lock held.
class CClockRateChange {
  public:
    ~CClockRateChange() { TellOfClockRate(before_, SharedRate()); }

  private:
    const std::uint32_t before_ = SharedRate();
};

}  // namespace

std::uint64_t RealTime() {
    FILETIME now = {};
    GetSystemTimeAsFileTime(&now);
    return Ticks(now);
}

std::uint32_t ClockRate() {
    return ClampClockRate(StateDword(kRate, kSlowestClock));
}

std::uint32_t RateNow() {
    return HasOwnRate() ? ClockRate() : SharedRate();
}

std::uint32_t RateAtStart() {
    if (!HasOwnRate() && SharedMoment()) FixClock();
    return RateNow();
}

std::optional<ClockMoment> SharedMoment() {
    const auto stored = ReadStateValue(kMoment);
    if (!stored || stored->type != REG_BINARY) return std::nullopt;
    return ReadMoment(stored->data.data(), stored->data.size());
}

bool SetShownTime(std::uint64_t shown) {
    const CBookingLock lock;
    return lock && Write({RealTime(), shown, ClockRate()});
}

bool SetClockRate(std::uint32_t rate) {
    const CClockRateChange change;
    const CBookingLock lock;
    const std::uint32_t clamped = ClampClockRate(rate);
    return lock && GoOnAt(clamped) && SetStateDword(kRate, clamped);
}

bool ResetClock() {
    const CClockRateChange change;
    const CBookingLock lock;
    if (!lock) return false;
    DeleteStateValue(kMoment);
    return SetStateDword(kRate, kSlowestClock);
}

bool FixClock() {
    if (IsFixed()) return true;
    const CClockRateChange change;
    const CBookingLock lock;
    return lock && (IsFixed() || GoOnAt(ClockRate()));
}

}  // namespace handset
