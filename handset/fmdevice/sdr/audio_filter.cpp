// Low-pass filters of the sound.
#include "handset/fmdevice/sdr/audio_filter.h"

#include <cmath>

#include "handset/fmdevice/sdr/mpx_block.h"

namespace sdr {
namespace {

constexpr double kPi = 3.14159265358979323846;

// Lets fold back only to where the second one stops everything.
std::vector<double> FirstTaps() {
    const LowPass filter{kMpxRate_Hz, 15000.0, kSoundRate_Hz - 17000.0, 95.0};
    return DesignLowPass(filter, TapsNeeded(filter));
}

std::vector<double> SecondTaps(DeEmphasis deEmphasis) {
    const LowPass filter{kSoundRate_Hz, 14600.0, 17000.0, 90.0};
    std::vector<double> taps = DesignShaped(filter, TapsNeeded(filter), [deEmphasis](double frequency_Hz) {
        return CAudioFilter::DeEmphasisGain(deEmphasis, frequency_Hz);
    });
    double sum = 0.0;
    for (const double tap : taps) sum += tap;
    for (double& tap : taps) tap /= sum;
    return taps;
}

double TimeConstant_s(DeEmphasis deEmphasis) {
    switch (deEmphasis) {
        case DeEmphasis::k50us:
            return 50e-6;
        case DeEmphasis::k75us:
            return 75e-6;
        case DeEmphasis::kNone:
            return 0.0;
    }
    return 0.0;
}

}  // namespace

double CAudioFilter::DeEmphasisGain(DeEmphasis deEmphasis, double frequency_Hz) {
    return 1.0 / std::hypot(1.0, 2.0 * kPi * frequency_Hz * TimeConstant_s(deEmphasis));
}

CAudioFilter::CAudioFilter(DeEmphasis deEmphasis)
    : firstTaps_(FirstTaps()),
      secondTaps_(SecondTaps(deEmphasis)),
      first_(firstTaps_, kSoundStep),
      second_(secondTaps_) {}

void CAudioFilter::Reset() {
    first_.Reset();
    second_.Reset();
}

void CAudioFilter::Process(const float* pairs, std::size_t count, float* sound) {
    between_.resize(2 * first_.MostResults(count));
    const std::size_t ready = first_.Process(pairs, count, between_.data());
    second_.Process(between_.data(), ready, sound);
}

double CAudioFilter::ResponseAt(double frequency_Hz) const {
    return sdr::ResponseAt(firstTaps_, kMpxRate_Hz, frequency_Hz) *
           sdr::ResponseAt(secondTaps_, kSoundRate_Hz, frequency_Hz);
}

}  // namespace sdr
