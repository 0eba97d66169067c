#include "handset/fmdevice/antenna/band_memory.h"

#include <algorithm>
#include <cmath>

namespace fm {
namespace {

constexpr double kRaster_Hz = 1e5;
// An image of the third order moves by four times as much as the centre, one of the first by twice as much,
// each folded at the rate; so far it has to be away from where it was, at a stick's rate three stations'
// width.
constexpr double kImageOrder = 4.0;
constexpr double kImageAway = 0.15;  // of the rate
// That is so with another centre so far away: two tenths of a megahertz at a stick's rate.
constexpr double kOtherCentre = 0.25;  // of half the width in view
// From nearer than so much the centre goes away from a channel, not towards it.
constexpr double kNearChannel_Hz = 350e3;

std::uint32_t ChannelAt(std::size_t point) {
    return kBandBottom_10kHz + static_cast<std::uint32_t>(point) * kRaster_10kHz;
}

bool TellsImages(const BandView& view, double other_Hz) {
    const double moved_Hz = kImageOrder * (view.centre_Hz - other_Hz);
    return std::fabs(std::remainder(moved_Hz, view.rate_Hz)) >= kImageAway * view.rate_Hz;
}

}  // namespace

const std::vector<double>& CBandMemory::Raster_Hz() {
    static const std::vector<double> raster = [] {
        std::vector<double> all;
        for (std::size_t point = 0; point < kRasterPoints; ++point) all.push_back(ChannelAt(point) * 1e4);
        return all;
    }();
    return raster;
}

void CBandMemory::See(const std::vector<sdr::ChannelLook>& looks, const BandView& view,
                      std::uint64_t now_ms) {
    for (const sdr::ChannelLook& look : looks) {
        const double place = (look.frequency_Hz / 1e4 - kBandBottom_10kHz) / kRaster_10kHz;
        const auto point = static_cast<std::size_t>(std::lround(std::max(place, 0.0)));
        if (point >= kRasterPoints) continue;
        const bool before = station_[point];
        station_[point] = look.carrier && look.level > kSeekThreshold;
        if (!before) seenFrom_Hz_[point] = view.centre_Hz;
        const bool both = before && (certain_[point] || TellsImages(view, seenFrom_Hz_[point]));
        certain_[point] = station_[point] && (both || !view.tunable);
        // Beside a station its own power is seen, which is none of this channel's.
        const double level =
            look.carrier ? look.level : std::min(look.level, static_cast<double>(kSeekThreshold));
        levels_[point] = static_cast<std::uint8_t>(std::lround(level));
        seen_ms_[point] = now_ms;
    }
}

std::optional<bool> CBandMemory::Station(std::size_t point, std::uint64_t since_ms) const {
    if (levels_[point] == kNeverSeen || seen_ms_[point] < since_ms) return std::nullopt;
    return station_[point];
}

std::optional<double> CBandMemory::Doubt_Hz(std::size_t point) const {
    if (!station_[point] || certain_[point]) return std::nullopt;
    return seenFrom_Hz_[point];
}

CBandSeek::CBandSeek(std::uint32_t from_10kHz, bool up)
    : from_((from_10kHz - kBandBottom_10kHz) / kRaster_10kHz),
      fromChannel_(from_10kHz),
      up_(up),
      point_(from_) {
    // Downwards from between two raster points the lower one is the next.
    if (!up && (from_10kHz - kBandBottom_10kHz) % kRaster_10kHz != 0) point_ = from_ + 1;
    point_ = up ? (point_ + 1) % kRasterPoints : (point_ + kRasterPoints - 1) % kRasterPoints;
}

CBandSeek::Where CBandSeek::GoOn(const CBandMemory& memory, std::uint64_t since_ms) {
    doubt_Hz_.reset();
    for (; steps_ < kRasterPoints; ++steps_) {
        if (ChannelAt(point_) == fromChannel_) return Where::kNothing;
        const std::optional<bool> station = memory.Station(point_, since_ms);
        if (!station) return Where::kUnknown;
        if (*station) {
            doubt_Hz_ = memory.Doubt_Hz(point_);
            return doubt_Hz_ ? Where::kUnknown : Where::kFound;
        }
        point_ = up_ ? (point_ + 1) % kRasterPoints : (point_ + kRasterPoints - 1) % kRasterPoints;
    }
    return Where::kNothing;
}

std::uint32_t CBandSeek::Channel_10kHz() const {
    return ChannelAt(point_);
}

double CBandSeek::Centre_Hz(double halfWidth_Hz) const {
    if (doubt_Hz_) {
        const double away_Hz = *doubt_Hz_ - ChannelAt(point_) * 1e4;
        const bool towards = std::fabs(away_Hz) >= kNearChannel_Hz;
        const double move_Hz = kOtherCentre * halfWidth_Hz;
        const double other_Hz = *doubt_Hz_ + std::copysign(move_Hz, towards ? -away_Hz : away_Hz);
        return (std::floor(other_Hz / kRaster_Hz) + 0.5) * kRaster_Hz;
    }
    const double ahead_Hz = std::floor(halfWidth_Hz / kRaster_Hz - 0.5) * kRaster_Hz + kRaster_Hz / 2.0;
    return ChannelAt(point_) * 1e4 + (up_ ? ahead_Hz : -ahead_Hz);
}

}  // namespace fm
