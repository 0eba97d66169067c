// One round of the monitor, measured by a program that is built as the application is.
#include <cstdlib>
#include <sstream>

#include "tests/bench/measure.h"
#include "tests/support/handset_under_test.h"

namespace bench {

std::vector<Row> MeasureMonitorRound() {
    std::string said;
    test::RunProgram(L"bench_monitor_round.exe", L"", &said);
    std::vector<Row> rows;
    for (const std::string& line : test::Lines(said)) {
        std::istringstream columns(line);
        std::string what, ours, reads;
        if (!std::getline(columns, what, '\t') || !std::getline(columns, ours, '\t')) continue;
        std::getline(columns, reads);
        rows.push_back({what, std::atof(ours.c_str()), "four registry reads", std::atof(reads.c_str()), "us",
                        "under 200 us"});
    }
    return rows;
}

}  // namespace bench
