#include "tests/native/rds/synthetic_mpx.h"

#include <cmath>

namespace synthetic {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kReach = 4.0;  // bits to either side
constexpr int kStepsPerBit = 2048;
constexpr std::array<std::uint16_t, 5> kOffsetWords = {0x0FC, 0x198, 0x168, 0x1B4, 0x350};

// The integral of cos(pi f / 4) cos(2 pi f t) over f from 0 to 2, in 400 steps: the standard's definition as
// it stands.
double Impulse(double t) {
    double sum = 0.0;
    for (int i = 0; i < 400; ++i) {
        const double f = (i + 0.5) / 200.0;
        sum += std::cos(kPi * f / 4.0) * std::cos(2.0 * kPi * f * t) / 200.0;
    }
    return sum;
}

// A sine by rotation, begun anew from its phase with each block.
class Oscillator {
  public:
    Oscillator(double phase_turns, double step_turns)
        : sine_(std::sin(2.0 * kPi * (phase_turns - std::floor(phase_turns)))),
          cosine_(std::cos(2.0 * kPi * (phase_turns - std::floor(phase_turns)))),
          stepSine_(std::sin(2.0 * kPi * step_turns)),
          stepCosine_(std::cos(2.0 * kPi * step_turns)) {}
    double Next() {
        const double now = sine_;
        sine_ = now * stepCosine_ + cosine_ * stepSine_;
        cosine_ = cosine_ * stepCosine_ - now * stepSine_;
        return now;
    }

  private:
    double sine_, cosine_, stepSine_, stepCosine_;
};

}  // namespace

std::uint32_t EncodedBlock(std::uint16_t information, std::uint16_t offsetWord) {
    std::uint32_t rest = 0;
    for (int i = 15; i >= 0; --i) {
        const bool bit = ((information >> i) & 1) != ((rest >> 9) & 1u);
        rest = (rest << 1) & 0x3FFu;
        if (bit) rest ^= 0x1B9u;
    }
    return std::uint32_t{information} << 10 | (rest ^ offsetWord);
}

Multiplex::Multiplex(const Signal& signal) : signal_(signal), random_(signal.seed) {
    double top = 0.0;
    shape_.resize(static_cast<std::size_t>(2.0 * kReach * kStepsPerBit) + 2);
    for (std::size_t i = 0; i < shape_.size(); ++i) {
        const double t = static_cast<double>(i) / kStepsPerBit - kReach;
        const double value = Impulse(t + 0.25) - Impulse(t - 0.25);
        shape_[i] = static_cast<float>(value);
        top = std::max(top, std::abs(value));
    }
    // The mean power of random data is half the square of the deviation, nearly: that is what makes Eb/N0 =
    // C/N0 - 66 dB.
    double energy = 0.0;
    for (const float value : shape_) energy += static_cast<double>(value) * value / kStepsPerBit;
    // The data's mean square is 0.485 of the deviation's square.
    const double scale = std::sqrt(0.485 / energy);
    for (float& value : shape_) value = static_cast<float>(value * scale);

    if (signal.carrierToNoise_dBHz > 0.0) {
        // One-sided density of the frequency noise at f: f^2 * N0 / C, in Hz^2/Hz. A first difference of
        // white noise rises with f as 2 sin(pi f / rate); it is fitted at 57 kHz.
        const double density = 57000.0 * 57000.0 / std::pow(10.0, signal.carrierToNoise_dBHz / 10.0);
        const double rise = 2.0 * std::sin(kPi * 57000.0 / sdr::kMpxRate_Hz);
        noise_ = std::sqrt(density * sdr::kMpxRate_Hz / 2.0) / rise / 75000.0;
    }
}

void Multiplex::SendBits(std::uint32_t bits, int count) {
    for (int i = count - 1; i >= 0; --i) {
        if (bits >> i & 1u) symbol_ = !symbol_;
        symbols_.push_back(symbol_ ? 1 : -1);
    }
}

void Multiplex::Send(const Words& group) {
    const bool versionB = (group[1] & 0x0800) != 0;
    for (std::size_t i = 0; i < 4; ++i) {
        SendBits(EncodedBlock(group[i], i == 2 && versionB ? kOffsetWords[4] : kOffsetWords[i]), 26);
    }
}

double Multiplex::Data(double time_bits) const {
    const auto first = static_cast<std::int64_t>(std::ceil(time_bits - kReach));
    double sum = 0.0;
    for (std::int64_t n = first; static_cast<double>(n) < time_bits + kReach; ++n) {
        if (n < 0 || n >= static_cast<std::int64_t>(symbols_.size())) continue;
        const double place = (time_bits - static_cast<double>(n) + kReach) * kStepsPerBit;
        sum += symbols_[static_cast<std::size_t>(n)] *
               static_cast<double>(shape_[static_cast<std::size_t>(place)]);
    }
    return sum;
}

bool Multiplex::Done() const {
    return Time_s() * 1187.5 > static_cast<double>(symbols_.size()) + kReach + 1.0;
}

const sdr::MpxBlock& Multiplex::Next() {
    constexpr std::size_t kCount = 384;
    samples_.resize(kCount);
    const double speed = (1.0 + signal_.clock_ppm * 1e-6) / sdr::kMpxRate_Hz;
    const double pilotStep = 19000.0 * speed;
    const double start = pilotStep * static_cast<double>(sample_);
    const double begin = static_cast<double>(sample_) * speed;
    const double subcarrier = 57000.0 + signal_.offset_Hz;
    Oscillator pilot(start, pilotStep);
    Oscillator difference(2.0 * start, 2.0 * pilotStep);
    Oscillator carrier(subcarrier * begin + signal_.phase_turns, subcarrier * speed);
    Oscillator tone(14000.0 * begin, 14000.0 * speed);
    const bool silent = begin >= signal_.silentFrom_s && begin < signal_.silentTo_s;
    const double height = silent ? 0.0 : signal_.rds_kHz / 75.0;
    const double delay = signal_.bitDelay_bits + (begin >= signal_.slipAt_s ? 1.0 : 0.0);
    std::normal_distribution<double> gauss;
    for (std::size_t i = 0; i < kCount; ++i, ++sample_) {
        const double time = static_cast<double>(sample_) * speed;
        double value = signal_.pilot_kHz / 75.0 * pilot.Next();
        value += height * Data(subcarrier / 48.0 * time - delay) * carrier.Next();
        if (signal_.tone_kHz > 0.0) value += signal_.tone_kHz / 75.0 * difference.Next() * tone.Next();
        if (noise_ > 0.0) {
            const double noise = gauss(random_) * noise_;
            value += noise - lastNoise_;
            lastNoise_ = noise;
        }
        samples_[i] = static_cast<float>(value);
    }
    block_.samples = samples_.data();
    block_.count = kCount;
    block_.pilotLocked = signal_.pilotKnown;
    block_.pilotStep_turns = signal_.pilotKnown ? pilotStep : 19000.0 / sdr::kMpxRate_Hz;
    const double unlocked = 19000.0 / sdr::kMpxRate_Hz * static_cast<double>(sample_ - kCount);
    const double phase = signal_.pilotKnown ? start : unlocked;
    block_.pilotPhase_turns = phase - std::floor(phase);
    return block_;
}

}  // namespace synthetic
