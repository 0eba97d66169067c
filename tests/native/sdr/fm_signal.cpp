#include "tests/native/sdr/fm_signal.h"

#include <cmath>
#include <random>

namespace sdr_test {
namespace {

constexpr double kTwoPi = 6.283185307179586;

}  // namespace

std::vector<sdr::Sample> MakeFm(const FmSignal& signal) {
    const double tone = kTwoPi * signal.tone_Hz;
    const double pilot = kTwoPi * signal.pilot_Hz;
    const double deviation = kTwoPi * 75000.0;
    const double sum = FmSignal::kProgramme * (signal.left + signal.right) / 2.0;
    const double difference =
        signal.pilot > 0.0 ? FmSignal::kProgramme * (signal.left - signal.right) / 2.0 : 0.0;
    std::vector<sdr::Sample> samples(static_cast<std::size_t>(signal.rate_Hz * signal.seconds));
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double t = static_cast<double>(i) / signal.rate_Hz;
        // The integral of sum * cos(tone t) + difference * cos(tone t) * sin(2 pilot t) + pilot * sin(pilot
        // t).
        const double integral = sum * std::sin(tone * t) / tone -
                                difference / 2.0 *
                                    (std::cos((2.0 * pilot + tone) * t) / (2.0 * pilot + tone) +
                                     std::cos((2.0 * pilot - tone) * t) / (2.0 * pilot - tone)) -
                                signal.pilot * std::cos(pilot * t) / pilot;
        const double phase = deviation * integral + kTwoPi * signal.offset_Hz * t;
        samples[i] = sdr::Sample(static_cast<float>(signal.amplitude * std::cos(phase)),
                                 static_cast<float>(signal.amplitude * std::sin(phase))) +
                     signal.direct;
    }
    if (signal.carrierToNoise_dBHz != 0.0) {
        const double density =
            signal.amplitude * signal.amplitude / std::pow(10.0, signal.carrierToNoise_dBHz / 10.0);
        AddNoise(density * signal.rate_Hz, 1, &samples);
    }
    return samples;
}

void AddNoise(double power, unsigned seed, std::vector<sdr::Sample>* samples) {
    std::mt19937 random(seed);
    std::normal_distribution<float> normal(0.0f, static_cast<float>(std::sqrt(power / 2.0)));
    for (sdr::Sample& sample : *samples) sample += sdr::Sample(normal(random), normal(random));
}

}  // namespace sdr_test
