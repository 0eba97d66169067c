// Decoders of RDS that nobody here wrote, where they are on the machine.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tests/bench/reception/scored_groups.h"

namespace bench {

// Where redsea is: what the variable REDSEA names, or else in the path; empty when it is nowhere.
std::string FindRedsea();

struct PeerResult {
    std::vector<GivenGroup> groups;
    double processor_s = 0;
};

// The groups that it finds in a multiplex of kPeerRate_Hz; nothing when it cannot be started or fails: that
// would look like a decoder that hears nothing.
std::optional<PeerResult> RunRedsea(const std::string& program, const std::vector<std::int16_t>& multiplex);

}  // namespace bench
