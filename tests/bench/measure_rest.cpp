// What the radio uses while nobody touches it.
#include <windows.h>

#include "tests/bench/measure.h"
#include "tests/bench/process_usage.h"
#include "tests/bench/program_run.h"

namespace bench {

std::vector<Row> MeasureRest(const Programs& programs, unsigned seconds) {
    const ProgramRun bare(programs.bareWindow, L"KoraBareWindow");
    const ProgramRun radio(programs.radio, L"Kora");
    const ProcessUsage bareUsage(bare.Process(), programs.bareWindow);
    const ProcessUsage radioUsage(radio.Process(), programs.radio);
    const double radioMemory = radioUsage.Private_MB();
    const double bareMemory = bareUsage.Private_MB();
    const double radioBefore = radioUsage.Cpu_ms();
    Sleep(seconds * 1000);
    const std::string span = std::to_string(seconds) + " s at rest, processor time";
    // A window that waits for messages uses nothing at all, so the measure is a share of the machine.
    constexpr double kOnePercent_ms = 10;
    return {
        {span, radioUsage.Cpu_ms() - radioBefore, "1 % of one processor", seconds * kOnePercent_ms, "ms",
         "under the limit"},
        {"private memory after start", radioMemory, "bare window with a list view", bareMemory, "MB",
         "under 8 MB more"},
    };
}

}  // namespace bench
