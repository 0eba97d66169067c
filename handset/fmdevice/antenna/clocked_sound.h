// Received sound by the moment of the handset's clock at which it is to be heard, so that a listener who
// comes late still finds it whole and one who comes early does not disturb it. Portable. The caller sees to
// it that one thread at a time is inside. Positions count frames on the handset's clock (sound/format.h).
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "handset/sound/format.h"

namespace fm {

class CClockedSound {
  public:
    // From its arrival to its moment a frame waits `lead_s` on the mean; what arrives more than kMostAhead_s
    // earlier than that, as after a stalled network, is left out.
    CClockedSound(double capacity_s, double lead_s);
    static constexpr double kMostAhead_s = 0.25;

    // What is received at the moment `now`, behind what was there. Sound that is too late for its moment
    // begins anew `lead_s` from now; silence stands in the gap.
    void Append(const float* frames, std::size_t count, std::uint64_t now);
    // Another station: nothing of what was received before is heard from `now` on.
    void Silence(std::uint64_t now);
    // How much is there to be heard from now on; below 0 when it is late.
    [[nodiscard]] double Fill_s(std::uint64_t now) const;
    // The frames from a position on; silence where nothing is.
    void Read(std::uint64_t position, float* frames, std::size_t count) const;

    // How often sound came too late, and how many frames were left out.
    std::uint64_t Gaps() const { return gaps_; }
    std::uint64_t LeftOut() const { return leftOut_; }

  private:
    void Put(const float* frames, std::size_t count);

    std::vector<float> frames_;
    std::size_t capacity_;  // frames
    std::uint64_t lead_;
    std::uint64_t begin_ = 0;
    std::uint64_t end_ = 0;
    bool tooMuch_ = false;
    std::uint64_t gaps_ = 0;
    std::uint64_t leftOut_ = 0;
};

}  // namespace fm
