// How soon a whole band is known, and how truly.
#pragma once

#include <string>
#include <vector>

#include "tests/bench/reception/tasks.h"

namespace bench {

// What a stick's server still sends of the old place after a retuning, so that it has to be passed over.
constexpr double kStale_s = 0.15;

// Stations from 87.5 to 108 MHz, looked at in 8 bits at 1.92 MHz, one look after the other.
struct BandCase {
    std::string what;
    int stations;
    double least_dBHz, most_dBHz;  // of the stations, evenly between in decibels
    double step_Hz;                // the least distance of two of them

    int looks = 0;
    long found = 0;
    long missed = 0;
    long untrue = 0;         // channels that are taken for a station and are none
    double air_s = 0;        // of one look
    double processor_s = 0;  // of one look, the thread's own
    double Look_s() const { return air_s + processor_s; }
    double Hop_s() const { return kStale_s + Look_s(); }
    double Whole_s() const { return looks * Hop_s(); }
};
std::vector<BandCase> BandCases();

// Tasks that fill it in; the cases must stay where they are.
std::vector<Task> Measure(std::vector<BandCase>& cases);

}  // namespace bench
