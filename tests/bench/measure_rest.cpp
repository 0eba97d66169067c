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
    const double bareBefore = bareUsage.Cpu_ms();
    Sleep(seconds * 1000);
    const std::string span = std::to_string(seconds) + " s at rest, processor time";
    return {
        {span, radioUsage.Cpu_ms() - radioBefore, "bare window with a list view",
         bareUsage.Cpu_ms() - bareBefore, "ms", ""},
        {"private memory after start", radioMemory, "bare window with a list view", bareMemory, "MB",
         "under 8 MB more"},
    };
}

}  // namespace bench
