// What the bench measures of the radio on the simulated ether. Portable.
#pragma once

#include <optional>
#include <vector>

#include "tests/bench/ether/tone_watch.h"

namespace bench {

// Over all; nothing where nothing was measured.
struct Spread {
    double median = 0;
    double worst = 0;
};

struct RetuneCase {
    long retunes = 0;
    long unheard = 0;  // without the station's tone, or without its level, in time
    std::optional<Spread> sound_ms, level_ms;
};

struct SeekCase {
    std::optional<double> hop_ms;       // median
    std::optional<double> crossing_ms;  // the whole band, median
    std::optional<double> longest_ms;   // call
    long missed = 0;                    // calls with the wrong answer
};

struct ScanCase {
    long stations = 0;
    long right = 0;
    long wrong = 0;
    std::vector<double> runs_s;
    std::optional<double> total_s;  // from the answer to the list
};

// What a program held, early and at the end.
struct Growth {
    double count = 0;  // what was done meanwhile: minutes or tunings
    double before_MB = 0, after_MB = 0;
    long before_handles = 0, after_handles = 0;
    bool survived = true;
};

struct EtherResults {
    std::optional<double> air_share, band_share;  // of one processor
    std::optional<RetuneCase> retunes;
    std::optional<SeekCase> seeks;
    std::optional<ScanCase> scan;
    std::optional<Growth> life, tunings, awaitedTunings;
    std::optional<ToneRecord> tone;
    double recorded_s = 0;
};

}  // namespace bench
