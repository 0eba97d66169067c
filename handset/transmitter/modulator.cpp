#include "handset/transmitter/modulator.h"

#include <algorithm>
#include <cmath>

#include "handset/transmitter/programme.h"

namespace transmitter {
namespace {

// The phase gains what the deviation adds up to between two samples, not what it is at one of them. The
// integral over a step around a sample by central differences is 1 + d2/24 - 17 d4/5760 + 367 d6/967680;
// these are its weights from the middle outwards.
constexpr double kSecond = 1.0 / 24, kFourth = -17.0 / 5760, kSixth = 367.0 / 967680;
constexpr double kWeights[CModulator::kDelay + 1] = {
    1 - 2 * kSecond + 6 * kFourth - 20 * kSixth,
    kSecond - 4 * kFourth + 15 * kSixth,
    kFourth - 6 * kSixth,
    kSixth,
};

}  // namespace

void CModulator::Modulate(const double* deviation_Hz, std::complex<float>* carrier, std::size_t count) {
    line_.resize(count + before_.size());
    std::copy(before_.begin(), before_.end(), line_.begin());
    std::copy(deviation_Hz, deviation_Hz + count, line_.begin() + kTaps - 1);
    for (std::size_t i = 0; i < count; ++i) {
        const double* middle = &line_[i + kDelay];
        double step_Hz = kWeights[0] * middle[0];
        for (int k = 1; k <= kDelay; ++k) step_Hz += kWeights[k] * (middle[k] + middle[-k]);
        phase_turns_ += step_Hz / kMultiplexRate_Hz;
        phase_turns_ -= std::floor(phase_turns_);
        carrier[i] = {static_cast<float>(std::cos(2 * kPi * phase_turns_)),
                      static_cast<float>(std::sin(2 * kPi * phase_turns_))};
    }
    std::copy(line_.end() - static_cast<std::ptrdiff_t>(before_.size()), line_.end(), before_.begin());
}

}  // namespace transmitter
