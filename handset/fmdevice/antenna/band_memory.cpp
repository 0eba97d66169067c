#include "handset/fmdevice/antenna/band_memory.h"

#include <algorithm>
#include <cmath>

namespace fm {
namespace {

constexpr double kRaster_Hz = 1e5;

std::uint32_t ChannelAt(std::size_t point) {
    return kBandBottom_10kHz + static_cast<std::uint32_t>(point) * kRaster_10kHz;
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

void CBandMemory::See(const std::vector<sdr::ChannelLook>& looks, std::uint64_t now_ms) {
    for (const sdr::ChannelLook& look : looks) {
        const double place = (look.frequency_Hz / 1e4 - kBandBottom_10kHz) / kRaster_10kHz;
        const auto point = static_cast<std::size_t>(std::lround(std::max(place, 0.0)));
        if (point >= kRasterPoints) continue;
        station_[point] = look.carrier && look.level > kSeekThreshold;
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
    for (; steps_ < kRasterPoints; ++steps_) {
        if (ChannelAt(point_) == fromChannel_) return Where::kNothing;
        const std::optional<bool> station = memory.Station(point_, since_ms);
        if (!station) return Where::kUnknown;
        if (*station) return Where::kFound;
        point_ = up_ ? (point_ + 1) % kRasterPoints : (point_ + kRasterPoints - 1) % kRasterPoints;
    }
    return Where::kNothing;
}

std::uint32_t CBandSeek::Channel_10kHz() const {
    return ChannelAt(point_);
}

double CBandSeek::Centre_Hz(double halfWidth_Hz) const {
    const double ahead_Hz = std::floor(halfWidth_Hz / kRaster_Hz - 0.5) * kRaster_Hz + kRaster_Hz / 2.0;
    return ChannelAt(point_) * 1e4 + (up_ ? ahead_Hz : -ahead_Hz);
}

}  // namespace fm
