#include "handset/transmitter/multiplex.h"

#include <cmath>
#include <utility>

#include "handset/base/turning.h"

namespace transmitter {
namespace {

constexpr double kPilotStep_turns = kPilot_Hz / kMultiplexRate_Hz;

double Wrapped(double turns) {
    return turns - std::floor(turns);
}

}  // namespace

CMultiplex::CMultiplex(MultiplexSettings settings) : settings_(std::move(settings)) {
    if (!settings_.programme) settings_.programme = std::make_shared<CSilence>();
    if (settings_.rds.groups) rds_.emplace(settings_.rds.groups);
}

void CMultiplex::Read(double* deviation_Hz, std::size_t count) {
    sounds_.resize(count);
    settings_.programme->Read(sounds_.data(), count);
    if (settings_.stereo) {
        // Both cross zero upwards together (ITU-R BS.450-3, 2.2).
        handset::CTurning pilot(pilot_turns_, kPilotStep_turns);
        for (std::size_t i = 0; i < count; ++i) {
            const double subcarrier = 2 * pilot.Sine() * pilot.Cosine();
            const double sum = (sounds_[i].left + sounds_[i].right) / 2;
            const double difference = (sounds_[i].left - sounds_[i].right) / 2;
            deviation_Hz[i] =
                settings_.programme_Hz * (sum + difference * subcarrier) + settings_.pilot_Hz * pilot.Sine();
            pilot.Next();
        }
    } else {
        for (std::size_t i = 0; i < count; ++i) {
            deviation_Hz[i] = settings_.programme_Hz * (sounds_[i].left + sounds_[i].right) / 2;
        }
    }
    if (rds_) AddRds(deviation_Hz, count);
    pilot_turns_ = Wrapped(pilot_turns_ + kPilotStep_turns * static_cast<double>(count));
}

void CMultiplex::AddRds(double* deviation_Hz, std::size_t count) {
    const double ownStep_turns = settings_.rds.offset_Hz / kMultiplexRate_Hz;
    const double step_turns = 3 * kPilotStep_turns + ownStep_turns;
    const double bitsPerSample = step_turns / kPeriodsPerBit;
    handset::CTurning carrier(3 * pilot_turns_ + rdsOwn_turns_ + settings_.rds.phase_turns, step_turns);
    for (std::size_t i = 0; i < count; ++i) {
        const double waveform = rds_->At(rdsBits_ + bitsPerSample * static_cast<double>(i));
        deviation_Hz[i] += settings_.rds.deviation_Hz * waveform * carrier.Sine();
        carrier.Next();
    }
    rdsBits_ += bitsPerSample * static_cast<double>(count);
    rdsOwn_turns_ = Wrapped(rdsOwn_turns_ + ownStep_turns * static_cast<double>(count));
}

}  // namespace transmitter
