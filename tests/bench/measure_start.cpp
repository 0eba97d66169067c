// From the start of the program to the first full paint.
#include "tests/bench/measure.h"
#include "tests/bench/program_run.h"

namespace bench {
namespace {
constexpr int kRounds = 10;
}

std::vector<Row> MeasureStart(const Programs& programs) {
    std::vector<double> radio, bare;
    // Turn about, so that a slow moment of the machine meets both.
    for (int round = 0; round < kRounds; ++round) {
        bare.push_back(ProgramRun(programs.bareWindow, L"KoraBareWindow").PaintedAfter_ms());
        radio.push_back(ProgramRun(programs.radio, L"Kora").PaintedAfter_ms());
    }
    return {
        {"start to first full paint", Median(radio), "bare window with a list view", Median(bare), "ms", ""}};
}

}  // namespace bench
