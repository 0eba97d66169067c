// Locks that hold no object of the system and, under Wine, ask nothing of its server, as the runtime's own do
// at every wait and wake. They keep no handles either, and what a recording leaves behind stays until the
// radio ends. They serve std::lock_guard and std::unique_lock.
#pragma once

#include <windows.h>

#include <mutex>

namespace handset {

class CLock {
  public:
    CLock() = default;
    CLock(const CLock&) = delete;
    CLock& operator=(const CLock&) = delete;
    void lock() { AcquireSRWLockExclusive(&lock_); }
    void unlock() { ReleaseSRWLockExclusive(&lock_); }

  private:
    friend class CCondition;
    SRWLOCK lock_ = SRWLOCK_INIT;
};

// For a thread that may hold it already.
class CRecursiveLock {
  public:
    CRecursiveLock() { InitializeCriticalSection(&section_); }
    ~CRecursiveLock() { DeleteCriticalSection(&section_); }
    CRecursiveLock(const CRecursiveLock&) = delete;
    CRecursiveLock& operator=(const CRecursiveLock&) = delete;
    void lock() { EnterCriticalSection(&section_); }
    void unlock() { LeaveCriticalSection(&section_); }

  private:
    CRITICAL_SECTION section_;
};

class CCondition {
  public:
    void NotifyAll() { WakeAllConditionVariable(&condition_); }
    // False when nothing came within `timeout_ms`; may also return for no reason.
    bool WaitFor(std::unique_lock<CLock>* lock, DWORD timeout_ms) {
        return SleepConditionVariableSRW(&condition_, &lock->mutex()->lock_, timeout_ms, 0) != FALSE;
    }

  private:
    CONDITION_VARIABLE condition_ = CONDITION_VARIABLE_INIT;
};

}  // namespace handset
