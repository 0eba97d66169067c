// Waiting: every time-out runs on the handset's clock, also when its rate changes meanwhile.
#include <algorithm>
#include <array>

#include "handset/base/module_edge.h"
#include "handset/coredll/kernel/call_guard.h"
#include "handset/coredll/kernel/clock.h"
#include "handset/coredll/kernel/platform_call.h"

using coredll::CallKind;
using coredll::CCallGuard;
using coredll::CDeadline;

namespace {

// Nothing of the clock is in it.
bool IsTimeless(DWORD milliseconds) {
    return milliseconds == 0 || milliseconds == INFINITE;
}

// Objects of the caller's and, behind them, the event that tells of a new rate. Where the host takes no more
// objects the clock is looked at from time to time instead.
class CAwaitedObjects {
  public:
    CAwaitedObjects(DWORD count, const HANDLE* objects, DWORD milliseconds, DWORD most)
        : count_(count), room_(count < most), deadline_(milliseconds) {
        for (DWORD i = 0; i < count; ++i) all_[i] = objects[i];
    }

    // `wait(count, objects, real milliseconds)`; its answer as if the event were not there.
    template <typename Wait>
    DWORD Until(Wait wait) {
        for (;;) {
            const DWORD left_ms = deadline_.Left_ms();
            const HANDLE turn = room_ ? deadline_.TurnEvent() : nullptr;
            const DWORD step_ms = turn != nullptr ? left_ms : std::min(left_ms, CDeadline::kLook_ms);
            if (turn != nullptr) all_[count_] = turn;
            const DWORD result = wait(count_ + (turn != nullptr ? 1 : 0), all_.data(), step_ms);
            if (turn != nullptr && result == WAIT_OBJECT_0 + count_) continue;
            if (turn != nullptr && result == WAIT_OBJECT_0 + count_ + 1) return WAIT_OBJECT_0 + count_;
            if (result != WAIT_TIMEOUT || deadline_.Left_ms() == 0) return result;
        }
    }

  private:
    DWORD count_;
    bool room_;
    CDeadline deadline_;
    std::array<HANDLE, MAXIMUM_WAIT_OBJECTS + 1> all_{};
};

DWORD WaitForAny(DWORD count, const HANDLE* objects, DWORD milliseconds) {
    const auto wait = [](DWORD number, const HANDLE* handles, DWORD real_ms) {
        return WaitForMultipleObjects(number, handles, FALSE, real_ms);
    };
    if (IsTimeless(milliseconds) || count == 0 || count > MAXIMUM_WAIT_OBJECTS || objects == nullptr)
        return wait(count, objects, milliseconds);
    return CAwaitedObjects(count, objects, milliseconds, MAXIMUM_WAIT_OBJECTS).Until(wait);
}

}  // namespace

COREDLL_EXPORT void WINAPI DeviceSleep(DWORD milliseconds) try {
    const CCallGuard guard(CallKind::Waits);
    if (IsTimeless(milliseconds)) return Sleep(milliseconds);
    coredll::SleepOnClock(milliseconds);
} catch (...) {
    handset::EdgeAnswer<void>();
}

COREDLL_EXPORT DWORD WINAPI DeviceWaitForSingleObject(HANDLE object, DWORD milliseconds) try {
    const CCallGuard guard(CallKind::Waits);
    if (IsTimeless(milliseconds)) return WaitForSingleObject(object, milliseconds);
    return WaitForAny(1, &object, milliseconds);
} catch (...) {
    return handset::EdgeAnswer<DWORD>(WAIT_FAILED);
}

// The device waits for any of the objects only.
COREDLL_EXPORT DWORD WINAPI DeviceWaitForMultipleObjects(DWORD count, const HANDLE* objects, BOOL all,
                                                         DWORD milliseconds) try {
    const CCallGuard guard(CallKind::Waits);
    if (all) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return WAIT_FAILED;
    }
    return WaitForAny(count, objects, milliseconds);
} catch (...) {
    return handset::EdgeAnswer<DWORD>(WAIT_FAILED);
}

COREDLL_EXPORT DWORD WINAPI DeviceMsgWaitForMultipleObjectsEx(DWORD count, const HANDLE* objects,
                                                              DWORD milliseconds, DWORD wakeMask,
                                                              DWORD flags) try {
    const CCallGuard guard(CallKind::CallsBack);
    const auto wait = [wakeMask, flags](DWORD number, const HANDLE* handles, DWORD real_ms) {
        return MsgWaitForMultipleObjectsEx(number, handles, real_ms, wakeMask, flags);
    };
    // The host counts its own queue as one of the objects.
    constexpr DWORD kMost = MAXIMUM_WAIT_OBJECTS - 1;
    if (IsTimeless(milliseconds) || count > kMost || (flags & MWMO_WAITALL) != 0)
        return wait(count, objects, HandsetRealTimeout(milliseconds));
    return CAwaitedObjects(count, objects, milliseconds, kMost).Until(wait);
} catch (...) {
    return handset::EdgeAnswer<DWORD>(WAIT_FAILED);
}
