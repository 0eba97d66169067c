// From the start of the program to the first full paint.
#include "tests/bench/measure.h"
#include "tests/bench/program_run.h"

namespace bench {
namespace {
constexpr int kRounds = 10;
// The receiver is given this long to settle while the window is created.
constexpr double kSettling_ms = 200;
}  // namespace

std::vector<Row> MeasureStart(const Programs& programs) {
    std::vector<double> radio, bare;
    // Turn about, so that a slow moment of the machine meets both.
    for (int round = 0; round < kRounds; ++round) {
        bare.push_back(ProgramRun(programs.bareWindow, L"KoraBareWindow").PaintedAfter_ms());
        radio.push_back(ProgramRun(programs.radio, L"Kora").PaintedAfter_ms());
    }
    return {{"start to first full paint", Median(radio), "bare window and 200 ms of settling",
             Median(bare) + kSettling_ms, "ms", ""}};
}

}  // namespace bench
