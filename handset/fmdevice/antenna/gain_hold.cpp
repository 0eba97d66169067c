#include "handset/fmdevice/antenna/gain_hold.h"

#include <algorithm>

namespace fm {
namespace {

constexpr double kWindow_s = 0.1;
// One sample in a thousand may be clipped.
constexpr double kMostClipped = 0.001;
// Beyond an eighth of full scale a sample is loud; a signal without any could be twice as strong and more.
constexpr int kLoud = 16;
constexpr double kLeastLoud = 0.001;
constexpr double kRest_s = 0.3;
constexpr double kPatience_s = 2.0;
constexpr double kMostPatience_s = 60.0;

}  // namespace

CGainHold::CGainHold(std::uint32_t steps)
    : steps_(std::max<std::uint32_t>(steps, 1)), step_(steps_ * 2 / 3), patience_s_(kPatience_s) {}

bool CGainHold::Add(const std::uint8_t* bytes, std::size_t count, double rate_Hz) {
    const double seconds = static_cast<double>(count) / 2.0 / rate_Hz;
    if (rest_s_ > 0.0) {
        rest_s_ -= seconds;
        return false;
    }
    for (std::size_t i = 0; i < count; ++i) {
        const int away = static_cast<int>(bytes[i]) - 127;  // -127 to 128
        clipped_ += away <= -127 || away >= 128 ? 1 : 0;
        loud_ += away < -kLoud || away > kLoud + 1 ? 1 : 0;
    }
    seen_ += count;
    if (static_cast<double>(seen_) / 2.0 / rate_Hz < kWindow_s) return false;
    const bool changed = EndWindow();
    seen_ = clipped_ = loud_ = 0;
    return changed;
}

bool CGainHold::EndWindow() {
    const auto all = static_cast<double>(seen_);
    if (static_cast<double>(clipped_) > kMostClipped * all) {
        quiet_s_ = 0.0;
        if (step_ == 0) return false;
        --step_;
        rest_s_ = kRest_s;
        // What clips at a step will do so again: it is tried less and less often.
        patience_s_ = std::min(2.0 * patience_s_, kMostPatience_s);
        return true;
    }
    quiet_s_ = static_cast<double>(loud_) < kLeastLoud * all ? quiet_s_ + kWindow_s : 0.0;
    if (quiet_s_ < patience_s_ || step_ + 1 >= steps_) return false;
    ++step_;
    quiet_s_ = 0.0;
    rest_s_ = kRest_s;
    return true;
}

}  // namespace fm
