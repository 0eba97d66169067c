// One program at a time changes the bookings of a handset or sets its clock. Host code only.
#pragma once

#include <windows.h>

namespace handset {

// Held for the length of a scope, across processes. A holder that died has let go.
class BookingLock {
  public:
    BookingLock();
    ~BookingLock();
    BookingLock(const BookingLock&) = delete;
    BookingLock& operator=(const BookingLock&) = delete;
    // False when it could not be had in 10 s.
    explicit operator bool() const { return held_; }

  private:
    HANDLE mutex_;
    bool held_;
};

}  // namespace handset
