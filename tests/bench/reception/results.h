// All that a run of the bench measures.
#pragma once

#include <string>
#include <vector>

#include "tests/bench/reception/band_cases.h"
#include "tests/bench/reception/data_cases.h"
#include "tests/bench/reception/processor_time.h"
#include "tests/bench/reception/sound_cases.h"
#include "tests/bench/reception/text_cases.h"

namespace bench {

struct Results {
    std::string redsea;  // its program; empty: there is none
    std::vector<DataCase> weak, fallback, odd;
    std::vector<TuningCase> tunings;
    std::vector<TruthCase> truths;
    std::vector<BandCase> bands;
    std::vector<NoiseCase> noise;
    std::vector<SeparationCase> separation;
    CleanSound clean;
    std::vector<Cost> fast, plain;
};

}  // namespace bench
