// When a stream flows: start and stop requests by stream time, applied at the frame that they fall on.
// Portable; the caller sees to it that one thread at a time is inside.
#pragma once

#include <cstdint>
#include <optional>

namespace capture {

// Stream times are in units of 100 ns.
inline constexpr std::int64_t kStreamSecond = 10'000'000;

struct StreamRequest {
    std::int64_t time = 0;
    std::uint32_t cookie = 0;  // 0: nobody is told
};

class CStreamControl {
  public:
    // At once and untold; for a stream that does not run.
    void SetFlowing(bool flowing);
    // The latest request of each kind counts; none takes it back.
    void RequestStart(std::optional<StreamRequest> start) { start_ = start; }
    void RequestStop(std::optional<StreamRequest> stop) { stop_ = stop; }
    bool Flowing() const { return flowing_; }
    // Whether it flows when everything asked for up to `time` has been applied.
    bool FlowsAt(std::int64_t time) const;
    const std::optional<StreamRequest>& Start() const { return start_; }
    const std::optional<StreamRequest>& Stop() const { return stop_; }

    // What happens next to a stream that has come to frame `frame` at `rate_Hz` (frame 0 at stream time 0).
    struct Step {
        bool flowing = false;      // the coming frames are wanted
        std::uint64_t frames = 0;  // so many of them, up to `most`
        bool started = false;      // a request was applied, and changed something
        bool stopped = false;
        std::uint32_t cookie = 0;  // of that request
    };
    // A step either applies one request or takes frames, never both.
    Step Next(std::int64_t frame, std::uint64_t most, std::uint32_t rate_Hz);

  private:
    bool flowing_ = true;
    std::optional<StreamRequest> start_;
    std::optional<StreamRequest> stop_;
};

// The first frame that is not before a stream time.
std::int64_t FrameOfTime(std::int64_t time, std::uint32_t rate_Hz);
// The stream time of a frame.
std::int64_t TimeOfFrame(std::int64_t frame, std::uint32_t rate_Hz);

}  // namespace capture
