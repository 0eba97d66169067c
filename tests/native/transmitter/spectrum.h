// Single lines and bands of a sampled signal, measured under a window that leaves nothing between them.
#pragma once

#include <cmath>
#include <complex>
#include <cstddef>
#include <vector>

namespace test {

constexpr double kPi = 3.14159265358979323846;

// The line at `frequency_Hz`: its size and its phase as a cosine at the first sample. Four Blackman-Harris
// terms: what is five bins away is -92 dB and less.
template <typename Sample>
std::complex<double> Line(const std::vector<Sample>& samples, double rate_Hz, double frequency_Hz) {
    constexpr double kTerms[] = {0.35875, -0.48829, 0.14128, -0.01168};
    const auto count = static_cast<double>(samples.size());
    std::complex<double> sum = 0;
    double weight = 0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const auto at = static_cast<double>(i);
        // The cosines of twice and three times an angle out of its own.
        const double c = std::cos(2 * kPi * at / count);
        const double window =
            kTerms[0] + kTerms[1] * c + kTerms[2] * (2 * c * c - 1) + kTerms[3] * (4 * c * c - 3) * c;
        const double turns = std::fmod(frequency_Hz * at / rate_Hz, 1.0);
        sum += window * std::complex<double>(samples[i]) * std::polar(1.0, -2 * kPi * turns);
        weight += window;
    }
    return sum / weight;
}

// The amplitude of a sine in real samples.
template <typename Sample>
double Amplitude(const std::vector<Sample>& samples, double rate_Hz, double frequency_Hz) {
    return 2 * std::abs(Line(samples, rate_Hz, frequency_Hz));
}

inline double Decibel(double ratio) {
    return 20 * std::log10(ratio);
}

// How far each sample's phase is ahead of the one before, in Hz of deviation.
inline std::vector<double> Discriminated(const std::vector<std::complex<float>>& samples, double rate_Hz) {
    std::vector<double> deviation_Hz;
    for (std::size_t i = 1; i < samples.size(); ++i) {
        const std::complex<double> before(samples[i - 1]), here(samples[i]);
        deviation_Hz.push_back(std::arg(here * std::conj(before)) * rate_Hz / (2 * kPi));
    }
    return deviation_Hz;
}

// What a difference of phases leaves of a frequency.
inline double Droop(double frequency_Hz, double rate_Hz) {
    const double angle = kPi * frequency_Hz / rate_Hz;
    return angle == 0 ? 1 : std::sin(angle) / angle;
}

}  // namespace test
