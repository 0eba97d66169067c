// Follows the phone's power state on a thread of its own, which makes no platform call and so is never held.
// It follows the clock's rate as well, and ends the idle timer's count: a phone has somebody awake for as
// long as a program runs.
#include "handset/coredll/kernel/suspension.h"

#include <windows.h>

#include <atomic>

#include "handset/base/module_edge.h"
#include "handset/base/owned.h"
#include "handset/coredll/kernel/clock.h"
#include "handset/coredll/kernel/coredll_exports.h"
#include "handset/coredll/kernel/platform_call.h"
#include "handset/coredll/kernel/thread_record.h"
#include "handset/state/power_manager.h"

namespace coredll {
namespace {

std::atomic<bool> g_sleeps{false};

void Follow(bool sleeps) {
    if (g_sleeps.exchange(sleeps) && !sleeps) WakeHeldThreads();
}

void FollowPower() {
    const handset::CPowerFollower follower;
    for (;;) {
        FollowClock();
        const DWORD next_ms = handset::StepIdleTimer();
        Follow((handset::CurrentPowerState().flags & handset::kPowerSuspend) != 0);
        WaitForSingleObject(follower.changed(), next_ms);
    }
}

DWORD WINAPI FollowerProc(void* /*parameter*/) {
    handset::KeepWorking(FollowPower, [] { return true; });
    return 0;
}

}  // namespace

bool PhoneSleeps() {
    return g_sleeps.load();
}

void FollowPhone() {
    static std::atomic<bool> begun{false};
    if (begun.exchange(true)) return;
    const handset::OwnedHandle thread(CreateThread(nullptr, 0, FollowerProc, nullptr, 0, nullptr));
}

}  // namespace coredll

COREDLL_EXPORT BOOL WINAPI HandsetPhoneSleeps(void) try { return coredll::PhoneSleeps(); } catch (...) {
    return handset::EdgeAnswer(FALSE);
}
