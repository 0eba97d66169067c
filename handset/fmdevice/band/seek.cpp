// The seek over the raster of the band.
#include "handset/fmdevice/band/seek.h"

namespace fm {
namespace {

constexpr std::uint32_t kRasterPoints = (kBandTop_10kHz - kBandBottom_10kHz) / kRaster_10kHz + 1;

std::uint32_t ChannelAt(std::uint32_t point) {
    return kBandBottom_10kHz + point * kRaster_10kHz;
}

}  // namespace

SeekResult SeekStation(std::uint32_t from, bool up, bool wrap,
                       const std::function<int(std::uint32_t channel)>& level) {
    SeekResult result;
    const std::uint32_t offset = from - kBandBottom_10kHz;
    // Downwards from between two raster points the lower one is the next.
    std::uint32_t point = offset / kRaster_10kHz + (!up && offset % kRaster_10kHz != 0 ? 1 : 0);
    while (result.steps < kRasterPoints) {
        const bool atEnd = up ? point + 1 >= kRasterPoints : point == 0;
        if (atEnd && !wrap) return result;
        if (atEnd)
            point = up ? 0 : kRasterPoints - 1;
        else
            point = up ? point + 1 : point - 1;
        if (ChannelAt(point) == from) return result;
        ++result.steps;
        if (level(ChannelAt(point)) <= kSeekThreshold) continue;
        result.found = true;
        result.channel = ChannelAt(point);
        return result;
    }
    return result;
}

}  // namespace fm
