// Follows the RDS signal that was found, and gives its symbols with how sure they are. Portable.
#pragma once

#include <cstdint>

#include "handset/fmdevice/sdr/rds/baseband.h"
#include "handset/fmdevice/sdr/rds/matched_filter.h"
#include "handset/fmdevice/sdr/rds/signal_search.h"

namespace sdr::rds {

// A line through noisy measurements of a phase, by least squares over all of them while they are few, and
// with a memory that fades once there are as many as it holds.
class CLineFit {
  public:
    CLineFit(double memory, double most) : memory_(memory), most_(most) {}
    void Begin(double value, double slope, double seen);
    // One step further.
    void Step() { value_ += slope_; }
    // The measurement at this step was that much above the line.
    void Correct(double error);
    void Turn(double by) { value_ += by; }
    double Value() const { return value_; }
    double Slope() const { return slope_; }

  private:
    double memory_;  // symbols
    double most_;    // the steepest slope either way
    double seen_ = 0.0;
    double value_ = 0.0;
    double slope_ = 0.0;
};

class CSymbolTracker {
  public:
    CSymbolTracker();
    // What was given does not count: the next beginning takes all that is in the ring.
    void Forget() { hasGiven_ = false; }
    // Takes the signal up at the oldest symbol that is in the ring and was not given yet.
    void Begin(const FoundSignal& signal, const CBaseband& baseband, const CMatchedFilter& filter);
    bool Running() const { return running_; }
    // Whether what was found is what is being followed.
    [[nodiscard]] bool Follows(const FoundSignal& signal) const;
    // ln of the odds that the next symbol is a one, once it has come whole.
    [[nodiscard]] bool Next(const CBaseband& baseband, const CMatchedFilter& filter, float* symbol);
    // From 0, noise, to 1: how much more of the power is in phase than across.
    double Coherence() const;
    // The height of a symbol, 1.0 being 75 kHz of deviation, and how many Hz the signal lies beside the
    // reference.
    double Height() const;
    double Frequency_Hz() const;

  private:
    struct Turned {
        double inPhase = 0.0, across = 0.0;
    };
    static Turned TurnBack(const SymbolSample& z, double phase);
    void MeasureLevels(const CBaseband& baseband, const CMatchedFilter& filter);
    void Weigh(double inPhase, double across);
    double PowerOfSignal() const;
    void Follow(const Turned& z, const Turned& slope, double sure, double bend);

    bool running_ = false;
    std::int64_t next_ = 0;
    bool hasGiven_ = false;
    double given_bits_ = 0.0;  // when the last symbol was
    CLineFit phase_, timing_;
    // Means over the last symbols: powers in phase and across, and what a symbol gives when it is decided.
    double seen_ = 0.0;
    double inPhase_ = 0.0;
    double across_ = 0.0;
    double decided_ = 0.0;
};

}  // namespace sdr::rds
