// What the receiver costs, one row a line: for ./kora bench --reception, which runs it with either form of
// the kernels.
#include <cstdio>

#include "tests/bench/reception/processor_time.h"

int main() {
    for (const auto& cost : bench::ProcessorTime()) std::printf("%s\t%.6f\n", cost.what.c_str(), cost.share);
}
