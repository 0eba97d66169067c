// What a listener sees: how soon after tuning, and whether it is true.
#pragma once

#include <vector>

#include "tests/bench/reception/tasks.h"

namespace bench {

struct Times {
    std::vector<double> each_s;  // in order of size; those that took too long stand at the bound
    double Median() const { return each_s.empty() ? 0 : each_s[each_s.size() / 2]; }
    double Slowest() const { return each_s.empty() ? 0 : each_s.back(); }
};

// Tuned again and again: from the first sample to the station's code, its whole name and its whole text.
struct TuningCase {
    double carrierToNoise_dBHz;
    int tunings;
    Times pi, name, text;
};
std::vector<TuningCase> TuningCases(bool quick);

// A station whose names and texts change, at the edge of reception.
struct TruthCase {
    double carrierToNoise_dBHz;
    double length_s;
    long shown = 0;  // different texts and names, one after another
    long untrue =
        0;  // whole ones that were not sent, and half ones with a letter that was not sent in its place
};
std::vector<TruthCase> TruthCases(bool quick);

std::vector<Task> Measure(std::vector<TuningCase>& cases);
std::vector<Task> Measure(std::vector<TruthCase>& cases);

}  // namespace bench
