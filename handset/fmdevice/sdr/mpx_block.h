// A stretch of the stereo multiplex, as the discriminator gives it, with the pilot's phase beside it.
#pragma once

#include <cstddef>

namespace sdr {

// The rate of every multiplex in the receiver, in samples a second.
constexpr double kMpxRate_Hz = 384000.0;

// One millisecond or so. The pilot's phase runs evenly through it: the loop is far slower than that, so
// whoever mixes with a multiple of it needs one rotation a sample and no sine.
struct MpxBlock {
    const float* samples = nullptr;  // 1.0 is a deviation of 75 kHz
    std::size_t count = 0;
    // The pilot is A * sin(2 pi phase), in the sense of ITU-R BS.450: the phase at the first sample, 0 to 1,
    // and what it gains with each. Without lock it runs on at the last good rate, or at 19 kHz of the sample
    // clock.
    double pilotPhase_turns = 0.0;
    double pilotStep_turns = 19000.0 / kMpxRate_Hz;
    bool pilotLocked = false;
};

// Who wants the multiplex too, in blocks of a millisecond. Called while samples are processed.
class IMpxListener {
  public:
    virtual ~IMpxListener() = default;
    virtual void OnMultiplex(const MpxBlock& block) = 0;
    // What comes from now on is another station's.
    virtual void OnTuned() {}
};

}  // namespace sdr
