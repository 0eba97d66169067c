// Discriminator and repair of its droop.
#include "handset/fmdevice/sdr/discriminator.h"

#include <algorithm>
#include <cmath>

#include "handset/fmdevice/sdr/kernels.h"
#include "handset/fmdevice/sdr/mpx_block.h"

namespace sdr {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kDeviation_Hz = 75000.0;
// Middle and both sides: x / sin(x) met exactly at three Chebyshev nodes up to 60 kHz; between them off
// by 2.2e-5.
constexpr float kRepair[3] = {1.11752864f, -0.06458757f, 0.00583435f};
constexpr std::size_t kBefore = 4;

}  // namespace

void CDiscriminator::Reset() {
    pairs_.assign({1.0f, 0.0f});
    angles_.assign(kBefore, 0.0f);
}

void CDiscriminator::Process(const float* pairs, std::size_t count, float* multiplex) {
    if (count == 0) return;
    const Kernels& kernels = ActiveKernels();
    pairs_.resize(2 + 2 * count);
    std::copy(pairs, pairs + 2 * count, pairs_.begin() + 2);
    angles_.resize(kBefore + count);
    const auto gain = static_cast<float>(kMpxRate_Hz / (2.0 * kPi * kDeviation_Hz));
    kernels.discriminate(pairs_.data() + 2, count, gain, angles_.data() + kBefore);
    kernels.five(angles_.data() + 2, count, kRepair, multiplex);
    std::copy(pairs_.end() - 2, pairs_.end(), pairs_.begin());
    std::copy(angles_.end() - kBefore, angles_.end(), angles_.begin());
}

double CDiscriminator::ResponseAt(double frequency_Hz) {
    const double x = kPi * frequency_Hz / kMpxRate_Hz;
    const double droop = x == 0.0 ? 1.0 : std::sin(x) / x;
    return droop * (kRepair[0] + 2.0 * kRepair[1] * std::cos(2.0 * x) + 2.0 * kRepair[2] * std::cos(4.0 * x));
}

}  // namespace sdr
