// What the tuner device needs of a receiver's front end: the part behind the antenna. The simulated band is
// one; a receiver for a real antenna is another. Portable.
//
// Threads: every operation but Render is called with the receiver's lock held, by one thread at a time.
// Render is called by the sound thread alone and holds no lock; it is given all it needs.
#pragma once

#include <cstddef>
#include <cstdint>

#include "handset/fmdevice/band.h"

namespace fm {

// What comes in at one channel, as it was at one moment.
struct Reception {
    std::uint32_t channel = 0;
    int level = 0;
    bool stereo = false;
    Programme programme;
};

class ITunerFrontEnd {
  public:
    virtual ~ITunerFrontEnd() = default;
    // Looks whether the conditions have changed; true when they have. Called often.
    [[nodiscard]] virtual bool Refresh() = 0;
    // Whether a seek past one end of the band goes on from the other.
    [[nodiscard]] virtual bool Wraps() const = 0;
    // The level at a channel of the band, from 0 to 100.
    [[nodiscard]] virtual int Level(std::uint32_t channel) const = 0;
    [[nodiscard]] virtual Reception Receive(std::uint32_t channel) const = 0;
    // What is known of the RDS services at a channel, however weak; empty when nothing is sent.
    [[nodiscard]] virtual RdsData Rds(std::uint32_t channel) const = 0;
    // The next `count` frames of the sound of a reception, floats from -1 to 1, left and right in turn.
    virtual void Render(const Reception& reception, float* frames, std::size_t count) = 0;
};

}  // namespace fm
