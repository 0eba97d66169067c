#include "handset/transmitter/path.h"

#include <algorithm>
#include <cmath>

#include "handset/base/turning.h"
#include "handset/transmitter/noise.h"
#include "handset/transmitter/programme.h"

namespace transmitter {
namespace {

constexpr int kWaves = 24;

}  // namespace

CPath::CPath(const PathSettings& settings) : settings_(settings) {
    CNoise draw(settings.seed);
    for (int i = 0; settings.doppler_Hz > 0 && i < kWaves; ++i) {
        // One direction in each of as many sectors.
        const double direction = 2 * kPi * (i + draw.Uniform()) / kWaves;
        waves_.push_back({draw.Uniform(), settings.doppler_Hz * std::cos(direction) / kMultiplexRate_Hz});
    }
    behind_.resize(static_cast<std::size_t>(std::lround(settings.echoDelay_s * kMultiplexRate_Hz)));
}

void CPath::Pass(std::complex<float>* carrier, std::size_t count) {
    if (settings_.echo > 0) Echo(carrier, count);
    if (!waves_.empty()) Fade(carrier, count);
}

void CPath::Echo(std::complex<float>* carrier, std::size_t count) {
    const std::size_t delay = behind_.size();
    behind_.insert(behind_.end(), carrier, carrier + count);
    handset::CTurning phase(settings_.echoPhase_turns, settings_.echoDoppler_Hz / kMultiplexRate_Hz);
    const double size = settings_.echo;
    for (std::size_t i = 0; i < count; ++i) {
        const std::complex<float> turn(static_cast<float>(size * phase.Cosine()),
                                       static_cast<float>(size * phase.Sine()));
        carrier[i] += turn * behind_[i];
        phase.Next();
    }
    behind_.erase(behind_.begin(), behind_.end() - static_cast<std::ptrdiff_t>(delay));
    settings_.echoPhase_turns += settings_.echoDoppler_Hz / kMultiplexRate_Hz * static_cast<double>(count);
    settings_.echoPhase_turns -= std::floor(settings_.echoPhase_turns);
}

// The fading is far slower than a block of some tens of samples: between two of its values it runs straight.
void CPath::Fade(std::complex<float>* carrier, std::size_t count) {
    constexpr std::size_t kStretch = 32;
    const auto gain = [this](double samples) {
        std::complex<double> sum = 0;
        for (const Wave& wave : waves_)
            sum += std::polar(1.0, 2 * kPi * (wave.phase_turns + samples * wave.step_turns));
        return sum / std::sqrt(static_cast<double>(kWaves));
    };
    std::complex<double> here = gain(0);
    for (std::size_t begin = 0; begin < count; begin += kStretch) {
        const std::size_t end = std::min(begin + kStretch, count);
        const std::complex<double> there = gain(static_cast<double>(end));
        for (std::size_t i = begin; i < end; ++i) {
            const double part = static_cast<double>(i - begin) / static_cast<double>(end - begin);
            carrier[i] *= std::complex<float>(here + part * (there - here));
        }
        here = there;
    }
    for (Wave& wave : waves_) {
        wave.phase_turns += wave.step_turns * static_cast<double>(count);
        wave.phase_turns -= std::floor(wave.phase_turns);
    }
}

}  // namespace transmitter
