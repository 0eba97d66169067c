// What one program of a handset does at a time: changing the bookings or setting the clock, and starting the
// radio. Host code only.
#pragma once

#include <windows.h>

namespace handset {

// Held for the length of a scope, across processes. A holder that died has let go.
class StateLock {
  public:
    ~StateLock();
    StateLock(const StateLock&) = delete;
    StateLock& operator=(const StateLock&) = delete;
    // False when it could not be had in 10 s.
    explicit operator bool() const { return held_; }

  protected:
    explicit StateLock(const wchar_t* name);

  private:
    HANDLE mutex_;
    bool held_;
};

// The bookings and the clock by which they are due.
class BookingLock : public StateLock {
  public:
    BookingLock() : StateLock(L"Bookings") {}
};

// Taken before the bookings' lock, never inside it.
class StartLock : public StateLock {
  public:
    StartLock() : StateLock(L"RadioStart") {}
};

}  // namespace handset
