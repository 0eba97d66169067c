// The pump's thread.
#include "handset/capture/source/sound_pump.h"

#include <algorithm>

#include "handset/base/module_edge.h"
#include "handset/capture/graph/reference_clock.h"
#include "handset/coredll/kernel/platform_call.h"
#include "handset/sound/format.h"
#include "handset/sound/tap.h"

namespace capture {
namespace {

// What is read at once: 60 ms of real time, and no more than half a second.
constexpr std::uint32_t kRead_frames = sound::kSampleRate_Hz / 2;
constexpr std::uint32_t kRead_ms = 60;
// When that takes so long, what there is.
constexpr std::uint32_t kLongestRead_ms = 2 * kRead_ms;
// A stop waits as long as the stream goes on.
constexpr DWORD kNoProgress_ms = 2000;

// A graph's idea of now may be ahead by what its filters took to start: real time.
constexpr REFERENCE_TIME kAboutToCome = 100 * 10'000;

// The position on the tap at a time of the handset (see tap.h).
std::uint64_t PositionAt(REFERENCE_TIME time) {
    return static_cast<std::uint64_t>(FrameOfTime(std::max<REFERENCE_TIME>(time, 0), sound::kSampleRate_Hz));
}

}  // namespace

HRESULT CSoundPump::Open(const sound::WavShape& shape) {
    shape_ = shape;
    closing_ = false;
    tap_ = HandsetSoundOpen(&position_);
    if (tap_ == 0) return E_FAIL;
    try {
        thread_ = handset::WorkerThread([this] { Work(); }, [this] { return !closing_; });
        return S_OK;
    } catch (...) {
        HandsetSoundClose(tap_);
        return handset::EdgeResult();
    }
}

void CSoundPump::Run(REFERENCE_TIME start) {
    const std::lock_guard<handset::CLock> guard(lock_);
    ranFrom_ = HandsetTime();
    zero_ = std::min(start, ranFrom_);
    next_ = FrameOfTime(ranFrom_ - zero_, shape_.rate_Hz);
    ++run_;
    running_ = true;
}

void CSoundPump::Halt() {
    {
        const std::lock_guard<handset::CLock> guard(lock_);
        running_ = false;
    }
    changed_.NotifyAll();
}

void CSoundPump::Close() {
    if (!thread_.joinable()) return;
    closing_ = true;
    HandsetSoundClose(tap_);
    thread_.join();
}

void CSoundPump::RequestStart(const REFERENCE_TIME* time, DWORD cookie) {
    const std::lock_guard<handset::CLock> guard(lock_);
    if (time == nullptr && !running_) {
        control_.SetFlowing(true);
    } else if (time != nullptr && *time == MAXLONGLONG) {
        control_.RequestStart(std::nullopt);
    } else {
        // A start is never in the past: what was heard before it was asked for is not wanted.
        const REFERENCE_TIME now = running_ ? StreamTime() : 0;
        const REFERENCE_TIME start = time != nullptr ? std::max(*time, now) : now;
        // A start of what flows by now changes nothing, however far the pump is behind. As a request it would
        // begin the stream again behind a stop that is asked for with it and is a moment older.
        if (running_ && start == now && control_.FlowsAt(now)) return;
        control_.RequestStart(StreamRequest{start, cookie});
    }
}

void CSoundPump::RequestStop(const REFERENCE_TIME* time, DWORD cookie) {
    std::unique_lock<handset::CLock> lock(lock_);
    if (time == nullptr && !running_) {
        control_.SetFlowing(false);
    } else if (time != nullptr && *time == MAXLONGLONG) {
        control_.RequestStop(std::nullopt);
    } else {
        const REFERENCE_TIME now = running_ ? StreamTime() : 0;
        const REFERENCE_TIME stop = time != nullptr ? *time : now;
        control_.RequestStop(StreamRequest{stop, cookie});
        if (stop <= now + kAboutToCome * HandsetClockRate()) AwaitStop(&lock);
    }
}

CStreamControl CSoundPump::Control() {
    const std::lock_guard<handset::CLock> guard(lock_);
    return control_;
}

REFERENCE_TIME CSoundPump::StreamTime() const {
    return HandsetTime() - zero_;
}

void CSoundPump::AwaitStop(std::unique_lock<handset::CLock>* lock) {
    const std::uint32_t run = run_;
    while (running_ && run_ == run && control_.Stop()) {
        const std::int64_t reached = next_;
        if (!changed_.WaitFor(lock, kNoProgress_ms) && next_ == reached) return;
    }
}

void CSoundPump::Work() {
    std::vector<std::int16_t> frames(2 * kRead_frames);
    const std::vector<std::int16_t> silence(2 * kRead_frames);
    while (!closing_) {
        const std::uint32_t wanted = std::min<std::uint32_t>(
            sound::kSampleRate_Hz * kRead_ms / 1000 * HandsetClockRate(), kRead_frames);
        std::uint64_t lost = position_;
        const std::uint32_t count =
            HandsetSoundRead(tap_, &position_, frames.data(), wanted, kLongestRead_ms);
        const std::uint64_t begin = position_;
        // Before it is worked on: what there is no memory for is not worked on again.
        position_ += count;
        // What was lost is silence: the recording stays as long as the time.
        while (lost < begin) {
            const auto part = static_cast<std::size_t>(std::min<std::uint64_t>(begin - lost, kRead_frames));
            Take(lost, silence.data(), part);
            lost += part;
        }
        Take(begin, frames.data(), count);
    }
}

void CSoundPump::Take(std::uint64_t position, const std::int16_t* frames, std::size_t count) {
    if (count == 0 || !BeginRun(&position, &frames, &count)) return;
    output_.clear();
    converter_->Process(frames, count, &output_);
    Pass(output_.data(), output_.size() / shape_.channels);
}

// False when the frames are not for this run. Of the first frames those from before the run are left out.
bool CSoundPump::BeginRun(std::uint64_t* position, const std::int16_t** frames, std::size_t* count) {
    std::unique_lock<handset::CLock> lock(lock_);
    if (!running_) return false;
    if (workedRun_ == run_) return true;
    const std::uint64_t from = PositionAt(ranFrom_);
    if (*position + *count <= from) return false;
    const std::uint32_t run = run_;
    if (*position < from) {
        const auto before = static_cast<std::size_t>(from - *position);
        *frames += 2 * before;
        *count -= before;
        *position = from;
    }
    lock.unlock();
    converter_ = std::make_unique<CSoundConverter>(shape_.rate_Hz, shape_.channels);
    workedRun_ = run;
    refused_ = false;
    discontinuity_ = true;
    return true;
}

// Lets the stream control have its say about every frame.
void CSoundPump::Pass(const std::int16_t* samples, std::size_t frames) {
    while (frames > 0) {
        CStreamControl::Step step;
        std::int64_t frame = 0;
        {
            const std::lock_guard<handset::CLock> guard(lock_);
            if (!running_ || workedRun_ != run_) return;
            frame = next_;
            step = control_.Next(frame, frames, shape_.rate_Hz);
        }
        const auto part = static_cast<std::size_t>(step.frames);
        if (step.flowing && part > 0) Deliver(frame, samples, part);
        if (step.frames > 0 && !step.flowing) discontinuity_ = true;
        Tell(step);
        {
            const std::lock_guard<handset::CLock> guard(lock_);
            if (workedRun_ == run_) next_ += static_cast<std::int64_t>(part);
        }
        changed_.NotifyAll();
        samples += part * shape_.channels;
        frames -= part;
    }
}

void CSoundPump::Deliver(std::int64_t frame, const std::int16_t* samples, std::size_t frames) {
    if (refused_) return;
    const REFERENCE_TIME start = TimeOfFrame(frame, shape_.rate_Hz);
    const REFERENCE_TIME stop = TimeOfFrame(frame + static_cast<std::int64_t>(frames), shape_.rate_Hz);
    const HRESULT result = pin_.Deliver(reinterpret_cast<const BYTE*>(samples), frames * shape_.FrameBytes(),
                                        start, stop, discontinuity_);
    discontinuity_ = false;
    refused_ = result != S_OK;
    // A graph that stops takes its buffers away and refuses; that is no error.
    if (FAILED(result) && result != VFW_E_WRONG_STATE && result != VFW_E_NOT_COMMITTED)
        pin_.Filter().Notify(EC_ERRORABORT, result, 0);
}

// The pin in the event is not counted: it lives as long as the graph.
void CSoundPump::Tell(const CStreamControl::Step& step) {
    if (step.cookie == 0 || !(step.started || step.stopped)) return;
    IPin* const pin = &pin_;
    pin_.Filter().Notify(step.started ? EC_STREAM_CONTROL_STARTED : EC_STREAM_CONTROL_STOPPED,
                         reinterpret_cast<LONG_PTR>(pin), static_cast<LONG_PTR>(step.cookie));
}

}  // namespace capture
