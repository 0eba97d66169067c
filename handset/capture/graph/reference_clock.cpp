// Alarms are timers of the host, set by the handset's rate.
#include "handset/capture/graph/reference_clock.h"

#include <algorithm>
#include <atomic>

#include "handset/base/module_edge.h"
#include "handset/coredll/kernel/platform_call.h"

namespace capture {
namespace {

constexpr REFERENCE_TIME kMillisecond = 10'000;

// Rounded up: an alarm never comes before its time.
DWORD RealMilliseconds(REFERENCE_TIME handset) {
    const REFERENCE_TIME ms = (std::max<REFERENCE_TIME>(handset, 0) + kMillisecond - 1) / kMillisecond;
    const REFERENCE_TIME rate = HandsetClockRate();
    return static_cast<DWORD>(std::min<REFERENCE_TIME>((ms + rate - 1) / rate, INFINITE - 1));
}

}  // namespace

REFERENCE_TIME HandsetTime() {
    return static_cast<REFERENCE_TIME>(HandsetMilliseconds()) * kMillisecond;
}

struct CHandsetClock::Alarm {
    HANDLE object = nullptr;
    REFERENCE_TIME due = 0;
    REFERENCE_TIME period = 0;  // 0: once
    HANDLE timer = nullptr;
    std::atomic<bool> rung{false};

    // The next time that is still to come.
    REFERENCE_TIME Next() const {
        const REFERENCE_TIME late = HandsetTime() - due;
        return period == 0 || late < 0 ? due : due + (late / period + 1) * period;
    }
    DWORD Wait_ms() const { return RealMilliseconds(Next() - HandsetTime()); }
    DWORD Period_ms() const { return period == 0 ? 0 : std::max<DWORD>(RealMilliseconds(period), 1); }

    // Waits for a call that is under way.
    ~Alarm() {
        if (timer != nullptr) DeleteTimerQueueTimer(nullptr, timer, INVALID_HANDLE_VALUE);
    }
};

CHandsetClock::CHandsetClock(IUnknown* owner) : owner_(*owner) {
    HandsetHearOfRates(OnNewRate, this);
}

CHandsetClock::~CHandsetClock() {
    HandsetHearOfRates(nullptr, this);
}

void CALLBACK CHandsetClock::OnNewRate(void* self) try {
    auto& clock = *static_cast<CHandsetClock*>(self);
    const std::lock_guard<handset::CLock> guard(clock.lock_);
    for (auto& [cookie, alarm] : clock.alarms_) {
        if (!alarm->rung) ChangeTimerQueueTimer(nullptr, alarm->timer, alarm->Wait_ms(), alarm->Period_ms());
    }
} catch (...) {
    handset::EdgeAnswer<void>();
}

HRESULT CHandsetClock::GetTime(REFERENCE_TIME* time) try {
    if (time == nullptr) return E_POINTER;
    *time = HandsetTime();
    return S_OK;
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CHandsetClock::AdviseTime(REFERENCE_TIME base, REFERENCE_TIME stream, HEVENT event,
                                  DWORD_PTR* cookie) try {
    if (cookie == nullptr) return E_POINTER;
    if (event == 0 || base < 0 || base + stream <= 0) return E_INVALIDARG;
    return Set(base + stream, 0, reinterpret_cast<HANDLE>(event), cookie);
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CHandsetClock::AdvisePeriodic(REFERENCE_TIME start, REFERENCE_TIME period, HSEMAPHORE semaphore,
                                      DWORD_PTR* cookie) try {
    if (cookie == nullptr) return E_POINTER;
    if (semaphore == 0 || start < 0 || period <= 0) return E_INVALIDARG;
    return Set(start, period, reinterpret_cast<HANDLE>(semaphore), cookie);
} catch (...) {
    return handset::EdgeResult();
}

HRESULT CHandsetClock::Set(REFERENCE_TIME due, REFERENCE_TIME period, HANDLE object, DWORD_PTR* cookie) {
    auto alarm = std::make_unique<Alarm>();
    alarm->object = object;
    alarm->due = due;
    alarm->period = period;
    const std::lock_guard<handset::CLock> guard(lock_);
    ForgetRung();
    if (!CreateTimerQueueTimer(&alarm->timer, nullptr, OnAlarm, alarm.get(), alarm->Wait_ms(),
                               alarm->Period_ms(), period == 0 ? WT_EXECUTEONLYONCE : WT_EXECUTEDEFAULT))
        return E_OUTOFMEMORY;
    *cookie = ++lastCookie_;
    alarms_[*cookie] = std::move(alarm);
    return S_OK;
}

HRESULT CHandsetClock::Unadvise(DWORD_PTR cookie) try {
    const std::lock_guard<handset::CLock> guard(lock_);
    return alarms_.erase(cookie) != 0 ? S_OK : S_FALSE;
} catch (...) {
    return handset::EdgeResult();
}

// Nobody takes a single alarm back that has come.
void CHandsetClock::ForgetRung() {
    for (auto it = alarms_.begin(); it != alarms_.end();)
        it = it->second->rung ? alarms_.erase(it) : std::next(it);
}

// Takes no lock: whoever deletes the timer waits for this call.
void CALLBACK CHandsetClock::OnAlarm(void* context, BOOLEAN) try {
    auto& alarm = *static_cast<Alarm*>(context);
    if (alarm.period != 0) {
        ReleaseSemaphore(alarm.object, 1, nullptr);
    } else {
        SetEvent(alarm.object);
        alarm.rung = true;
    }
} catch (...) {
    handset::EdgeAnswer<void>();
}

}  // namespace capture
