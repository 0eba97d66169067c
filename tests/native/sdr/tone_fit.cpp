#include "tests/native/sdr/tone_fit.h"

#include <cmath>

namespace sdr_test {

double Decibels(double ratio) {
    return 20.0 * std::log10(ratio);
}

double ToneFit::Sinad_dB() const {
    return Decibels(amplitude / std::sqrt(2.0) / rest);
}

ToneFit FitTone(const std::vector<float>& frames, std::size_t channels, std::size_t channel, std::size_t from,
                double rate_Hz, double tone_Hz) {
    std::size_t count = frames.size() / channels - from;
    const auto second = static_cast<std::size_t>(rate_Hz);
    if (count >= second) count -= count % second;
    const double step = 6.283185307179586 * tone_Hz / rate_Hz;
    double cosine = 0.0;
    double sine = 0.0;
    double mean = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        const double value = frames[(from + i) * channels + channel];
        cosine += value * std::cos(step * static_cast<double>(i));
        sine += value * std::sin(step * static_cast<double>(i));
        mean += value;
    }
    cosine *= 2.0 / static_cast<double>(count);
    sine *= 2.0 / static_cast<double>(count);
    mean /= static_cast<double>(count);
    double rest = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        const double value = frames[(from + i) * channels + channel] - mean -
                             cosine * std::cos(step * static_cast<double>(i)) -
                             sine * std::sin(step * static_cast<double>(i));
        rest += value * value;
    }
    return {std::hypot(cosine, sine), std::sqrt(rest / static_cast<double>(count))};
}

}  // namespace sdr_test
