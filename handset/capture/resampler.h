// One channel of sound at a lower sampling rate. Portable; one thread at a time.
#pragma once

#include <memory>

#include "handset/capture/low_pass_bank.h"

namespace capture {

class CResampler {
  public:
    explicit CResampler(std::shared_ptr<const CLowPassBank> bank);

    // Adds inputs and appends the outputs that they complete: after n inputs in all, ceil(n × Phases() /
    // Step()). The sound comes later by half the filter's length.
    void Process(const float* input, std::size_t count, std::vector<float>* output);
    // Begins anew, as after silence.
    void Reset();

  private:
    std::shared_ptr<const CLowPassBank> bank_;
    std::vector<float> window_;  // the inputs that an output still needs
    std::size_t next_ = 0;       // where in window_ the next output's newest input lies
    std::uint32_t phase_ = 0;    // of the next output
};

}  // namespace capture
