// Carrier-to-noise density, offset and neighbours.
#include "handset/fmdevice/sdr/signal_meter.h"

#include <algorithm>
#include <cmath>

#include "handset/fmdevice/sdr/discriminator.h"
#include "handset/fmdevice/sdr/kernels.h"
#include "handset/fmdevice/sdr/mpx_block.h"

namespace sdr {
namespace {

constexpr std::size_t kWindowSamples = 7680;  // 20 ms
constexpr std::size_t kSpectrumSize = 512;
constexpr std::size_t kSpectrumGap = 1920;  // from one to the next: 5 ms
constexpr std::size_t kSpectraInWindow = 4;
constexpr std::size_t kBesideSize = 256;
constexpr std::size_t kBesideSpectra = 10;
constexpr std::size_t kBesideEvery = 4;  // blocks
constexpr double kDeviation_Hz = 75000.0;
// A new window's share of what is shown: an even mean at first, then one over some 200 ms.
constexpr double kLeastShare = 0.1;
// The offset needs longer, for the sound's lowest tones are in its way.
constexpr double kLeastOffsetShare = 0.03;
// Nothing below can be told from noise.
constexpr double kLowest_dBHz = 40.0;
constexpr double kHighest_dBHz = 150.0;
// Below the first the envelope is believed, above the second the multiplex.
constexpr double kEnvelope_dBHz = 72.0;
constexpr double kMultiplex_dBHz = 78.0;

struct Place {
    double from_Hz;
    double to_Hz;
};
// Beside the subcarriers at 67 and 92 kHz, and that of 76 kHz.
constexpr std::array<Place, 3> kPlacesOfNoise = {
    {{70000.0, 74000.0}, {80000.0, 87000.0}, {97000.0, 104000.0}}};
// So much quieter than the mean of all three one has to be, before it is believed alone: chance does less.
constexpr double kSubcarrier = 1.5;

double Share(std::size_t windows, double least) {
    return std::max(1.0 / static_cast<double>(windows), least);
}

double Decibels(double ratio) {
    return ratio > 0.0 ? std::clamp(10.0 * std::log10(ratio), kLowest_dBHz, kHighest_dBHz) : kLowest_dBHz;
}

}  // namespace

double LevelOf(double carrierToNoise_dBHz) {
    return std::clamp(carrierToNoise_dBHz - 48.0, 0.0, 100.0);
}

CSignalMeter::CSignalMeter(double noiseBandwidth_Hz)
    : noiseBandwidth_Hz_(noiseBandwidth_Hz), spectrum_(kSpectrumSize), beside_(kBesideSize) {
    Reset();
}

void CSignalMeter::Reset() {
    second_ = fourth_ = 0.0;
    samples_ = kurtosisWindows_ = 0;
    stretch_.clear();
    density_.assign(kSpectrumSize, 0.0);
    spectra_ = gap_ = noiseWindows_ = 0;
    sum_ = 0.0;
    summed_ = meanWindows_ = 0;
    besideDensity_.assign(kBesideSize, 0.0);
    besideSpectra_ = 0;
    carrierToNoise_dBHz_ = offset_Hz_ = neighbourShare_ = {};
}

Measured CSignalMeter::Aged(const Value& value) const {
    return {value.value, value.present ? now_s_ - value.at_s : 0.0, value.present};
}

Measured CSignalMeter::Level() const {
    Measured level = CarrierToNoise_dBHz();
    level.value = level.present ? LevelOf(level.value) : 0.0;
    return level;
}

void CSignalMeter::AddChannel(const Sample* channel, const Sample* filtered, ChannelWidth width,
                              std::size_t count) {
    now_s_ += static_cast<double>(count) / kMpxRate_Hz;
    // A neighbour would make the envelope fluctuate: beside one, what the narrow filter leaves is looked at.
    const bool narrow = width == ChannelWidth::kNarrow;
    if (windowWidth_ != width && (narrow || windowWidth_ == ChannelWidth::kNarrow)) {
        second_ = fourth_ = 0.0;
        samples_ = kurtosisWindows_ = 0;
    }
    windowWidth_ = width;
    windowBandwidth_Hz_ =
        narrow ? std::min(CChannelFilter::NarrowNoiseBandwidth_Hz(), noiseBandwidth_Hz_) : noiseBandwidth_Hz_;
    const Moments moments = ActiveKernels().moments(Pairs(narrow ? filtered : channel), count);
    second_ += moments.second;
    fourth_ += moments.fourth;
    samples_ += count;
    if (samples_ >= kWindowSamples) EndEnvelopeWindow();
    LookBeside(channel, count);
}

void CSignalMeter::EndEnvelopeWindow() {
    const auto count = static_cast<double>(samples_);
    // 1 for a bare carrier, 2 for noise alone.
    const double kurtosis = second_ > 0.0 ? fourth_ * count / (second_ * second_) : 2.0;
    second_ = fourth_ = 0.0;
    samples_ = 0;
    ++kurtosisWindows_;
    kurtosis_ += Share(kurtosisWindows_, kLeastShare) * (kurtosis - kurtosis_);
    Combine();
}

void CSignalMeter::AddMultiplex(const float* multiplex, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) sum_ += multiplex[i];
    summed_ += count;
    if (summed_ >= kWindowSamples) {
        ++meanWindows_;
        mean_ += Share(meanWindows_, kLeastOffsetShare) * (sum_ / static_cast<double>(summed_) - mean_);
        offset_Hz_ = {mean_ * kDeviation_Hz, now_s_, true};
        sum_ = 0.0;
        summed_ = 0;
    }
    gap_ += count;
    if (gap_ < kSpectrumGap && stretch_.empty()) return;
    const std::size_t taken = std::min(count, kSpectrumSize - stretch_.size());
    stretch_.insert(stretch_.end(), multiplex, multiplex + taken);
    if (stretch_.size() < kSpectrumSize) return;
    spectrum_.AddDensity(stretch_.data(), &density_);
    stretch_.clear();
    gap_ = 0;
    if (++spectra_ >= kSpectraInWindow) EndMultiplexWindow();
}

