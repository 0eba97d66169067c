// What is asked of the radio on the simulated ether. Portable.
#pragma once

#include <vector>

#include "tests/bench/ether/ether_results.h"
#include "tests/bench/reception/report.h"

namespace bench {

// One row for each demand; what was not measured is not met.
std::vector<Demand> EtherDemands(const EtherResults& results);

}  // namespace bench
