// The widths of the channel.
#include "handset/fmdevice/sdr/channel_filter.h"

#include "handset/fmdevice/sdr/mpx_block.h"

namespace sdr {
namespace {

constexpr std::size_t kTaps = 47;

std::vector<double> TapsOf(ChannelWidth width) {
    if (width == ChannelWidth::kWide) {
        std::vector<double> pass(kTaps, 0.0);
        pass[kTaps / 2] = 1.0;
        return pass;
    }
    const LowPass filter = width == ChannelWidth::kMedium ? LowPass{kMpxRate_Hz, 95000.0, 130000.0, 60.0}
                                                          : LowPass{kMpxRate_Hz, 70000.0, 105000.0, 60.0};
    return DesignLowPass(filter, kTaps);
}

}  // namespace

CChannelFilter::CChannelFilter()
    : taps_{TapsOf(ChannelWidth::kWide), TapsOf(ChannelWidth::kMedium), TapsOf(ChannelWidth::kNarrow)},
      filter_(taps_[0]) {}

void CChannelFilter::SetWidth(ChannelWidth width) {
    if (width == width_) return;
    width_ = width;
    filter_.SetTaps(taps_[static_cast<std::size_t>(width)]);
}

double CChannelFilter::ResponseAt(ChannelWidth width, double frequency_Hz) {
    return sdr::ResponseAt(TapsOf(width), kMpxRate_Hz, frequency_Hz);
}

double CChannelFilter::NoiseBandwidth_Hz(ChannelWidth width) {
    double power = 0.0;
    for (const double tap : TapsOf(width)) power += tap * tap;
    return power * kMpxRate_Hz;
}

double CChannelFilter::NarrowNoiseBandwidth_Hz() {
    static const double bandwidth_Hz = NoiseBandwidth_Hz(ChannelWidth::kNarrow);
    return bandwidth_Hz;
}

}  // namespace sdr
