#include "handset/state/booking_lock.h"

#include "handset/state/handset_state.h"

namespace handset {
namespace {

constexpr DWORD kPatience_ms = 10000;

}  // namespace

StateLock::StateLock(const wchar_t* name)
    : mutex_(CreateMutexW(nullptr, FALSE, StateObjectName(name).c_str())), held_(false) {
    if (mutex_ == nullptr) return;
    const DWORD result = WaitForSingleObject(mutex_, kPatience_ms);
    held_ = result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
}

StateLock::~StateLock() {
    if (held_) ReleaseMutex(mutex_);
    if (mutex_ != nullptr) CloseHandle(mutex_);
}

}  // namespace handset
