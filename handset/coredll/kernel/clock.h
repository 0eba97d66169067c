// The handset's clock in this program, and the length of waits on it.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>

#include "handset/base/owned.h"

namespace coredll {

// Looks at the rate that the handset goes by now. When it is another one the ticks go on at it from where
// they are, and who waits is told. Never called from inside a wait.
void FollowClock();

// Asks nothing of the host's server, as its own sleep does not.
void SleepOnClock(DWORD handset_ms);

// A time on the handset's clock, for a wait that keeps it through changes of the rate:
//   for (;;) { wait for Left_ms() or until TurnEvent() is set; …again when the event was what ended it }
class CDeadline {
  public:
    explicit CDeadline(DWORD handset_ms);
    // Real time until then, rounded up; 0 when it has come. From here on TurnEvent() tells of a new rate.
    [[nodiscard]] DWORD Left_ms();
    // Null when the host has no events left: then Left_ms() is asked for once in a while instead, and gives
    // no more than kLook_ms.
    [[nodiscard]] HANDLE TurnEvent() const { return turn_ ? turn_->get() : nullptr; }

    static constexpr DWORD kLook_ms = 100;

  private:
    std::uint64_t end_us_;  // of the handset
    std::shared_ptr<const handset::OwnedHandle> turn_;
};

}  // namespace coredll
