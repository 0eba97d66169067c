// What the tuner device needs of a receiver's front end: the part behind the antenna, which takes time. The
// simulated band is one; a receiver for a real antenna is another.
//
// Threads: what is called with the receiver's lock held never waits; by one thread at a time. AwaitLevel and
// a seek's steps are called without it, by any threads, and wait no longer than is said. Render is called by
// the sound thread alone; it does not wait either.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "handset/fmdevice/band/band.h"
#include "handset/fmdevice/band/rds_text.h"

namespace fm {

// What comes in at the tuned channel, as it was at one moment.
struct Reception {
    std::uint32_t channel = 0;
    int level = 0;
    bool stereo = false;
    Programme programme;
};

enum class SeekState { kUnderWay, kFound, kNothing };

// A seek from the channel that was tuned when it began. The radio is silent meanwhile; a tuning ends it.
class ISeek {
  public:
    virtual ~ISeek() = default;
    // Goes on for at most kLongestSeekStep_ms of real time. `*channel` receives where a station was found.
    [[nodiscard]] virtual SeekState Step(std::uint32_t* channel) = 0;
};
inline constexpr std::uint32_t kLongestSeekStep_ms = 250;

class ITunerFrontEnd {
  public:
    virtual ~ITunerFrontEnd() = default;

    // With the receiver's lock:
    // The radio is switched on or off. Nothing but Render is called while it is off.
    virtual void Power(bool on) = 0;
    // Looks whether the conditions have changed; true when they have. Called often.
    [[nodiscard]] virtual bool Refresh() = 0;
    // What comes in later is that of another channel; what was known of the one before is forgotten.
    virtual void Tune(std::uint32_t channel) = 0;
    [[nodiscard]] virtual Reception Receive() = 0;
    // What is known of the station, however weak it is by now.
    [[nodiscard]] virtual StationServices Services() = 0;
    // The text that has been complete for longest and was not given yet, or the one given last while none is.
    // Nothing before the first is complete, and while no groups come in.
    [[nodiscard]] virtual std::optional<RdsText> TakeText() = 0;
    // The name that the station gives itself, as it was received whole last; empty before. Takes no text.
    [[nodiscard]] virtual std::string StationName() = 0;
    [[nodiscard]] virtual std::unique_ptr<ISeek> Seek(bool up) = 0;

    // Without it:
    // The level, from 0 to 100, of what is tuned, measured since it was tuned; waits for it up to
    // kLongestLevel_ms and then gives what is known. A tuning meanwhile does not prolong that.
    [[nodiscard]] virtual int AwaitLevel() = 0;

    // The frames of sound from a position of the handset's clock (sound/format.h), floats from -1 to 1, left
    // and right in turn. Positions never go back.
    virtual void Render(const Reception& reception, std::uint64_t position, float* frames,
                        std::size_t count) = 0;
};
inline constexpr std::uint32_t kLongestLevel_ms = 800;

}  // namespace fm
