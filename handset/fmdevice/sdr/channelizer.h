// One station's samples at the multiplex's rate, out of samples at any rate from 200 kHz. Portable.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "handset/fmdevice/sdr/sample.h"

namespace sdr {

constexpr double kLeastRate_Hz = 200000.0;

// A bank of filters, one for each place that a result may have between two samples: for 1.92 MHz a single
// one, which keeps each fifth result; for rates without a small common measure as many as leave nothing to be
// heard, each result drawn from the two next to its place. One thread at a time.
class CChannelizer {
  public:
    // rate_Hz: kLeastRate_Hz or more.
    explicit CChannelizer(double rate_Hz);

    // What is even up to its edge: half as wide as the channel that comes through.
    [[nodiscard]] double PassHalfWidth_Hz() const { return pass_Hz_; }
    // The bandwidth of the noise that comes through, for white noise at the input.
    [[nodiscard]] double NoiseBandwidth_Hz() const { return noiseBandwidth_Hz_; }
    // Gain at a frequency, for a single tone.
    [[nodiscard]] double ResponseAt(double frequency_Hz) const;

    // Appends results; blocks of any size.
    void Process(const Sample* samples, std::size_t count, std::vector<Sample>* results);
    void Reset();

  private:
    void DesignBank();
    [[nodiscard]] double Prototype(double at_samples) const;
    void ByWholeStep(std::vector<Sample>* results);
    void ByPhases(std::vector<Sample>* results);

    double rate_Hz_;
    double pass_Hz_ = 0.0;
    double stop_Hz_ = 0.0;
    double noiseBandwidth_Hz_ = 0.0;
    std::size_t taps_ = 0;  // of each filter
    // The step from result to result is `down_` of `up_` parts of a sample. Without a small common measure
    // `up_` is the count of filters, and the step a fraction.
    std::size_t up_ = 1;
    double down_ = 1.0;
    bool exact_ = true;
    std::vector<std::vector<float>> bank_;
    std::vector<Sample> pending_;
    double place_ = 0.0;  // of the next result behind the first pending sample, in parts
};

}  // namespace sdr
