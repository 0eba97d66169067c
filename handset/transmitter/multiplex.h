// The stereo multiplex of ITU-R BS.450 with its pilot and the subcarrier of RDS. Portable.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "handset/transmitter/biphase.h"
#include "handset/transmitter/programme.h"

namespace transmitter {

constexpr double kPilot_Hz = 19000.0;
constexpr double kRdsCarrier_Hz = 57000.0;
// A bit takes so many periods of the subcarrier (IEC 62106-2, 4.5).
constexpr double kPeriodsPerBit = 48.0;

struct RdsSettings {
    GroupSource groups;          // none: no RDS
    double deviation_Hz = 2000;  // the peak of the modulated subcarrier
    double phase_turns = 0;      // against the pilot's third harmonic; a quarter: in quadrature
    double offset_Hz = 0;        // of the subcarrier from 57 kHz, as of one that is not locked; bits go along
};

struct MultiplexSettings {
    std::shared_ptr<IProgramme> programme;  // none: silence
    bool stereo = true;                     // otherwise mono: half the sum of both sides, no pilot
    double programme_Hz = 66250;            // deviation by a programme of 1 on both sides
    double pilot_Hz = 6750;
    RdsSettings rds;
};

class CMultiplex {
  public:
    explicit CMultiplex(MultiplexSettings settings);

    // The next `count` samples at kMultiplexRate_Hz, in Hz of deviation.
    void Read(double* deviation_Hz, std::size_t count);

    long long GroupsTaken() const { return rds_ ? rds_->GroupsTaken() : 0; }

  private:
    void AddRds(double* deviation_Hz, std::size_t count);

    MultiplexSettings settings_;
    std::optional<CBiphaseSignal> rds_;
    std::vector<Sound> sounds_;
    double pilot_turns_ = 0;
    double rdsOwn_turns_ = 0;  // what an unlocked subcarrier has gained on the third harmonic
    double rdsBits_ = 0;
};

}  // namespace transmitter
