// What the power manager remembers, in memory that the programs of the handset share. Used by the power
// manager's own files alone.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "handset/base/process_lock.h"
#include "handset/state/shared_memory.h"

namespace handset {

inline constexpr std::size_t kMostPowerPrograms = 32;
inline constexpr std::size_t kMostPowerListeners = 32;
inline constexpr std::size_t kLongestQueueId = 320;

struct PowerProgram {
    ProgramMark program;
    std::uint32_t holds;    // of unattended mode
    std::uint32_t follows;  // 1 = has a CPowerFollower
    std::uint32_t allKeys;  // 1 = wants every key
    std::uint32_t reserved;
};
struct PowerListener {
    ProgramMark program;
    std::uint32_t number;
    std::uint32_t kinds;
    wchar_t queueId[kLongestQueueId];
};
struct PowerBoard {
    std::uint64_t systemActivity_ms;  // real milliseconds, as GetTickCount64 has them
    std::uint64_t userActivity_ms;
    std::uint32_t lastNumber;
    std::uint32_t reserved;
    PowerProgram programs[kMostPowerPrograms];
    PowerListener listeners[kMostPowerListeners];
};

// The board with its lock held, for the length of a scope. What ended programs have left behind is cleared
// away first.
class CPowerBoardAccess {
  public:
    CPowerBoardAccess();
    CPowerBoardAccess(const CPowerBoardAccess&) = delete;
    CPowerBoardAccess& operator=(const CPowerBoardAccess&) = delete;
    // False when another program does not give the lock back: the board is then only looked at.
    explicit operator bool() const { return static_cast<bool>(lock_); }
    // Never null: without shared memory the board is this program's own.
    PowerBoard* operator->() const { return board_; }
    // The row of this program; made when it is missing. Null when the table is full.
    PowerProgram* Mine() const;
    std::uint32_t Holders() const;
    void WakeFollowers() const;
    bool AllKeys() const;
    // Keep the state values UnattendedRequests and AllKeys what they are said to be.
    void ShowHolds() const;
    void ShowAllKeys() const;

  private:
    void ClearAway() const;
    CProcessLock lock_;
    PowerBoard* board_;
};

std::wstring FollowerEventName(const ProgramMark& program);

}  // namespace handset
