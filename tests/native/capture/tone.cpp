// Tones made and measured.
#include "tests/native/capture/tone.h"

#include <cmath>

namespace test {
namespace {

constexpr double kTwoPi = 6.28318530717958647692;

std::int16_t ToneSample(double frequency_Hz, double rate_Hz, std::size_t frame, double peak) {
    const double angle = kTwoPi * frequency_Hz * static_cast<double>(frame) / rate_Hz;
    return static_cast<std::int16_t>(std::lrint(peak * 32767 * std::sin(angle)));
}

}  // namespace

std::vector<std::int16_t> StereoTone(double frequency_Hz, std::size_t frames, double peak) {
    std::vector<std::int16_t> samples;
    for (std::size_t i = 0; i < frames; ++i)
        samples.insert(samples.end(), 2, ToneSample(frequency_Hz, 44100, i, peak));
    return samples;
}

std::vector<std::int16_t> SpeechRateTone(double seconds) {
    std::vector<std::int16_t> samples(static_cast<std::size_t>(std::lrint(seconds * 8000)));
    for (std::size_t i = 0; i < samples.size(); ++i) samples[i] = ToneSample(440, 8000, i, 0.5);
    return samples;
}

double TonePeak(const std::vector<std::int16_t>& samples, std::size_t channels, std::size_t channel,
                double frequency_Hz, double rate_Hz) {
    double real = 0;
    double imaginary = 0;
    double weights = 0;
    const std::size_t frames = samples.size() / channels;
    for (std::size_t i = 0; i < frames; ++i) {
        const double angle = kTwoPi * frequency_Hz * static_cast<double>(i) / rate_Hz;
        // Hann's window keeps other tones out.
        const double weight = 1 - std::cos(kTwoPi * static_cast<double>(i) / static_cast<double>(frames));
        real += weight * samples[i * channels + channel] * std::cos(angle);
        imaginary += weight * samples[i * channels + channel] * std::sin(angle);
        weights += weight;
    }
    return 2 * std::hypot(real, imaginary) / weights / 32768;
}

double Loudness(const std::vector<std::int16_t>& samples) {
    double sum = 0;
    for (const std::int16_t sample : samples) sum += static_cast<double>(sample) * sample;
    return std::sqrt(sum / static_cast<double>(samples.size())) / 32768;
}

double Decibels(double ratio) {
    return 20 * std::log10(ratio);
}

}  // namespace test
