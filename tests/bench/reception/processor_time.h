// What the receiver costs.
#pragma once

#include <string>
#include <vector>

namespace bench {

struct Cost {
    std::string what;
    double share;  // of one core, in real time
};

// From 1.92 MHz of unsigned bytes, with stereo and RDS: stage by stage, then the whole without and with RDS,
// then the whole at the edge of reception. On the calling thread; the kernels are those that this process
// uses.
std::vector<Cost> ProcessorTime();

}  // namespace bench
