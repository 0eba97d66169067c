// The way from the receiver's rate to a recording's lower one, in one step or two. Portable.
#pragma once

#include <memory>
#include <vector>

#include "handset/capture/low_pass_bank.h"

namespace capture {

inline constexpr std::uint32_t kSourceRate_Hz = 44100;

// The filters from 44.1 kHz to a lower rate, the first one first. Together they are flat up to 0.9 of the new
// half rate, and at least 60 dB down from the new half rate on, so that nothing above it is heard folded
// back. Made once a rate; any thread.
using RateSteps = std::vector<std::shared_ptr<const CLowPassBank>>;
const RateSteps& RateStepsTo(std::uint32_t rate_Hz);

}  // namespace capture
