// The levels of all channels as they were seen last, and the seek that needs them. Portable. One thread at a
// time; times are real milliseconds.
//
// A converter that is overdriven, and any tuner a little, shows images of a strong station: they move when
// the tuner's centre does, a station stays. So a station is certain only when it was seen from two centres.
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

// From where a look was taken.
struct BandView {
    double centre_Hz = 0.0;
    double rate_Hz = 1.0;
    bool tunable = true;  // else there is no other centre, and what is seen is believed
};

class CBandMemory {
  public:
    CBandMemory() { levels_.fill(kNeverSeen); }

    // Every channel of the raster, in Hz.
    static const std::vector<double>& Raster_Hz();
    void See(const std::vector<sdr::ChannelLook>& looks, const BandView& view, std::uint64_t now_ms);
    // Whether a station stands at a channel of the raster, or an image; nothing when it was not seen since
    // then.
    [[nodiscard]] std::optional<bool> Station(std::size_t point, std::uint64_t since_ms) const;
    // The only centre from which the station there has been seen; none when it is certain.
    [[nodiscard]] std::optional<double> Doubt_Hz(std::size_t point) const;
    const std::array<std::uint8_t, kRasterPoints>& Levels() const { return levels_; }

  private:
    std::array<std::uint8_t, kRasterPoints> levels_;
    std::array<bool, kRasterPoints> station_{};
    std::array<bool, kRasterPoints> certain_{};
    std::array<double, kRasterPoints> seenFrom_Hz_{};  // the first time of this station
    std::array<std::uint64_t, kRasterPoints> seen_ms_{};
};

// Goes from raster point to raster point, round the ends of the band, as far as it knows what stands there.
class CBandSeek {
  public:
    CBandSeek(std::uint32_t from_10kHz, bool up);

    enum class Where { kFound, kNothing, kUnknown };
    // Goes on by what has been seen since `since_ms`. kUnknown: Channel() has to be looked at first.
    // kNothing: it is back where it set out. A station that is not certain is to be looked at, too.
    [[nodiscard]] Where GoOn(const CBandMemory& memory, std::uint64_t since_ms);
    [[nodiscard]] std::uint32_t Channel_10kHz() const;
    // Where to tune so that this channel is in view, and as many as possible of those that come next. Between
    // two channels, where a converter's direct current is taken for none of them. A station that is not
    // certain is seen from another centre, from which it can be received as well.
    [[nodiscard]] double Centre_Hz(double halfWidth_Hz) const;

  private:
    std::size_t from_;
    std::uint32_t fromChannel_;
    bool up_;
    std::size_t point_;
    std::size_t steps_ = 0;
    std::optional<double> doubt_Hz_;
};

}  // namespace fm
