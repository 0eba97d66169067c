// How much of RDS comes through, in each of the situations that receivers are compared in.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tests/bench/reception/air_stream.h"
#include "tests/bench/reception/scored_groups.h"
#include "tests/bench/reception/tasks.h"

namespace bench {

struct DataCase {
    std::string what;
    Air air;
    double length_s = 40;
    int limitBlocks = 0;  // of how many the limit is worked out; 0: it is not
    double most = -1;     // block errors that are allowed; below 0: this is for knowing only

    double limit = -1;  // block errors of the best possible decision
    Score ours;
    std::optional<Score> redsea;
    double redseaProcessor = 0;  // seconds a second

    double CarrierToNoise_dBHz() const { return air.stream.carrierToNoise_dBHz; }
    double Deviation_Hz() const { return air.stations.front().multiplex.rds.deviation_Hz; }
};

// A stereo station with pink noise, 8 bits at 240 kHz, RDS of 2 kHz in phase with the pilot.
Air OrdinaryAir(double carrierToNoise_dBHz);

// Block errors against C/N0.
std::vector<DataCase> WeakCases(bool quick);
// The same around where the errors pass 10 %, without a pilot and with RDS beside its third harmonic.
std::vector<DataCase> FallbackCases(bool quick);
// Each at one C/N0.
std::vector<DataCase> OddCases(bool quick);

// Tasks that fill in what was measured; the cases must stay where they are. `redsea` is its program, or
// empty.
std::vector<Task> Measure(std::vector<DataCase>& cases, const std::string& redsea);

}  // namespace bench
