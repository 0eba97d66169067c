// Window timers: the period runs on the handset's clock, and a timer procedure is given the handset's ticks.
// A timer that is set when the clock's rate changes goes on from where it is.
#include <algorithm>
#include <iterator>
#include <map>
#include <mutex>
#include <optional>
#include <tuple>
#include <utility>

#include "handset/base/module_edge.h"
#include "handset/coredll/kernel/call_guard.h"
#include "handset/coredll/kernel/platform_call.h"

extern "C" DWORD WINAPI DeviceGetTickCount(void);

namespace {

using coredll::CallKind;
using coredll::CCallGuard;

// Windows go without their timers being taken back; what is known of so many more is looked through.
constexpr std::size_t kManyTimers = 64;
constexpr UINT kNewRate = WM_APP;

// The identifiers of timers without a window are each thread's own.
struct TimerKey {
    HWND window;
    UINT_PTR id;
    DWORD thread;  // 0 with a window

    TimerKey(HWND itsWindow, UINT_PTR itsId)
        : window(itsWindow), id(itsId), thread(itsWindow != nullptr ? 0 : GetCurrentThreadId()) {}
    bool operator<(const TimerKey& other) const {
        return std::tie(window, id, thread) < std::tie(other.window, other.id, other.thread);
    }
};
struct Timer {
    TIMERPROC procedure;
    UINT period_ms;          // of the handset, at least 1
    std::uint64_t began_ms;  // of the handset: a period began then
    DWORD thread;            // which set it
    UINT_PTR number;         // on no other timer of the process

