// What COREDLL knows about each thread of the process, so that SuspendThread can stop a thread between its
// platform calls and never inside one: a thread that is frozen while it holds a lock of the heap or of the
// window system takes the whole process with it.
#pragma once

#include <windows.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <vector>

#include "handset/base/owned.h"
#include "handset/coredll/kernel/suspension.h"

namespace coredll {

enum class CallKind : std::uint8_t {
    Plain,      // comes back soon, and may hold locks meanwhile
    Waits,      // may take long
    CallsBack,  // may take long, and may run window procedures of the application
};

enum class Whereabouts : int {
    OwnCode,  // in the application's own code, or in a call that COREDLL does not see
    InCall,   // in a plain platform call
    InWait,   // in a platform call that may take long; it parks when that comes back
    Parked,   // suspended between two platform calls
    Frozen,   // suspended in its own code, by the system
};

class CThreadRecord {
  public:
    explicit CThreadRecord(int suspendCount = 0);
    CThreadRecord(const CThreadRecord&) = delete;
    CThreadRecord& operator=(const CThreadRecord&) = delete;

    // --- By the thread itself.
    // A platform call begins and ends. `stack`: where the stack of its caller ends. `site`: from where
    // another DLL of the handset has marked a call of its own; 0 for a call of COREDLL. A call that there is
    // no memory to note is made as one that COREDLL does not see.
    void Enter(CallKind kind, std::uintptr_t stack, std::uintptr_t site = 0) noexcept;
    void Leave() noexcept;
    // Leaves a call without parking, unless the thread is to be suspended: then it is still inside (false).
    bool LeaveUnlessSuspended() noexcept;

    // --- By any thread.
    // Each gives the previous count; AddSuspension gives kRefused when the count is full.
    DWORD AddSuspension();
    DWORD RemoveSuspension();
    // By a program, or with the whole phone.
    bool Suspended() const { return suspendCount_.load() > 0 || PhoneSleeps(); }
    Whereabouts Where() const { return where_.load(); }
    // Has a parked thread look again whether it is suspended.
    void Wake() const { SetEvent(wake_.get()); }
    // Signalled (and reset by a wait) when the thread has parked.
    HANDLE ParkedEvent() const { return parked_.get(); }
    // Marks a thread that the system has suspended as such; RemoveSuspension then has the system resume it.
    // False when it has meanwhile begun a platform call or is to run again. `thread` is duplicated.
    bool Freeze(HANDLE thread);

    static constexpr DWORD kRefused = static_cast<DWORD>(-1);

  private:
    struct Frame {
        std::uintptr_t stack;
        std::uintptr_t site;
        CallKind kind;
        bool outermost;
    };
    bool Note(const Frame& frame) noexcept;
    static bool IsAbandoned(const Frame& frame, std::uintptr_t stack, std::uintptr_t site);
    void Park(Whereabouts next);
    void ParkIfSuspended(Whereabouts next);

    std::atomic<int> suspendCount_;
    std::atomic<Whereabouts> where_{Whereabouts::OwnCode};
    std::vector<Frame> frames_;  // the thread's own, like what follows
    int unnoted_ = 0;            // calls inside the last of them that there was no memory for
    handset::OwnedHandle parked_;
    handset::OwnedHandle wake_;
    handset::OwnedHandle frozen_;  // guarded by freezing_
    SRWLOCK freezing_ = SRWLOCK_INIT;
};

// The record of the calling thread, made when it is missing; null when there is no memory for one. Keeps the
// last error.
CThreadRecord* CurrentThreadRecord() noexcept;
// The record of a thread of this process; made when it is missing.
std::shared_ptr<CThreadRecord> ThreadRecordOf(DWORD threadId);
// A new thread's record replaces what an ended thread of the same identifier has left behind.
void RegisterThread(DWORD threadId, std::shared_ptr<CThreadRecord> record);
void ForgetThread(DWORD threadId);
// Has every thread that the sleeping phone holds look again.
void WakeHeldThreads();

}  // namespace coredll
