#include "handset/fmdevice/antenna/sample_clock.h"

#include <algorithm>
#include <utility>

namespace fm {
namespace {

// Among the arrivals of so long there is one that nothing has delayed. A server on a busy machine may be late
// for seconds and then make up for it all at once; two crystals move by a few milliseconds meanwhile.
constexpr double kRemembered_s = 20.0;
// What it lost instead makes all that comes later seem late. Among the arrivals of this time, too, there is
// one that was delayed little.
constexpr double kLately_s = 1.0;
// How long a stick takes to go elsewhere, one order after the other, and how many of them may wait.
constexpr double kElsewhere_s = 0.03;
constexpr double kMostWaiting = 2.0;
// A network farther away is not waited for.
constexpr double kMostRoundTrip_s = 0.05;
// While nothing has come yet by which it could be told.
constexpr double kFirst_s = 0.1;
// A server that makes its samples late, or leaves some out, seems to have taken more than it has: of what was
// taken before the last arrival no more is believed to be on its way than the gaps between arrivals show, or
// what came lately.
constexpr double kGaps = 1.3;
constexpr double kLeastGap_s = 0.004;
constexpr double kForgetGap = 0.97;  // with each arrival
constexpr double kMost_s = 0.3;

}  // namespace

void CSampleClock::CLeast::Begin(double value, double now_s) {
    value_ = before_ = value;
    since_s_ = now_s;
}

void CSampleClock::CLeast::Add(double value, double now_s) {
    if (now_s - since_s_ > remembers_s_) {
        before_ = std::exchange(value_, value);
        since_s_ = now_s;
    } else {
        value_ = std::min(value_, value);
    }
}

double CSampleClock::CLeast::Value() const {
    return std::min(value_, before_);
}

CSampleClock::CSampleClock(double bytesPerSecond, double roundTrip_s)
    : bytesPerSecond_(bytesPerSecond),
      roundTrip_s_(roundTrip_s),
      least_s_(kRemembered_s),
      leastLately_s_(kLately_s) {}

void CSampleClock::Arrived(std::uint64_t bytes, double now_s) {
    const bool first = bytes_ == 0;
    const double gap_s = first ? 0.0 : now_s - last_s_;
    last_s_ = now_s;
    if (gap_s > kLeastGap_s) longestGap_s_ = std::max(gap_s, kForgetGap * longestGap_s_);
    bytes_ += bytes;
    const double late_s = now_s - static_cast<double>(bytes_) / bytesPerSecond_;
    if (first) {
        least_s_.Begin(late_s, now_s);
        leastLately_s_.Begin(late_s, now_s);
    } else {
        least_s_.Add(late_s, now_s);
        leastLately_s_.Add(late_s, now_s);
    }
}

void CSampleClock::SendOther(double now_s) {
    there_s_ = std::clamp(there_s_, now_s, now_s + kMostWaiting * kElsewhere_s) + kElsewhere_s;
}

double CSampleClock::SendElsewhere(double now_s) {
    SendOther(now_s);
    if (bytes_ == 0) return kFirst_s;
    const double fresh_s = there_s_ + std::min(roundTrip_s_, kMostRoundTrip_s);
    const double numbered_s = static_cast<double>(bytes_) / bytesPerSecond_;
    const double gaps_s = fresh_s - last_s_ + kGaps * longestGap_s_;
    const double lately_s = fresh_s - leastLately_s_.Value() - numbered_s;
    const double most_s = std::min(std::max(gaps_s, lately_s), kMost_s);
    return std::clamp(fresh_s - least_s_.Value() - numbered_s, 0.0, most_s);
}

}  // namespace fm
