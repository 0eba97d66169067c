// The handset's power manager. Every program of the handset does its work in turn: what it has to remember
// lies in memory that they share, and is gone with the last of them. Host code only; any thread; error
// results are Windows error codes.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>

#include "handset/state/power_states.h"
#include "handset/state/shared_memory.h"

namespace handset {

// Kinds of notifications (PBT_…).
inline constexpr std::uint32_t kPowerTransition = 1;
inline constexpr std::uint32_t kPowerResume = 2;

// The values of HKLM\System\CurrentControlSet\Control\Power\Timeouts in the device's registry; seconds of the
// handset's clock, 0 = never.
inline constexpr wchar_t kTimeoutsKey[] = L"System\\CurrentControlSet\\Control\\Power\\Timeouts";
// In "on", without a key or the stylus, until the display is switched off.
inline constexpr wchar_t kUserIdleValue[] = L"BattUserIdle";
inline constexpr std::uint32_t kUserIdleDefault_s = 0;
// With the display off, without a reset of the idle timer, until the phone suspends.
inline constexpr wchar_t kSuspendValue[] = L"BattSuspend";
inline constexpr std::uint32_t kSuspendDefault_s = 60;
// Device differs: a count never ends sooner than this, in real time, so that a busy host at a high clock rate
// does not put a phone to sleep whose programs were about to reset the timer.
inline constexpr std::uint32_t kShortestCount_ms = 1000;

// --- States. A new one is told to all who asked for it; the one that stands already is no news.
DWORD ChangePowerState(const std::wstring& name);
// kPowerIdle: the display is switched off, which is "unattended" (with both flags) while that mode is held.
DWORD ChangePowerState(std::uint32_t flags);
// The phone's power key: a dark display is lit; a lit one goes dark, and unless unattended mode is held the
// phone is put to sleep.
DWORD PressPowerKey();
// What wakes a sleeping phone, such as a call. Nothing happens when it is awake.
void WakePhone();

// --- Notifications, as messages of the queue `queueId`. The number is for RemovePowerListener; nothing when
// there are too many.
std::optional<std::uint32_t> AddPowerListener(const std::wstring& queueId, std::uint32_t kinds);
bool RemovePowerListener(std::uint32_t number);

// --- Unattended mode: each `hold` of a program is taken back by one release of it, or by its end. A phone
// whose display is off already is unattended from then on. False when too many programs hold it.
bool HoldUnattended(bool hold);
std::uint32_t UnattendedHolders();

// --- Keys: whether a program wants every hardware key, also those that the phone would keep to itself or
// that come with a dark display. The wish ends with the program. False when too many programs have one.
bool WantAllKeys(bool all);
bool AllKeysWanted();

// --- The idle timer.
void ResetIdleTimer();
// A key or the stylus.
void NoteUserActivity();
// Changes the state when a count has ended, and tells how many real milliseconds the next one lasts; INFINITE
// when nothing is counted.
DWORD StepIdleTimer();

// The clock goes at another rate: counts that are under way go on at it, and those who follow are told.
void TellOfClockRate(std::uint32_t before, std::uint32_t now);

// A program that follows the power state and the clock's rate: its event (auto-reset) is signalled on each
// change, and when a count may have become shorter. It also keeps what the power manager remembers.
class CPowerFollower {
  public:
    CPowerFollower();
    ~CPowerFollower();
    CPowerFollower(const CPowerFollower&) = delete;
    CPowerFollower& operator=(const CPowerFollower&) = delete;
    HANDLE changed() const { return changed_.get(); }

  private:
    OwnedHandle changed_;
};

}  // namespace handset
