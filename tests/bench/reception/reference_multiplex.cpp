#include "tests/bench/reception/reference_multiplex.h"

#include <algorithm>
#include <cmath>

#include "handset/transmitter/windowed_sinc.h"

namespace bench {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kAttenuation_dB = 80;

// A low-pass at the rate of the samples; its taps add up to 1.
std::vector<float> Taps(double pass_Hz, double stop_Hz, double rate_Hz, double part) {
    const transmitter::CWindowedSinc filter(pass_Hz, stop_Hz, kAttenuation_dB);
    const int half = static_cast<int>(std::ceil(filter.Reach_s() * rate_Hz));
    std::vector<float> taps;
    for (int tap = -half; tap <= half + 1; ++tap) {
        taps.push_back(static_cast<float>(filter.At((tap - part) / rate_Hz) / rate_Hz));
    }
    return taps;
}

std::vector<std::complex<float>> Narrowed(const std::vector<std::complex<float>>& samples, double rate_Hz,
                                          double halfWidth_Hz) {
    const double stop_Hz = std::min(1.3 * halfWidth_Hz, rate_Hz / 2);
    if (halfWidth_Hz >= 0.45 * rate_Hz) return samples;
    const std::vector<float> taps = Taps(halfWidth_Hz, stop_Hz, rate_Hz, 0);
    std::vector<std::complex<float>> narrowed;
    if (samples.size() < taps.size()) return narrowed;
    narrowed.reserve(samples.size());
    for (std::size_t at = 0; at + taps.size() <= samples.size(); ++at) {
        float real = 0, imaginary = 0;
        for (std::size_t tap = 0; tap < taps.size(); ++tap) {
            real += taps[tap] * samples[at + tap].real();
            imaginary += taps[tap] * samples[at + tap].imag();
        }
        narrowed.emplace_back(real, imaginary);
    }
    return narrowed;
}

}  // namespace

std::vector<std::int16_t> ReferenceMultiplex(const std::vector<std::complex<float>>& samples, double rate_Hz,
                                             double halfWidth_Hz) {
    const std::vector<std::complex<float>> carrier = Narrowed(samples, rate_Hz, halfWidth_Hz);
    std::vector<float> deviation;  // 1 is 75 kHz
    for (std::size_t i = 1; i < carrier.size(); ++i) {
        deviation.push_back(static_cast<float>(std::arg(carrier[i] * std::conj(carrier[i - 1])) * rate_Hz /
                                               (2 * kPi * 75000)));
    }
    // Sixty-four places between two samples are near enough for a signal of 16 bits that ends at 60 kHz.
    constexpr std::size_t kPlaces = 64;
    std::vector<std::vector<float>> rows;
    for (std::size_t place = 0; place < kPlaces; ++place) {
        rows.push_back(Taps(66000, 88000, rate_Hz, (static_cast<double>(place) + 0.5) / kPlaces));
    }
    std::vector<std::int16_t> multiplex;
    for (std::size_t i = 0;; ++i) {
        const double time = static_cast<double>(i) * rate_Hz / kPeerRate_Hz;
        const auto whole = static_cast<std::size_t>(time);
        const std::vector<float>& row =
            rows[static_cast<std::size_t>((time - static_cast<double>(whole)) * kPlaces)];
        if (whole + row.size() > deviation.size()) return multiplex;
        float sum = 0;
        for (std::size_t tap = 0; tap < row.size(); ++tap) sum += row[tap] * deviation[whole + tap];
        multiplex.push_back(
            static_cast<std::int16_t>(std::clamp(std::lrintf(sum * 32767 / 3), -32768l, 32767l)));
    }
}

}  // namespace bench
