// What one program of a handset does at a time: changing the bookings or setting the clock, and starting the
// radio. Host code only.
#pragma once

#include "handset/base/process_lock.h"
#include "handset/state/handset_state.h"

namespace handset {

// The bookings and the clock by which they are due.
class CBookingLock : public CProcessLock {
  public:
    CBookingLock() : CProcessLock(StateObjectName(L"Bookings")) {}
};

// Taken before the bookings' lock, never inside it.
class CStartLock : public CProcessLock {
  public:
    CStartLock() : CProcessLock(StateObjectName(L"RadioStart")) {}
};

}  // namespace handset
