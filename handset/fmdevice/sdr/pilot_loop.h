// The 19 kHz pilot: found in milliseconds, then followed by a slow loop. Portable.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "handset/fmdevice/sdr/kernels.h"
#include "handset/fmdevice/sdr/mpx_block.h"

namespace sdr {

// A millisecond: 19 turns of the pilot.
constexpr std::size_t kBlockSamples = 384;
constexpr double kBlocksPerSecond = kMpxRate_Hz / kBlockSamples;

// Each block is mixed with a sine that runs evenly through it; two neighbouring blocks under one Hann window
// give the pilot's place against that sine, free of the sound beside it. From nothing, a straight line
// through a dozen of these gives phase and rate at once; then the loop's gains fall, as those of a line
// through ever more of them would, down to its resting bandwidth. One thread at a time.
class CPilotLoop {
  public:
    CPilotLoop();

    // `multiplex`: kBlockSamples values. Fills the block, which refers to them, and beside each value the one
    // mixed with the subcarrier: 2 * kBlockSamples floats, the difference of left and right at the place of
    // Q.
    void Process(const float* multiplex, MpxBlock* block, float* pairs);
    // Another station: what comes now has nothing to do with what was.
    void Reset();

    [[nodiscard]] bool Locked() const { return locked_; }
    // The deviation by the pilot, while locked.
    [[nodiscard]] double Deviation_Hz() const;
    // What the pilot's rate is beside 19 kHz, by the clock of the samples; without a pilot the last one that
    // the loop had settled at on this station, or 0.
    [[nodiscard]] double RateOffset_Hz() const;

    // The resting loop, for its tests: shares of a phase error that go into phase and rate with each block,
    // and the noise bandwidth that they make.
    struct Gains {
        double phase;
        double rate;
    };
    // Those of a straight line through `blocks` measurements, the oldest forgotten evenly.
    [[nodiscard]] static Gains GainsAfter(std::size_t blocks);
    [[nodiscard]] static double NoiseBandwidth_Hz();

  private:
    struct Place {
        double inPhase = 0.0;
        double inQuadrature = 0.0;
    };
    static constexpr std::size_t kSearchBlocks = 12;

    void Search(Place place);
    void Follow(Place place);

    std::array<float, kBlockSamples> window_{};
    PilotSums before_;
    double phase_turns_ = 0.0;
    double rate_turns_ = 0.0;     // a sample
    double settled_turns_ = 0.0;  // the last rate at rest on a clear pilot of this station, else the nominal
    double correction_turns_ = 0.0;  // a sample, in the next block alone
    bool locked_ = false;
    std::size_t skip_ = 0;  // blocks that the filters' settling spoils
    std::vector<Place> found_;
    std::size_t followed_ = 0;  // blocks that the loop's gains stand for
    Place mean_;
    double meanPower_ = 0.0;
};

}  // namespace sdr
