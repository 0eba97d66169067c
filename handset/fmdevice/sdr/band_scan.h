// The levels of all channels in view, from one stretch of samples. Portable.
#pragma once

#include <cstddef>
#include <vector>

#include "handset/fmdevice/sdr/fourier.h"
#include "handset/fmdevice/sdr/sample.h"

namespace sdr {

struct ChannelLook {
    double frequency_Hz = 0.0;
    double carrierToNoise_dBHz = 0.0;
    double level = 0.0;             // 0 to 100
    double carrierOffset_Hz = 0.0;  // where the power around it has its middle
    bool carrier = false;           // a station stands here, and not beside
};

// Samples of one tuning; some 20 ms of them tell enough. One thread at a time.
class CBandLook {
  public:
    // A station's offset is below this where it belongs.
    static constexpr double kMostOffset_Hz = 25000.0;
    // So much a carrier needs to be told from noise.
    static constexpr double kLeast_dBHz = 54.0;

    explicit CBandLook(double rate_Hz);

    // Blocks of any size.
    void Add(const Sample* samples, std::size_t count);
    [[nodiscard]] double Seconds() const;
    void Restart();
    // Channels beyond UsableHalfWidth_Hz() from the centre are left out.
    [[nodiscard]] std::vector<ChannelLook> Channels(double centre_Hz,
                                                    const std::vector<double>& frequencies_Hz) const;

    // How far from the centre a channel may be: the tuner's filter and the folding begin beyond.
    [[nodiscard]] double UsableHalfWidth_Hz() const;
    // Where to tune for a whole band, one look after the other.
    [[nodiscard]] static std::vector<double> Centres(double from_Hz, double to_Hz, double rate_Hz);

  private:
    [[nodiscard]] double NoiseFloor() const;
    [[nodiscard]] double DensityAt(std::ptrdiff_t bin) const;

    double rate_Hz_;
    CFourierTransform fourier_;
    std::vector<Sample> pending_;
    std::vector<double> density_;
    std::size_t spectra_ = 0;
};

}  // namespace sdr
