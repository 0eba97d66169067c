// Alarms are timers of the host, set by the handset's rate.
#include "handset/capture/reference_clock.h"

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

struct CHandsetClock::Alarm {
    HANDLE object = nullptr;
    bool periodic = false;
    HANDLE timer = nullptr;
    std::atomic<bool> rung{false};

    // Waits for a call that is under way.
    ~Alarm() {
        if (timer != nullptr) DeleteTimerQueueTimer(nullptr, timer, INVALID_HANDLE_VALUE);
    }
};

REFERENCE_TIME HandsetTime() {
    return static_cast<REFERENCE_TIME>(HandsetMilliseconds()) * kMillisecond;
}

CHandsetClock::CHandsetClock(IUnknown* owner) : owner_(*owner) {}

CHandsetClock::~CHandsetClock() = default;

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
    alarm->periodic = period != 0;
    const std::lock_guard<handset::CLock> guard(lock_);
    ForgetRung();
    const DWORD wait_ms = RealMilliseconds(due - HandsetTime());
    const DWORD period_ms = alarm->periodic ? std::max<DWORD>(RealMilliseconds(period), 1) : 0;
    if (!CreateTimerQueueTimer(&alarm->timer, nullptr, OnAlarm, alarm.get(), wait_ms, period_ms,
                               alarm->periodic ? WT_EXECUTEDEFAULT : WT_EXECUTEONLYONCE))
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
    if (alarm.periodic) {
        ReleaseSemaphore(alarm.object, 1, nullptr);
    } else {
        SetEvent(alarm.object);
        alarm.rung = true;
    }
} catch (...) {
    handset::EdgeAnswer<void>();
}

}  // namespace capture
