// Spectrum, floor and carriers.
#include "handset/fmdevice/sdr/band_scan.h"

#include <algorithm>
#include <cmath>

#include "handset/fmdevice/sdr/signal_meter.h"

namespace sdr {
namespace {

// Bins of some 2 kHz or less.
constexpr double kBin_Hz = 2000.0;
constexpr double kUsable = 0.42;
// What belongs to a channel: for its power, and for its middle, which a neighbour must not move.
constexpr double kChannelHalf_Hz = 90000.0;
constexpr double kMiddleHalf_Hz = 75000.0;
// The floor is where a tenth of the spectrum lies below, after so many bins were made one.
constexpr std::size_t kSmoothed = 8;
constexpr double kQuantile = 0.1;
constexpr double kQuantileDeviations = 1.28;

std::size_t SizeFor(double rate_Hz) {
    std::size_t size = 128;
    while (rate_Hz / static_cast<double>(size) > kBin_Hz) size *= 2;
    return size;
}

}  // namespace

CBandLook::CBandLook(double rate_Hz) : rate_Hz_(rate_Hz), fourier_(SizeFor(rate_Hz)) {
    Restart();
}

void CBandLook::Restart() {
    pending_.clear();
    density_.assign(fourier_.Size(), 0.0);
    spectra_ = 0;
}

double CBandLook::Seconds() const {
    return static_cast<double>(spectra_ * fourier_.Size()) / rate_Hz_;
}

double CBandLook::UsableHalfWidth_Hz() const {
    return kUsable * rate_Hz_;
}

void CBandLook::Add(const Sample* samples, std::size_t count) {
    const std::size_t size = fourier_.Size();
    while (count > 0) {
        const std::size_t taken = std::min(count, size - pending_.size());
        for (std::size_t i = 0; i < taken; ++i) {
            // What is no number, or beyond anything real, is not looked at.
            const bool real = std::norm(samples[i]) <= 1e6f;
            pending_.push_back(real ? samples[i] : Sample());
        }
        samples += taken;
        count -= taken;
        if (pending_.size() < size) return;
        fourier_.AddDensity(pending_.data(), &density_);
        ++spectra_;
        pending_.clear();
    }
}

double CBandLook::DensityAt(std::ptrdiff_t bin) const {
    const auto size = static_cast<std::ptrdiff_t>(density_.size());
    return density_[static_cast<std::size_t>((bin % size + size) % size)];
}

double CBandLook::NoiseFloor() const {
    const auto last = static_cast<std::ptrdiff_t>(kUsable * static_cast<double>(density_.size()));
    std::vector<double> smoothed;
    for (std::ptrdiff_t bin = -last; bin + static_cast<std::ptrdiff_t>(kSmoothed) <= last;
         bin += kSmoothed / 2) {
        double sum = 0.0;
        for (std::size_t i = 0; i < kSmoothed; ++i) sum += DensityAt(bin + static_cast<std::ptrdiff_t>(i));
        smoothed.push_back(sum / kSmoothed);
    }
    const auto place = static_cast<std::size_t>(kQuantile * static_cast<double>(smoothed.size()));
    std::nth_element(smoothed.begin(), smoothed.begin() + static_cast<std::ptrdiff_t>(place), smoothed.end());
    const double fluctuation = kQuantileDeviations / std::sqrt(static_cast<double>(spectra_ * kSmoothed));
    return smoothed[place] / std::max(1.0 - fluctuation, 0.5);
}

std::vector<ChannelLook> CBandLook::Channels(double centre_Hz,
                                             const std::vector<double>& frequencies_Hz) const {
    std::vector<ChannelLook> looks;
    if (spectra_ == 0) return looks;
    const double bin_Hz = rate_Hz_ / static_cast<double>(density_.size());
    const double floor = NoiseFloor();
    for (const double frequency_Hz : frequencies_Hz) {
        const double at_Hz = frequency_Hz - centre_Hz;
        if (std::fabs(at_Hz) > UsableHalfWidth_Hz()) continue;
        ChannelLook look;
        look.frequency_Hz = frequency_Hz;
        double power = 0.0;
        double middle = 0.0;
        double weighed = 0.0;
        const auto first = static_cast<std::ptrdiff_t>(std::ceil((at_Hz - kChannelHalf_Hz) / bin_Hz));
        const auto last = static_cast<std::ptrdiff_t>(std::floor((at_Hz + kChannelHalf_Hz) / bin_Hz));
        for (std::ptrdiff_t bin = first; bin <= last; ++bin) {
            const double away_Hz = static_cast<double>(bin) * bin_Hz - at_Hz;
            const double above = DensityAt(bin) - floor;
            power += above;
            if (std::fabs(away_Hz) > kMiddleHalf_Hz) continue;
            middle += above;
            weighed += above * away_Hz;
        }
        const double ratio = floor > 0.0 ? power * bin_Hz / floor : 0.0;
        look.carrierToNoise_dBHz = ratio > 1e4 ? 10.0 * std::log10(ratio) : 40.0;
        look.level = LevelOf(look.carrierToNoise_dBHz);
        look.carrierOffset_Hz =
            middle > 0.0 ? std::clamp(weighed / middle, -kMiddleHalf_Hz, kMiddleHalf_Hz) : 0.0;
        look.carrier =
            look.carrierToNoise_dBHz >= kLeast_dBHz && std::fabs(look.carrierOffset_Hz) < kMostOffset_Hz;
        looks.push_back(look);
    }
    return looks;
}

std::vector<double> CBandLook::Centres(double from_Hz, double to_Hz, double rate_Hz) {
    const double width_Hz = 2.0 * kUsable * rate_Hz;
    const double looks = std::max(std::ceil((to_Hz - from_Hz) / width_Hz), 1.0);
    std::vector<double> centres;
    for (double i = 0.0; i < looks; i += 1.0)
        centres.push_back(from_Hz + (to_Hz - from_Hz) * (i + 0.5) / looks);
    return centres;
}

}  // namespace sdr
