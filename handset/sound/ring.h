// The last seconds of the receiver's sound, by position. Portable. The caller sees to it that one thread at a
// time is inside. Positions count frames on the handset's clock (see format.h).
#pragma once

#include <cstdint>
#include <vector>

#include "handset/sound/format.h"

namespace sound {

class CSoundRing {
  public:
    explicit CSoundRing(std::size_t capacityFrames) : capacity_(capacityFrames) {}

    std::size_t Capacity() const { return capacity_; }
    // The frames that are there: Begin() ≤ position < End().
    std::uint64_t Begin() const { return begin_; }
    std::uint64_t End() const { return end_; }
    // Throws everything away and goes on at a position.
    void SkipTo(std::uint64_t position) { begin_ = end_ = position; }
    // Adds up to Capacity() frames at the end; the oldest give way.
    void Append(const std::int16_t* samples, std::size_t frames);
    // Copies up to `frames` frames from `*position`, which moves up to Begin() first when it lies before it.
    // Gives their number; `*position` stays at the first of them.
    std::size_t Read(std::uint64_t* position, std::int16_t* samples, std::size_t frames) const;

  private:
    std::size_t capacity_;
    std::vector<std::int16_t> samples_;  // made for the first sound: a silent receiver needs none
    std::uint64_t begin_ = 0;
    std::uint64_t end_ = 0;
};

}  // namespace sound