void CSignalMeter::EndMultiplexWindow() {
    constexpr double kBin_Hz = kMpxRate_Hz / kSpectrumSize;
    ++noiseWindows_;
    for (std::size_t place = 0; place < kPlaces; ++place) {
        const auto first = static_cast<std::size_t>(std::ceil(kPlacesOfNoise[place].from_Hz / kBin_Hz));
        const auto last = static_cast<std::size_t>(kPlacesOfNoise[place].to_Hz / kBin_Hz);
        double sum = 0.0;
        for (std::size_t k = first; k <= last; ++k) {
            const double frequency_Hz = static_cast<double>(k) * kBin_Hz;
            const double gain = CDiscriminator::ResponseAt(frequency_Hz) * frequency_Hz / kDeviation_Hz;
            // Both sides of the real signal's spectrum.
            sum += 2.0 * density_[k] / kMpxRate_Hz / (gain * gain);
        }
        const double noise = sum / static_cast<double>(last - first + 1) / static_cast<double>(spectra_);
        noise_[place] += Share(noiseWindows_, kLeastShare) * (noise - noise_[place]);
    }
    density_.assign(kSpectrumSize, 0.0);
    spectra_ = 0;
    Combine();
}

void CSignalMeter::Combine() {
    if (noiseWindows_ == 0 || kurtosisWindows_ == 0) return;
    const double mean = (noise_[0] + noise_[1] + noise_[2]) / 3.0;
    const double least = *std::min_element(noise_.begin(), noise_.end());
    const double byMultiplex_dBHz =
        Decibels(1.0 / std::max(mean > kSubcarrier * least ? least : mean, 1e-16));
    const double carrier = std::sqrt(std::max(2.0 - kurtosis_, 0.0));  // its share of the power
    const double byEnvelope_dBHz =
        carrier < 1.0 ? Decibels(carrier / (1.0 - carrier) * windowBandwidth_Hz_) : byMultiplex_dBHz;
    const double weight =
        std::clamp((byMultiplex_dBHz - kEnvelope_dBHz) / (kMultiplex_dBHz - kEnvelope_dBHz), 0.0, 1.0);
    carrierToNoise_dBHz_ = {weight * byMultiplex_dBHz + (1.0 - weight) * byEnvelope_dBHz, now_s_, true};
}

void CSignalMeter::LookBeside(const Sample* channel, std::size_t count) {
    if (count < kBesideSize || ++besideBlocks_ % kBesideEvery != 0) return;
    beside_.AddDensity(channel, &besideDensity_);
    if (++besideSpectra_ < kBesideSpectra) return;
    constexpr double kBin_Hz = kMpxRate_Hz / kBesideSize;
    double within = 0.0;
    double beside = 0.0;
    for (std::size_t k = 0; k < kBesideSize; ++k) {
        const double away_Hz = kBin_Hz * static_cast<double>(std::min(k, kBesideSize - k));
        if (away_Hz <= 100000.0) within += besideDensity_[k];
        if (away_Hz >= 130000.0 && away_Hz <= 185000.0) beside += besideDensity_[k];
    }
    neighbourShare_ = {within > 0.0 ? beside / within : 0.0, now_s_, true};
    besideDensity_.assign(kBesideSize, 0.0);
    besideSpectra_ = 0;
}

}  // namespace sdr
