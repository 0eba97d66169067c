// The handset's clock: milliseconds since the process started, at the handset's rate, and what a handset
// time-out takes in real time.
#include "handset/coredll/kernel/clock.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <utility>

#include "handset/base/module_edge.h"
#include "handset/coredll/kernel/call_guard.h"
#include "handset/coredll/kernel/platform_call.h"
#include "handset/state/handset_clock.h"
#include "handset/state/locks.h"

namespace coredll {
namespace {

using Turn = std::shared_ptr<const handset::OwnedHandle>;

std::uint64_t RealMicroseconds() {
    static const std::uint64_t frequency = [] {
        LARGE_INTEGER value;
        QueryPerformanceFrequency(&value);
        return static_cast<std::uint64_t>(value.QuadPart);
    }();
    LARGE_INTEGER now;
    QueryPerformanceCounter(&now);
    const auto count = static_cast<std::uint64_t>(now.QuadPart);
    return count / frequency * 1000000 + count % frequency * 1000000 / frequency;
}

// Taken when the DLL is loaded: with a rate of 1 the handset's ticks are the host's.
const std::uint64_t g_start_us = RealMicroseconds();
const DWORD g_startTick_ms = GetTickCount();

Turn NewTurn() {
    handset::OwnedHandle event(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    return event ? std::make_shared<const handset::OwnedHandle>(std::move(event)) : nullptr;
}

class CProgramClock {
  public:
    CProgramClock() : rate_(handset::RateAtStart()), turn_(NewTurn()) {}

    DWORD Rate() {
        const std::lock_guard<handset::CLock> guard(lock_);
        return rate_;
    }
    std::uint64_t Now_us() {
        const std::lock_guard<handset::CLock> guard(lock_);
        return Now();
    }
    // The ticks neither jump nor stand still: they go on from where they are.
    bool Take(DWORD rate) {
        if (rate == Rate()) return false;
        Turn next = NewTurn();
        {
            const std::lock_guard<handset::CLock> guard(lock_);
            const std::uint64_t real_us = RealMicroseconds();
            from_handset_us_ += (real_us - from_us_) * rate_;
            from_us_ = real_us;
            rate_ = rate;
            next.swap(turn_);
        }
        turned_.NotifyAll();
        // Whoever asks from now on is given the next one; this one stays set for all who still hold it.
        if (next) SetEvent(next->get());
        return true;
    }
    DWORD RealUntil_ms(std::uint64_t handset_us, Turn* turn) {
        const std::lock_guard<handset::CLock> guard(lock_);
        *turn = turn_;
        return Left_ms(handset_us);
    }
    void SleepUntil(std::uint64_t handset_us) {
        std::unique_lock<handset::CLock> lock(lock_);
        while (const DWORD left_ms = Left_ms(handset_us)) (void)turned_.WaitFor(&lock, left_ms);
    }

  private:
    // Rounded up.
    DWORD Left_ms(std::uint64_t handset_us) const {
        const std::uint64_t now_us = Now();
        if (now_us >= handset_us) return 0;
        const std::uint64_t unit = std::uint64_t{rate_} * 1000;
        return static_cast<DWORD>(
            std::min<std::uint64_t>((handset_us - now_us + unit - 1) / unit, INFINITE - 1));
    }
    std::uint64_t Now() const { return from_handset_us_ + (RealMicroseconds() - from_us_) * rate_; }

    handset::CLock lock_;  // guards all of the following
    std::uint64_t from_us_ = g_start_us;
    std::uint64_t from_handset_us_ = 0;
    DWORD rate_;
    Turn turn_;
    handset::CCondition turned_;  // to those who sleep
};

// Never destroyed: threads still ask while the process ends.
CProgramClock& TheClock() {
    static auto* const clock = new CProgramClock;
    return *clock;
}

// Who else is to be told of a new rate. A call that is under way is waited for by whoever forgets it.
struct Listeners {
    handset::CLock lock;  // guards calls, and is held during them
    std::map<void*, void(CALLBACK*)(void*)> calls;
};
Listeners& TheListeners() {
    static auto* const listeners = new Listeners;
    return *listeners;
}

}  // namespace

void FollowClock() {
    if (!TheClock().Take(handset::RateNow())) return;
    Listeners& listeners = TheListeners();
    const std::lock_guard<handset::CLock> guard(listeners.lock);
    for (const auto& [context, call] : listeners.calls) call(context);
}

CDeadline::CDeadline(DWORD handset_ms) : end_us_(TheClock().Now_us() + std::uint64_t{handset_ms} * 1000) {}

void SleepOnClock(DWORD handset_ms) {
    TheClock().SleepUntil(TheClock().Now_us() + std::uint64_t{handset_ms} * 1000);
}

DWORD CDeadline::Left_ms() {
    const DWORD left_ms = TheClock().RealUntil_ms(end_us_, &turn_);
    return turn_ ? left_ms : std::min(left_ms, kLook_ms);
}

}  // namespace coredll

COREDLL_EXPORT DWORD WINAPI HandsetClockRate(void) try { return coredll::TheClock().Rate(); } catch (...) {
    return handset::EdgeAnswer<DWORD>(1);
}

COREDLL_EXPORT std::uint64_t WINAPI HandsetMilliseconds(void) try {
    return coredll::TheClock().Now_us() / 1000;
} catch (...) {
    return handset::EdgeAnswer<std::uint64_t>();
}

COREDLL_EXPORT DWORD WINAPI HandsetRealTimeout(DWORD handset_ms) try {
    if (handset_ms == INFINITE) return INFINITE;
    const DWORD rate = HandsetClockRate();
    return handset_ms / rate + (handset_ms % rate != 0 ? 1 : 0);
} catch (...) {
    return handset::EdgeAnswer(handset_ms);
}

COREDLL_EXPORT void WINAPI HandsetHearOfRates(void(CALLBACK* call)(void*), void* context) try {
    coredll::Listeners& listeners = coredll::TheListeners();
    const std::lock_guard<handset::CLock> guard(listeners.lock);
    if (call != nullptr) {
        listeners.calls[context] = call;
    } else {
        listeners.calls.erase(context);
    }
} catch (...) {
    handset::EdgeAnswer<void>();
}

COREDLL_EXPORT DWORD WINAPI DeviceGetTickCount(void) try {
    const coredll::CCallGuard guard;
    return coredll::g_startTick_ms + static_cast<DWORD>(HandsetMilliseconds());
} catch (...) {
    return handset::EdgeAnswer<DWORD>();
}