    std::uint64_t Left_ms() const { return period_ms - (HandsetMilliseconds() - began_ms) % period_ms; }
};

std::mutex g_lock;  // guards all of the following
std::map<TimerKey, Timer> g_timers;
std::map<DWORD, HWND> g_eyes;  // of the threads that have set timers
UINT_PTR g_lastNumber = 0;

UINT RealPeriod(std::uint64_t handset_ms) {
    return std::max<UINT>(HandsetRealTimeout(static_cast<DWORD>(handset_ms)), 1);
}

Timer Remember(const TimerKey& key, UINT period_ms, TIMERPROC procedure) {
    const std::lock_guard<std::mutex> lock(g_lock);
    if (g_timers.size() >= kManyTimers) {
        for (auto at = g_timers.begin(); at != g_timers.end();) {
            const HWND window = at->first.window;
            at = window != nullptr && !IsWindow(window) ? g_timers.erase(at) : std::next(at);
        }
    }
    return g_timers[key] = {procedure, std::max<UINT>(period_ms, 1), HandsetMilliseconds(),
                            GetCurrentThreadId(), ++g_lastNumber};
}

void Forget(const TimerKey& key) {
    const std::lock_guard<std::mutex> lock(g_lock);
    g_timers.erase(key);
}

std::optional<Timer> Remembered(const TimerKey& key) {
    const std::lock_guard<std::mutex> lock(g_lock);
    const auto found = g_timers.find(key);
    return found == g_timers.end() ? std::nullopt : std::optional<Timer>(found->second);
}

void CALLBACK OnTimer(HWND window, UINT message, UINT_PTR id, DWORD /*hostTick*/) try {
    const auto timer = Remembered({window, id});
    if (timer && timer->procedure != nullptr) timer->procedure(window, message, id, DeviceGetTickCount());
} catch (...) {
    handset::EdgeAnswer<void>();
}

void SetHostTimer(const TimerKey& key, const Timer& timer) {
    SetTimer(key.window, key.id, RealPeriod(timer.period_ms), timer.procedure != nullptr ? OnTimer : nullptr);
}

// On the thread's own. Its timers tick at the new rate, after what is left of the period that has begun: for
// that the eye has a timer of its own, of the same number.
void TakeNewRate(HWND eye) {
    std::map<TimerKey, Timer> own;
    {
        const std::lock_guard<std::mutex> lock(g_lock);
        for (const auto& [key, timer] : g_timers) {
            if (timer.thread == GetCurrentThreadId()) own.emplace(key, timer);
        }
    }
    for (const auto& [key, timer] : own) {
        if (key.window != nullptr && !IsWindow(key.window)) {
            Forget(key);
            continue;
        }
        SetHostTimer(key, timer);
        SetTimer(eye, timer.number, RealPeriod(timer.Left_ms()), nullptr);
    }
}

// The period that the change of the rate found begun is over; the host's timer begins the next.
void EndPeriod(HWND eye, UINT_PTR number) {
    KillTimer(eye, number);
    std::optional<std::pair<TimerKey, Timer>> ended;
    {
        const std::lock_guard<std::mutex> lock(g_lock);
        const auto found = std::find_if(g_timers.begin(), g_timers.end(),
                                        [number](const auto& row) { return row.second.number == number; });
        if (found == g_timers.end()) return;
        found->second.began_ms = HandsetMilliseconds();
        ended.emplace(*found);
    }
    const auto& [key, timer] = *ended;
    SetHostTimer(key, timer);
    if (timer.procedure != nullptr) {
        OnTimer(key.window, WM_TIMER, key.id, 0);
    } else if (key.window != nullptr) {
        PostMessageW(key.window, WM_TIMER, key.id, 0);
    } else {
        PostThreadMessageW(timer.thread, WM_TIMER, key.id, 0);
    }
}

LRESULT CALLBACK EyeProc(HWND eye, UINT message, WPARAM wParam, LPARAM lParam) try {
    if (message == kNewRate) TakeNewRate(eye);
    if (message == WM_TIMER) EndPeriod(eye, wParam);
    return DefWindowProcW(eye, message, wParam, lParam);
} catch (...) {
    return handset::EdgeAnswer<LRESULT>();
}

void CALLBACK OnNewRate(void* /*context*/) try {
    const std::lock_guard<std::mutex> lock(g_lock);
    for (const auto& [thread, eye] : g_eyes) PostMessageW(eye, kNewRate, 0, 0);
} catch (...) {
    handset::EdgeAnswer<void>();
}

// A window that only messages come to, once for each thread that sets timers. It goes with its thread.
void OpenEye() {
    static const ATOM eyeClass = [] {
        WNDCLASSW description{};
        description.lpfnWndProc = EyeProc;
        description.hInstance = GetModuleHandleW(nullptr);
        description.lpszClassName = L"KoraHandset.Timers";
        HandsetHearOfRates(OnNewRate, &g_eyes);
        return RegisterClassW(&description);
    }();
    {
        const std::lock_guard<std::mutex> lock(g_lock);
        const auto found = g_eyes.find(GetCurrentThreadId());
        if (found != g_eyes.end() && IsWindow(found->second)) return;
        // What an ended thread of the same identifier has left behind.
        for (auto at = g_timers.begin(); at != g_timers.end();)
            at = at->second.thread == GetCurrentThreadId() ? g_timers.erase(at) : std::next(at);
    }
    const HWND eye = CreateWindowExW(0, MAKEINTATOM(eyeClass), nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                     GetModuleHandleW(nullptr), nullptr);
    if (eye == nullptr) return;
    const std::lock_guard<std::mutex> lock(g_lock);
    g_eyes[GetCurrentThreadId()] = eye;
}

}  // namespace

// Device differs: a period is never shorter than 10 ms of real time, the host's shortest.
COREDLL_EXPORT UINT_PTR WINAPI DeviceSetTimer(HWND window, UINT_PTR id, UINT period_ms,
                                              TIMERPROC procedure) try {
    const CCallGuard guard;
    const DWORD rate = HandsetClockRate();
    const UINT_PTR made =
        SetTimer(window, id, RealPeriod(period_ms), procedure != nullptr ? OnTimer : nullptr);
    if (made == 0) return 0;
    const UINT_PTR kept = window != nullptr ? id : made;
    try {
        OpenEye();
        const TimerKey key(window, kept);
        const Timer timer = Remember(key, period_ms, procedure);
        // Until here nobody told this timer of a new rate.
        if (HandsetClockRate() != rate) SetHostTimer(key, timer);
    } catch (...) {
        KillTimer(window, kept);
        throw;
    }
    return made;
} catch (...) {
    return handset::EdgeAnswer<UINT_PTR>();
}

COREDLL_EXPORT BOOL WINAPI DeviceKillTimer(HWND window, UINT_PTR id) try {
    const CCallGuard guard;
    Forget({window, id});
    return KillTimer(window, id);
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}
