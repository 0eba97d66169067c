// Taps of linear-phase filters.
#include "handset/fmdevice/sdr/fir_design.h"

#include <algorithm>
#include <cmath>
#include <complex>

#include "handset/fmdevice/sdr/kernels.h"

namespace sdr {
namespace {

constexpr double kPi = 3.14159265358979323846;

// The modified Bessel function of order 0, by its series.
double Bessel0(double x) {
    double term = 1.0;
    double sum = 1.0;
    for (int k = 1; term > 1e-17 * sum; ++k) {
        term *= (x / (2.0 * k)) * (x / (2.0 * k));
        sum += term;
    }
    return sum;
}

double Sinc(double x) {
    return x == 0.0 ? 1.0 : std::sin(kPi * x) / (kPi * x);
}

}  // namespace

double KaiserBeta(double rejection_dB) {
    if (rejection_dB > 50.0) return 0.1102 * (rejection_dB - 8.7);
    if (rejection_dB < 21.0) return 0.0;
    return 0.5842 * std::pow(rejection_dB - 21.0, 0.4) + 0.07886 * (rejection_dB - 21.0);
}

double KaiserWindow(double beta, double place) {
    if (std::fabs(place) > 1.0) return 0.0;
    return Bessel0(beta * std::sqrt(1.0 - place * place)) / Bessel0(beta);
}

std::size_t TapsNeeded(const LowPass& filter) {
    const double transition = 2.0 * kPi * (filter.stop_Hz - filter.pass_Hz) / filter.rate_Hz;
    const double taps = std::ceil((filter.rejection_dB - 7.95) / (2.285 * transition)) + 1.0;
    return static_cast<std::size_t>(std::max(taps, 3.0)) | 1;
}

std::vector<double> DesignLowPass(const LowPass& filter, std::size_t taps) {
    const double cutoff = (filter.pass_Hz + filter.stop_Hz) / filter.rate_Hz;  // of half the rate
    const double beta = KaiserBeta(filter.rejection_dB);
    const double middle = (static_cast<double>(taps) - 1.0) / 2.0;
    std::vector<double> result(taps);
    double sum = 0.0;
    for (std::size_t i = 0; i < taps; ++i) {
        const double at = static_cast<double>(i) - middle;
        result[i] = cutoff * Sinc(cutoff * at) * KaiserWindow(beta, at / (middle + 1.0));
        sum += result[i];
    }
    for (double& tap : result) tap /= sum;
    return result;
}

std::vector<double> DesignShaped(const LowPass& filter, std::size_t taps,
                                 const std::function<double(double)>& gain) {
    // The response is wanted up to the middle of the transition; its inverse transform there, by the rule of
    // the middles in steps much finer than the filter can tell apart.
    constexpr std::size_t kSteps = 2048;
    // The window smooths the response; what that takes away is asked for in excess the next time.
    constexpr int kRounds = 4;
    const double step_Hz = (filter.pass_Hz + filter.stop_Hz) / 2.0 / kSteps;
    const double beta = KaiserBeta(filter.rejection_dB);
    const double middle = (static_cast<double>(taps) - 1.0) / 2.0;
    std::vector<double> wanted(kSteps);
    for (std::size_t k = 0; k < kSteps; ++k) wanted[k] = gain((static_cast<double>(k) + 0.5) * step_Hz);
    std::vector<double> asked = wanted;
    std::vector<double> result(taps);
    for (int round = 0; round < kRounds; ++round) {
        for (std::size_t i = 0; i <= taps / 2; ++i) {
            const double at = static_cast<double>(i) - middle;
            const double angle = 2.0 * kPi * step_Hz / filter.rate_Hz * at;
            double sum = 0.0;
            for (std::size_t k = 0; k < kSteps; ++k)
                sum += asked[k] * std::cos(angle * (static_cast<double>(k) + 0.5));
            const double tap = 2.0 * sum * step_Hz / filter.rate_Hz * KaiserWindow(beta, at / (middle + 1.0));
            result[i] = tap;
            result[taps - 1 - i] = tap;
        }
        for (std::size_t k = 0; k < kSteps && round + 1 < kRounds; ++k) {
            const double frequency_Hz = (static_cast<double>(k) + 0.5) * step_Hz;
            if (frequency_Hz > filter.pass_Hz) break;
            double real = result[taps / 2];
            for (std::size_t i = 0; i < taps / 2; ++i) {
                const double at = static_cast<double>(i) - middle;
                real += 2.0 * result[i] * std::cos(2.0 * kPi * frequency_Hz / filter.rate_Hz * at);
            }
            asked[k] += wanted[k] - real;
        }
    }
    return result;
}

double ResponseAt(const std::vector<double>& taps, double rate_Hz, double frequency_Hz) {
    std::complex<double> sum = 0.0;
    for (std::size_t i = 0; i < taps.size(); ++i) {
        sum += std::polar(taps[i], -2.0 * kPi * frequency_Hz / rate_Hz * static_cast<double>(i));
    }
    return std::abs(sum);
}

std::vector<float> TapPairs(const std::vector<double>& taps) {
    const std::size_t floats = (2 * taps.size() + kTapsMultiple - 1) / kTapsMultiple * kTapsMultiple;
    std::vector<float> pairs(floats, 0.0f);
    for (std::size_t i = 0; i < taps.size(); ++i) {
        pairs[2 * i] = pairs[2 * i + 1] = static_cast<float>(taps[i]);
    }
    return pairs;
}

}  // namespace sdr
