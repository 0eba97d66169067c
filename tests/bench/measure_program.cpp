// Measurements made by programs of their own, because they are built as the application or the handset is.
#include <cstdlib>
#include <sstream>

#include "tests/bench/measure.h"
#include "tests/support/handset_under_test.h"

namespace bench {

std::vector<Row> MeasureProgram(const std::wstring& program) {
    std::string said;
    test::RunProgram(program, L"", &said);
    std::vector<Row> rows;
    for (const std::string& line : test::Lines(said)) {
        std::istringstream columns(line);
        std::string what, ours, peer, theirs, goal;
        if (!std::getline(columns, what, '\t') || !std::getline(columns, ours, '\t') ||
            !std::getline(columns, peer, '\t') || !std::getline(columns, theirs, '\t')) {
            continue;
        }
        std::getline(columns, goal);
        rows.push_back({what, std::atof(ours.c_str()), peer, std::atof(theirs.c_str()), "us", goal});
    }
    return rows;
}

}  // namespace bench
