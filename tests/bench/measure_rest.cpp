// What the radio uses while nobody touches it.
#include <windows.h>

#include "tests/bench/measure.h"
#include "tests/bench/program_run.h"

namespace bench {

std::vector<Row> MeasureRest(const Programs& programs, unsigned seconds) {
    const ProgramRun bare(programs.bareWindow, L"KoraBareWindow");
    const ProgramRun radio(programs.radio, L"Kora");
    const double radioMemory = radio.Private_MB();
    const double bareMemory = bare.Private_MB();
    const double radioBefore = radio.Cpu_ms();
    const double bareBefore = bare.Cpu_ms();
    Sleep(seconds * 1000);
    const std::string span = std::to_string(seconds) + " s at rest, processor time";
    return {
        {span, radio.Cpu_ms() - radioBefore, "bare window with a list view", bare.Cpu_ms() - bareBefore, "ms", ""},
        {"private memory after start", radioMemory, "bare window with a list view", bareMemory, "MB",
         "under 8 MB more"},
    };
}

}  // namespace bench
