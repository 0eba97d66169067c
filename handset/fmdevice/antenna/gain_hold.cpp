#include "handset/fmdevice/antenna/gain_hold.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace fm {
namespace {

constexpr double kWindow_s = 0.1;
constexpr double kPart_s = 0.005;
// One sample in a thousand may be clipped.
constexpr double kMostClipped = 0.001;
// Beyond an eighth of full scale a sample is loud; a signal without any could be twice as strong and more.
constexpr int kLoud = 16;
constexpr double kLeastLoud = 0.001;
constexpr double kRest_s = 0.3;
// A tuner's step, more or less.
constexpr double kStep_dB = 2.0;
constexpr double kPatience_s = 2.0;
constexpr double kMostPatience_s = 60.0;

// By how much a carrier of which so much is clipped is too strong. Several stations at once seem to be less
// so, and take another window.
double Excess_dB(double share) {
    constexpr double kQuarter = 1.5707963267948966;
    constexpr double kMost_dB = 30.0;
    return std::min(-20.0 * std::log10(std::max(std::cos(kQuarter * share), 1e-3)), kMost_dB);
}

}  // namespace

CGainHold::CGainHold(std::uint32_t steps)
    : steps_(std::max<std::uint32_t>(steps, 1)), step_(steps_ * 2 / 3), patience_s_(kPatience_s) {}

void CGainHold::Count(const std::uint8_t* bytes, std::size_t count) {
    std::size_t clipped = 0, loud = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const int away = static_cast<int>(bytes[i]) - 127;  // -127 to 128
        clipped += away <= -127 || away >= 128 ? 1 : 0;
        loud += away < -kLoud || away > kLoud + 1 ? 1 : 0;
    }
    partClipped_ += clipped;
    loud_ += loud;
    part_ += count;
}

bool CGainHold::Add(const std::uint8_t* bytes, std::size_t count, double rate_Hz) {
    const double seconds = static_cast<double>(count) / 2.0 / rate_Hz;
    if (rest_s_ > 0.0) {
        rest_s_ -= seconds;
        return false;
    }
    const auto part = std::max<std::size_t>(static_cast<std::size_t>(2.0 * kPart_s * rate_Hz), 1);
    for (std::size_t done = 0; done < count;) {
        const std::size_t run = std::min(count - done, part - part_);
        Count(bytes + done, run);
        done += run;
        if (part_ < part) continue;
        worst_ = std::max(worst_, static_cast<double>(partClipped_) / static_cast<double>(part_));
        clipped_ += std::exchange(partClipped_, 0);
        part_ = 0;
    }
    seen_ += count;
    if (static_cast<double>(seen_) / 2.0 / rate_Hz < kWindow_s) return false;
    const bool changed = EndWindow();
    seen_ = clipped_ = loud_ = 0;
    worst_ = 0.0;
    return changed;
}

bool CGainHold::EndWindow() {
    const auto all = static_cast<double>(seen_);
    if (static_cast<double>(clipped_) > kMostClipped * all) {
        quiet_s_ = 0.0;
        if (step_ == 0) return false;
        const double excess_dB = Excess_dB(worst_);
        step_ -= std::min(step_, 1 + static_cast<std::uint32_t>(excess_dB / kStep_dB));
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
