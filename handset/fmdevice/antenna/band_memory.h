// The levels of all channels as they were seen last, and the seek that needs them. Portable. One thread at a
// time; times are real milliseconds.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "handset/fmdevice/band/band.h"
#include "handset/fmdevice/sdr/band_scan.h"

namespace fm {

inline constexpr std::size_t kRasterPoints = (kBandTop_10kHz - kBandBottom_10kHz) / kRaster_10kHz + 1;
inline constexpr std::uint8_t kNeverSeen = 255;

class CBandMemory {
  public:
    CBandMemory() { levels_.fill(kNeverSeen); }

    // Every channel of the raster, in Hz.
    static const std::vector<double>& Raster_Hz();
    void See(const std::vector<sdr::ChannelLook>& looks, std::uint64_t now_ms);
    // Whether a station stands at a channel of the raster; nothing when it was not seen since then.
    [[nodiscard]] std::optional<bool> Station(std::size_t point, std::uint64_t since_ms) const;
    const std::array<std::uint8_t, kRasterPoints>& Levels() const { return levels_; }

  private:
    std::array<std::uint8_t, kRasterPoints> levels_;
    std::array<bool, kRasterPoints> station_{};
    std::array<std::uint64_t, kRasterPoints> seen_ms_{};
};

// Goes from raster point to raster point, round the ends of the band, as far as it knows what stands there.
class CBandSeek {
  public:
    CBandSeek(std::uint32_t from_10kHz, bool up);

    enum class Where { kFound, kNothing, kUnknown };
    // Goes on by what has been seen since `since_ms`. kUnknown: Channel() has to be looked at first.
    // kNothing: it is back where it set out.
    [[nodiscard]] Where GoOn(const CBandMemory& memory, std::uint64_t since_ms);
    [[nodiscard]] std::uint32_t Channel_10kHz() const;
    // Where to tune so that this channel is in view, and as many as possible of those that come next. Between
    // two channels, where a converter's direct current is taken for none of them.
    [[nodiscard]] double Centre_Hz(double halfWidth_Hz) const;

  private:
    std::size_t from_;
    std::uint32_t fromChannel_;
    bool up_;
    std::size_t point_;
    std::size_t steps_ = 0;
};

}  // namespace fm
