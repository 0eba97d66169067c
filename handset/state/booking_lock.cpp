#include "handset/state/booking_lock.h"

#include "handset/state/handset_state.h"

namespace handset {
namespace {

constexpr DWORD kPatience_ms = 10000;

}  // namespace

BookingLock::BookingLock()
    : mutex_(CreateMutexW(nullptr, FALSE, StateObjectName(L"Bookings").c_str())), held_(false) {
    if (mutex_ == nullptr) return;
    const DWORD result = WaitForSingleObject(mutex_, kPatience_ms);
    held_ = result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
}

BookingLock::~BookingLock() {
    if (held_) ReleaseMutex(mutex_);
    if (mutex_ != nullptr) CloseHandle(mutex_);
}

}  // namespace handset
