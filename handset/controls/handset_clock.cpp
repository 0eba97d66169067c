#include "handset/controls/handset_clock.h"

#include "handset/state/handset_clock.h"
#include "handset/state/handset_time.h"

namespace panel {
namespace {

constexpr std::uint64_t kSecond_100ns = 10000000;
constexpr std::uint64_t kMillisecond_100ns = 10000;

std::uint64_t LocalTicksNow() {
    const std::uint64_t now = handset::RealTime();
    const auto moment = handset::SharedMoment();
    return handset::LocalFromUniversal(moment ? handset::ShownAt(*moment, now) : now);
}

}  // namespace

std::uint32_t ShownRate() {
    return handset::RateNow();
}

handset::LocalSeconds LocalNow() {
    return static_cast<handset::LocalSeconds>(LocalTicksNow() / kSecond_100ns);
}

std::uint32_t RealTimeUntil_ms(handset::LocalSeconds time, std::uint32_t limit_ms) {
    const std::uint64_t now = LocalTicksNow();
    const std::uint64_t then = static_cast<std::uint64_t>(time) * kSecond_100ns;
    if (then <= now) return 0;
    const std::uint64_t real_ms = (then - now) / ShownRate() / kMillisecond_100ns + 1;
    return real_ms < limit_ms ? static_cast<std::uint32_t>(real_ms) : limit_ms;
}

bool SetClockTime(handset::LocalSeconds time) {
    return handset::SetShownTime(
        handset::UniversalFromLocal(static_cast<std::uint64_t>(time) * kSecond_100ns));
}

}  // namespace panel
