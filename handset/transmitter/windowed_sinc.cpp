#include "handset/transmitter/windowed_sinc.h"

#include <cmath>

namespace transmitter {
namespace {

constexpr double kPi = 3.14159265358979323846;

// The modified Bessel function of order 0.
double BesselI0(double x) {
    double sum = 1, term = 1;
    for (int k = 1; term > 1e-18 * sum; ++k) {
        term *= (x / (2.0 * k)) * (x / (2.0 * k));
        sum += term;
    }
    return sum;
}

}  // namespace

CWindowedSinc::CWindowedSinc(double pass_Hz, double stop_Hz, double attenuation_dB)
    : middle_Hz_((pass_Hz + stop_Hz) / 2),
      beta_(0.1102 * (attenuation_dB - 8.7)),
      // Kaiser's estimate of the length that such a transition takes.
      reach_s_((attenuation_dB - 7.95) / (2.285 * 2 * kPi * (stop_Hz - pass_Hz)) / 2) {}

double CWindowedSinc::At(double time_s) const {
    const double place = time_s / reach_s_;
    if (std::abs(place) >= 1) return 0;
    const double angle = 2 * kPi * middle_Hz_ * time_s;
    const double sinc = std::abs(angle) < 1e-9 ? 2 * middle_Hz_ : std::sin(angle) / (kPi * time_s);
    return sinc * BesselI0(beta_ * std::sqrt(1 - place * place)) / BesselI0(beta_);
}

double CWindowedSinc::SlopeAt(double time_s) const {
    // The five-point difference over a step far below the shortest period that passes.
    const double step = 1e-3 / middle_Hz_;
    if (std::abs(time_s) + 2 * step >= reach_s_) return 0;
    return (8 * (At(time_s + step) - At(time_s - step)) - (At(time_s + 2 * step) - At(time_s - 2 * step))) /
           (12 * step);
}

}  // namespace transmitter
