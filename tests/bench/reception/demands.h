// What a receiver has to reach, beside what was measured.
#pragma once

#include <vector>

#include "tests/bench/reception/report.h"
#include "tests/bench/reception/results.h"

namespace bench {

// One row for each demand; what was not measured is missed.
std::vector<Demand> Demands(const Results& results);

}  // namespace bench
