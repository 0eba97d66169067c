// Painting, measured by a program that is built as the application is.
#include <cstdlib>
#include <sstream>

#include "tests/bench/measure.h"
#include "tests/support/handset_under_test.h"

namespace bench {

std::vector<Row> MeasureRepaint() {
    std::string said;
    test::RunProgram(L"bench_repaint.exe", L"", &said);
    std::vector<Row> rows;
    for (const std::string& line : test::Lines(said)) {
        std::istringstream columns(line);
        std::string what, ours, copy;
        if (!std::getline(columns, what, '\t') || !std::getline(columns, ours, '\t')) continue;
        std::getline(columns, copy);
        rows.push_back(
            {what, std::atof(ours.c_str()), "BitBlt of the same pixels", std::atof(copy.c_str()), "us", ""});
    }
    return rows;
}

}  // namespace bench
