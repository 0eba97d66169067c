// A windowed sinc (Kaiser's window), made at the common multiple of both rates.
#include "handset/capture/low_pass_bank.h"

#include <cmath>
#include <numeric>

namespace capture {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kStopBand_dB = 75;

// The modified Bessel function of the first kind, order 0.
double BesselI0(double x) {
    double sum = 1;
    double term = 1;
    for (int k = 1; term > sum * 1e-15; ++k) {
        term *= x / (2.0 * k) * (x / (2.0 * k));
        sum += term;
    }
    return sum;
}

// Kaiser's estimate of the length for a transition of `width_Hz`, rounded up to whole sixteens.
std::size_t TapsFor(double from_Hz, double width_Hz) {
    const double length = (kStopBand_dB - 8) / (2.285 * 2 * kPi * width_Hz / from_Hz);
    return (static_cast<std::size_t>(length) / 16 + 1) * 16;
}

double Sinc(double x) {
    return x == 0 ? 1 : std::sin(kPi * x) / (kPi * x);
}

}  // namespace

CLowPassBank::CLowPassBank(std::uint32_t from_Hz, std::uint32_t to_Hz, double pass_Hz, double stop_Hz) {
    const std::uint32_t common = std::gcd(from_Hz, to_Hz);
    phases_ = to_Hz / common;
    step_ = from_Hz / common;
    taps_ = TapsFor(from_Hz, stop_Hz - pass_Hz);
    factors_.resize(phases_ * taps_);

    const double beta = 0.1102 * (kStopBand_dB - 8.7);
    const double edge = (pass_Hz + stop_Hz) / 2 / from_Hz;  // in periods an input
    const double middle = static_cast<double>(taps_) / 2;
    for (std::uint32_t phase = 0; phase < phases_; ++phase) {
        float* const factors = factors_.data() + phase * taps_;
        double sum = 0;
        for (std::size_t age = 0; age < taps_; ++age) {
            const double place = static_cast<double>(age) + static_cast<double>(phase) / phases_ - middle;
            const double inside = 1 - place / middle * (place / middle);
            if (inside < 0) continue;
            const double factor = Sinc(2 * edge * place) * BesselI0(beta * std::sqrt(inside));
            factors[taps_ - 1 - age] = static_cast<float>(factor);
            sum += factor;
        }
        // Every phase alike at 0 Hz: a difference between them would be heard as a tone.
        for (std::size_t i = 0; i < taps_; ++i) factors[i] = static_cast<float>(factors[i] / sum);
    }
}

}  // namespace capture
