// The station moved to the middle: the converter's direct current taken away, the rest turned by an
// oscillator. Portable.
#pragma once

#include <cstddef>

#include "handset/fmdevice/sdr/sample.h"

namespace sdr {

// One thread at a time.
class CTuning {
  public:
    explicit CTuning(double rate_Hz) : rate_Hz_(rate_Hz) {}

    // Where the station lies, seen from the samples' centre: within half the rate. The oscillator's phase
    // goes on.
    void SetOffset(double offset_Hz) { offset_Hz_ = offset_Hz; }
    [[nodiscard]] double Offset_Hz() const { return offset_Hz_; }
    // In place. Values that are no numbers, or far beyond full scale, become 0.
    void Process(Sample* samples, std::size_t count);
    // What is taken away at present.
    [[nodiscard]] Sample DirectCurrent() const { return dc_; }

  private:
    void Measure(const Sample* samples, std::size_t count);

    double rate_Hz_;
    double offset_Hz_ = 0.0;
    double phase_turns_ = 0.0;
    Sample dc_;
    double measured_s_ = 0.0;
};

}  // namespace sdr
