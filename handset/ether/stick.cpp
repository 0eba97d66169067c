#include "handset/ether/stick.h"

#include <algorithm>
#include <cstdlib>

namespace ether {
namespace {

// What an R820T tunes to.
constexpr std::uint32_t kLowest_Hz = 24000000;
constexpr std::uint32_t kHighest_Hz = 1766000000;
constexpr std::uint32_t kRateStep_Hz = 1000;
constexpr std::int32_t kMostCorrection_ppm = 1000;
constexpr std::uint8_t kTunerR820t = 5;

bool RateIsPossible(std::uint32_t rate_Hz) {
    return (rate_Hz > 225000 && rate_Hz <= 300000) || (rate_Hz > 900000 && rate_Hz <= 3200000);
}

}  // namespace

std::array<std::uint8_t, kGreetingBytes> CStick::Greeting() {
    return {'R', 'T',         'L', '0', 0, 0,
            0,   kTunerR820t, 0,   0,   0, static_cast<std::uint8_t>(kGains_tenthdB.size())};
}

void CStick::Apply(const Command& command) {
    struct Row {
        std::uint8_t id;
        void (CStick::*apply)(std::uint32_t argument);
    };
    // The others (the chip's own gain, direct sampling, bias tee …) change nothing that is heard here.
    static constexpr Row kRows[] = {
        {0x01, &CStick::SetFrequency}, {0x02, &CStick::SetRate},       {0x03, &CStick::SetManualGain},
        {0x04, &CStick::SetGain},      {0x05, &CStick::SetCorrection}, {0x0D, &CStick::SetGainIndex},
    };
    for (const Row& row : kRows) {
        if (row.id == command.id) (this->*row.apply)(command.argument);
    }
}

void CStick::SetFrequency(std::uint32_t frequency_Hz) {
    if (frequency_Hz >= kLowest_Hz && frequency_Hz <= kHighest_Hz) frequency_Hz_ = frequency_Hz;
}

void CStick::SetRate(std::uint32_t rate_Hz) {
    if (!RateIsPossible(rate_Hz)) return;
    rate_Hz_ = (rate_Hz + kRateStep_Hz / 2) / kRateStep_Hz * kRateStep_Hz;
}

void CStick::SetManualGain(std::uint32_t on) {
    manualGain_ = on != 0;
}

void CStick::SetGain(std::uint32_t gain_tenthdB) {
    // The nearest that there is.
    const auto wanted = static_cast<std::int64_t>(static_cast<std::int32_t>(gain_tenthdB));
    const auto* nearest = std::min_element(
        kGains_tenthdB.begin(), kGains_tenthdB.end(),
        [wanted](int one, int other) { return std::llabs(one - wanted) < std::llabs(other - wanted); });
    gain_ = static_cast<std::size_t>(nearest - kGains_tenthdB.begin());
}

void CStick::SetGainIndex(std::uint32_t index) {
    if (index < kGains_tenthdB.size()) gain_ = index;
}

void CStick::SetCorrection(std::uint32_t ppm) {
    const auto correction = static_cast<std::int32_t>(ppm);
    if (correction >= -kMostCorrection_ppm && correction <= kMostCorrection_ppm) correction_ppm_ = correction;
}

Window CStick::View() const {
    Window window;
    window.clockError_ppm = crystal_ppm_ - correction_ppm_;
    window.centre_Hz = frequency_Hz_ * (1 + window.clockError_ppm * 1e-6);
    window.rate_Hz = rate_Hz_;
    if (manualGain_) window.gain_dB = kGains_tenthdB[gain_] / 10.0;
    return window;
}

}  // namespace ether
