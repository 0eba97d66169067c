// A band-pass of 144 taps that is computed for each twentieth sample only.
#include "handset/fmdevice/sdr/rds/baseband.h"

#include <algorithm>
#include <cmath>

#include "handset/fmdevice/sdr/rds/dot_product.h"
#include "handset/fmdevice/sdr/rds/windows.h"

namespace sdr::rds {
namespace {

constexpr double kPi = 3.14159265358979323846;
// Half way between what is wanted, up to 2.4 kHz, and what would fall upon it, from 16.8 kHz.
constexpr double kCutOff_Hz = 9600.0;
// 75 dB against the pilot (17 kHz beside its image) and the difference signal around 38 kHz.
constexpr double kBeta = 7.5;

double Wrapped(double turns) {
    return turns - std::round(turns);
}

}  // namespace

void CBaseband::Append(float re, float im, double clock_bits) {
    const std::size_t place = count_ % kSize;
    samples_->re[place] = samples_->re[place + kSize] = re;
    samples_->im[place] = samples_->im[place + kSize] = im;
    samples_->clock[place] = clock_bits;
    ++count_;
}

std::uint64_t CBaseband::IndexAt(double clock_bits) const {
    constexpr double kSamplesPerBit = kBasebandRate_Hz / 1187.5;
    const std::uint64_t oldest = Oldest();
    const double back = std::max((NewestClock() - clock_bits) * kSamplesPerBit, 0.0);
    std::uint64_t index = count_ - 1;
    index = back >= static_cast<double>(index - oldest) ? oldest : index - static_cast<std::uint64_t>(back);
    while (index > oldest && Clock(index) > clock_bits) --index;
    while (index + 1 < count_ && Clock(index + 1) <= clock_bits) ++index;
    return index;
}

CSubcarrierMixer::CSubcarrierMixer() {
    double sum = 0.0;
    std::array<double, kTaps> taps{};
    constexpr double kMiddle = (static_cast<double>(kTaps) - 1.0) / 2.0;
    for (std::size_t i = 0; i < kTaps; ++i) {
        const double t = static_cast<double>(i) - kMiddle;
        const double x = 2.0 * kPi * kCutOff_Hz / kMpxRate_Hz * t;
        taps[i] = std::sin(x) / x * Kaiser(t / (kMiddle + 0.5), kBeta);
        sum += taps[i];
    }
    for (std::size_t i = 0; i < kTaps; ++i) {
        const double angle = 2.0 * kPi * kSubcarrier_Hz / kMpxRate_Hz * (static_cast<double>(i) - kMiddle);
        // Twice: of a real signal, half is at the negative frequency.
        cosTaps_[i] = static_cast<float>(2.0 * taps[i] / sum * std::cos(angle));
        sinTaps_[i] = static_cast<float>(-2.0 * taps[i] / sum * std::sin(angle));
    }
}

void CSubcarrierMixer::Restart() {
    line_.fill(0.0f);
    filled_ = kTaps;
    untilNext_ = kDecimation;
    wasLocked_ = false;
}

// Where the loop has just locked, its phase has nothing to do with what was before: the jump goes into the
// seam, for a constant phase is all that it changes.
void CSubcarrierMixer::Follow(const MpxBlock& block) {
    const double ahead = Wrapped(block.pilotPhase_turns - cycles_ - seam_turns_);
    if (block.pilotLocked && wasLocked_) {
        cycles_ += ahead;
    } else {
        seam_turns_ = Wrapped(seam_turns_ + ahead);
    }
    wasLocked_ = block.pilotLocked;
}

void CSubcarrierMixer::Give(const Turning& turning, CBaseband& baseband) const {
    const float* samples = &line_[filled_ - kTaps];
    const float re = DotProduct<kTaps>(samples, cosTaps_.data());
    const float im = DotProduct<kTaps>(samples, sinTaps_.data());
    const auto c = static_cast<float>(turning.re);
    const auto s = static_cast<float>(turning.im);
    baseband.Append(re * c + im * s, im * c - re * s, turning.cycles / kPilotCyclesPerBit);
}

void CSubcarrierMixer::Take(const MpxBlock& block, CBaseband& baseband) {
    Follow(block);
    const double middle = (static_cast<double>(kTaps) + 1.0) / 2.0 * block.pilotStep_turns;
    const double first = static_cast<double>(untilNext_) * block.pilotStep_turns;
    const double step = static_cast<double>(kDecimation) * block.pilotStep_turns;
    Turning turning;
    turning.cycles = cycles_ + first - middle;
    const double angle = 2.0 * kPi * Wrapped(kSubcarrierOfPilot * turning.cycles);
    turning.re = std::cos(angle);
    turning.im = std::sin(angle);
    const double stepRe = std::cos(2.0 * kPi * kSubcarrierOfPilot * step);
    const double stepIm = std::sin(2.0 * kPi * kSubcarrierOfPilot * step);
    std::size_t taken = 0;
    while (taken < block.count) {
        const std::size_t some = std::min(untilNext_, block.count - taken);
        if (filled_ + some > kLine) {
            std::copy(line_.begin() + static_cast<std::ptrdiff_t>(filled_ - kTaps),
                      line_.begin() + static_cast<std::ptrdiff_t>(filled_), line_.begin());
            filled_ = kTaps;
        }
        std::copy_n(block.samples + taken, some, line_.begin() + static_cast<std::ptrdiff_t>(filled_));
        filled_ += some;
        taken += some;
        untilNext_ -= some;
        if (untilNext_ != 0) continue;
        untilNext_ = kDecimation;
        Give(turning, baseband);
        turning = {turning.cycles + step, turning.re * stepRe - turning.im * stepIm,
                   turning.re * stepIm + turning.im * stepRe};
    }
    cycles_ += block.pilotStep_turns * static_cast<double>(block.count);
}

}  // namespace sdr::rds
