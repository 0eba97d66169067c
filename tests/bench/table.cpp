#include "tests/bench/table.h"

#include <algorithm>
#include <cstdio>

namespace bench {

void Print(const std::vector<Row>& rows) {
    std::printf("%-34s %12s  %-34s %12s  %-6s %7s  %s\n", "measured", "radio", "against", "peer", "unit",
                "ratio", "goal");
    for (const Row& row : rows) {
        const double ratio = row.theirs > 0 ? row.ours / row.theirs : 0;
        std::printf("%-34s %12.3f  %-34s %12.3f  %-6s %7.2f  %s\n", row.what.c_str(), row.ours,
                    row.peer.c_str(), row.theirs, row.unit.c_str(), ratio, row.goal.c_str());
    }
    std::fflush(stdout);
}

double Median(std::vector<double> values) {
    if (values.empty()) return 0;
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

}  // namespace bench
