// Requests in the order of their times; a start goes before a stop of the same time.
#include "handset/capture/graph/stream_control.h"

#include <algorithm>

namespace capture {
namespace {

std::int64_t DividedUp(std::int64_t dividend, std::int64_t divisor) {
    const std::int64_t quotient = dividend / divisor;
    return quotient + (dividend % divisor > 0 ? 1 : 0);
}

}  // namespace

// Whole seconds apart: the product with a rate would leave 64 bits after some months.
std::int64_t FrameOfTime(std::int64_t time, std::uint32_t rate_Hz) {
    const std::int64_t rate = rate_Hz;
    return time / kStreamSecond * rate + DividedUp(time % kStreamSecond * rate, kStreamSecond);
}

std::int64_t TimeOfFrame(std::int64_t frame, std::uint32_t rate_Hz) {
    const std::int64_t rate = rate_Hz;
    return frame / rate * kStreamSecond + frame % rate * kStreamSecond / rate;
}

void CStreamControl::SetFlowing(bool flowing) {
    flowing_ = flowing;
    (flowing ? start_ : stop_).reset();
}

bool CStreamControl::FlowsAt(std::int64_t time) const {
    const bool starts = start_ && start_->time <= time;
    const bool stops = stop_ && stop_->time <= time;
    if (starts && stops) return start_->time > stop_->time;
    return starts || (flowing_ && !stops);
}

CStreamControl::Step CStreamControl::Next(std::int64_t frame, std::uint64_t most, std::uint32_t rate_Hz) {
    const bool start_first = start_ && (!stop_ || start_->time <= stop_->time);
    std::optional<StreamRequest>& first = start_first ? start_ : stop_;
    Step step;
    const std::int64_t place = first ? std::max(FrameOfTime(first->time, rate_Hz), frame) : frame;
    if (!first || place > frame) {
        step.flowing = flowing_;
        step.frames = first ? std::min(most, static_cast<std::uint64_t>(place - frame)) : most;
        return step;
    }
    step.started = start_first && !flowing_;
    step.stopped = !start_first && flowing_;
    step.cookie = first->cookie;
    flowing_ = start_first;
    first.reset();
    return step;
}

}  // namespace capture
