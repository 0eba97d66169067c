#include "tests/support/heard_tone.h"

#include <cmath>

namespace test {
namespace {

double PowerAt(const std::vector<std::int16_t>& samples, double frequency_Hz, int rate_Hz) {
    double real = 0, imaginary = 0;
    const double step = 2 * 3.14159265358979 * frequency_Hz / rate_Hz;
    for (std::size_t at = 0; at < samples.size(); ++at) {
        const double angle = step * static_cast<double>(at);
        real += samples[at] * std::cos(angle);
        imaginary += samples[at] * std::sin(angle);
    }
    const double count = static_cast<double>(samples.size());
    return 2 * (real * real + imaginary * imaginary) / (count * count);
}

}  // namespace

Tone ToneAt(const std::vector<std::int16_t>& sound, int rate_Hz, double place, const ToneRange& range) {
    const auto second = static_cast<std::size_t>(rate_Hz);
    if (sound.size() < second) return {};
    const auto from =
        sound.begin() + static_cast<std::ptrdiff_t>(static_cast<double>(sound.size() - second) * place);
    const std::vector<std::int16_t> samples(from, from + static_cast<std::ptrdiff_t>(second));
    double total = 0;
    for (const std::int16_t sample : samples) total += static_cast<double>(sample) * sample;
    total /= static_cast<double>(samples.size());
    Tone tone;
    double most = 0;
    for (int frequency = range.from_Hz; frequency <= range.to_Hz; frequency += range.step_Hz) {
        const double power = PowerAt(samples, frequency, rate_Hz);
        if (power <= most) continue;
        most = power;
        tone.frequency_Hz = frequency;
    }
    tone.share = total > 0 ? most / total : 0;
    return tone;
}

}  // namespace test
