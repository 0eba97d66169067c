// How much of the channel goes to the discriminator: all of it for sound without distortion, less for a weak
// station or one with a strong neighbour. Portable.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "handset/fmdevice/sdr/pair_filter.h"

namespace sdr {

enum class ChannelWidth : std::uint8_t {
    kWide,    // all that the channelizer lets through
    kMedium,  // what FM with a full multiplex needs: less noise, so that weak stations come later to their
              // threshold
    kNarrow,  // what is left beside a strong neighbour at 200 kHz
};
constexpr std::size_t kChannelWidths = 3;

// At the multiplex's rate; each width takes the same time, so changing it leaves no gap. One thread at a
// time.
class CChannelFilter {
  public:
    CChannelFilter();
    void SetWidth(ChannelWidth width);
    [[nodiscard]] ChannelWidth Width() const { return width_; }
    // As many results as samples.
    void Process(const float* pairs, std::size_t count, float* results) {
        filter_.Process(pairs, count, results);
    }
    void Reset() { filter_.Reset(); }

    [[nodiscard]] static double ResponseAt(ChannelWidth width, double frequency_Hz);
    // Of white noise at the input.
    [[nodiscard]] static double NoiseBandwidth_Hz(ChannelWidth width);
    [[nodiscard]] static double NarrowNoiseBandwidth_Hz();

  private:
    ChannelWidth width_ = ChannelWidth::kWide;
    std::array<std::vector<double>, kChannelWidths> taps_;
    CPairFilter filter_;
};

}  // namespace sdr
