// How well a station comes in. Portable.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "handset/fmdevice/sdr/channel_filter.h"
#include "handset/fmdevice/sdr/fourier.h"
#include "handset/fmdevice/sdr/sample.h"

namespace sdr {

// A value and the time that has passed in the stream since it was measured; before the first one it is not
// there.
struct Measured {
    double value = 0.0;
    double age_s = 0.0;
    bool present = false;
};

// The level that a handset shows: 0 to 100. 15 stands for FM's threshold, 20 for stereo of some use.
[[nodiscard]] double LevelOf(double carrierToNoise_dBHz);

// Two ways to the density of the noise, each good where the other is not. Near FM's threshold, and below,
// from how much the envelope of the carrier fluctuates, which is as steady as a rock whatever the sound. Well
// above it from the multiplex between 70 and 104 kHz, where nobody sends sound: there FM's noise grows with
// the square of the frequency. Where a subcarrier stands after all, the quietest of three places is believed.
// One thread at a time.
class CSignalMeter {
  public:
    // noiseBandwidth_Hz: of the channelizer.
    explicit CSignalMeter(double noiseBandwidth_Hz);

    // What the channelizer gives, and the same behind a filter of the given width: whichever is meant for the
    // envelope.
    void AddChannel(const Sample* channel, const Sample* filtered, ChannelWidth width, std::size_t count);
    // The multiplex of the same samples.
    void AddMultiplex(const float* multiplex, std::size_t count);
    // Another station.
    void Reset();

    [[nodiscard]] Measured CarrierToNoise_dBHz() const { return Aged(carrierToNoise_dBHz_); }
    [[nodiscard]] Measured Level() const;
    // Seen from where the receiver is tuned.
    [[nodiscard]] Measured CarrierOffset_Hz() const { return Aged(offset_Hz_); }
    // The power beside the channel, 130 to 185 kHz away, as a share of the power within 100 kHz.
    [[nodiscard]] Measured NeighbourShare() const { return Aged(neighbourShare_); }

  private:
    struct Value {
        double value = 0.0;
        double at_s = 0.0;
        bool present = false;
    };
    static constexpr std::size_t kPlaces = 3;

    [[nodiscard]] Measured Aged(const Value& value) const;
    void EndEnvelopeWindow();
    void EndMultiplexWindow();
    void Combine();
    void LookBeside(const Sample* channel, std::size_t count);

    double noiseBandwidth_Hz_;
    double now_s_ = 0.0;

    double windowBandwidth_Hz_ = 0.0;
    ChannelWidth windowWidth_ = ChannelWidth::kWide;
    double second_ = 0.0;
    double fourth_ = 0.0;
    std::size_t samples_ = 0;
    double kurtosis_ = 0.0;
    std::size_t kurtosisWindows_ = 0;

    CFourierTransform spectrum_;
    std::vector<float> stretch_;
    std::vector<double> density_;
    std::size_t spectra_ = 0;
    std::size_t gap_ = 0;
    std::array<double, kPlaces> noise_{};
    std::size_t noiseWindows_ = 0;
    double sum_ = 0.0;
    std::size_t summed_ = 0;
    double mean_ = 0.0;
    std::size_t meanWindows_ = 0;

    CFourierTransform beside_;
    std::vector<double> besideDensity_;
    std::size_t besideSpectra_ = 0;
    std::size_t besideBlocks_ = 0;

    Value carrierToNoise_dBHz_;
    Value offset_Hz_;
    Value neighbourShare_;
};

}  // namespace sdr
