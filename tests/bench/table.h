// The table of measurements.
#pragma once

#include <string>
#include <vector>

namespace bench {

struct Row {
    std::string what;
    double ours;
    std::string peer;  // what it is measured against
    double theirs;
    std::string unit;
    std::string goal;  // empty: none
};

void Print(const std::vector<Row>& rows);

// The middle one; the list is sorted.
double Median(std::vector<double> values);

}  // namespace bench
