// Where a seek from a channel ends. Portable.
#pragma once

#include <cstdint>
#include <functional>

#include "handset/fmdevice/band/band.h"

namespace fm {

// How long a seek takes on the handset's clock: to set out and lock, and for each channel listened to. From
// 0.1 s to the next raster point to 0.3 s once around the band.
inline constexpr std::uint32_t kSeekSettle_ms = 100;
inline constexpr std::uint32_t kSeekStep_ms = 1;

struct SeekResult {
    bool found = false;
    std::uint32_t channel = 0;  // where a station was found
    std::uint32_t steps = 0;    // channels listened to

    std::uint32_t Duration_ms() const { return kSeekSettle_ms + steps * kSeekStep_ms; }
};

// Goes from raster point to raster point until the level is above kSeekThreshold. Past an end it goes on from
// the other when `wrap`; there it ends where it set out, which is never found again.
[[nodiscard]] SeekResult SeekStation(std::uint32_t from, bool up, bool wrap,
                                     const std::function<int(std::uint32_t channel)>& level);

}  // namespace fm
