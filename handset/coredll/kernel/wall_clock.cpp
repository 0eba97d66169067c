// The handset's date and time: from the moment that all programs share, or else from the one at which this
// process started.
#include <cstdint>

#include "handset/base/file_time.h"
#include "handset/base/module_edge.h"
#include "handset/coredll/kernel/call_guard.h"
#include "handset/coredll/kernel/platform_call.h"
#include "handset/state/handset_clock.h"
#include "handset/state/handset_time.h"

using handset::FileTime;
using handset::Ticks;

namespace {

constexpr std::uint64_t kTicksPerMillisecond = 10000;  // of a FILETIME, 100 ns each

const std::uint64_t g_processStart = handset::RealTime();

std::uint64_t HandsetNow() {
    if (const auto moment = handset::SharedMoment()) return handset::ShownAt(*moment, handset::RealTime());
    // Nobody has set it, or it was set back to the host's.
    if (HandsetClockRate() == 1) return handset::RealTime();
    return g_processStart + HandsetMilliseconds() * kTicksPerMillisecond;
}

BOOL SetHandsetNow(std::uint64_t time) {
    if (handset::SetShownTime(time)) return TRUE;
    SetLastError(ERROR_ACCESS_DENIED);
    return FALSE;
}

}  // namespace

COREDLL_EXPORT void WINAPI DeviceGetSystemTime(SYSTEMTIME* time) try {
    const coredll::CCallGuard guard;
    const FILETIME now = FileTime(HandsetNow());
    FileTimeToSystemTime(&now, time);
} catch (...) {
    *time = {};
    handset::EdgeAnswer<void>();
}

COREDLL_EXPORT void WINAPI DeviceGetLocalTime(SYSTEMTIME* time) try {
    const coredll::CCallGuard guard;
    const FILETIME local = FileTime(handset::LocalFromUniversal(HandsetNow()));
    FileTimeToSystemTime(&local, time);
} catch (...) {
    *time = {};
    handset::EdgeAnswer<void>();
}

COREDLL_EXPORT BOOL WINAPI DeviceSetSystemTime(const SYSTEMTIME* time) try {
    const coredll::CCallGuard guard;
    FILETIME universal;
    return SystemTimeToFileTime(time, &universal) && SetHandsetNow(Ticks(universal));
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}

COREDLL_EXPORT BOOL WINAPI DeviceSetLocalTime(const SYSTEMTIME* time) try {
    const coredll::CCallGuard guard;
    FILETIME local;
    return SystemTimeToFileTime(time, &local) && SetHandsetNow(handset::UniversalFromLocal(Ticks(local)));
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}
