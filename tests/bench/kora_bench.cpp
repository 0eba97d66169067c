// Runs the measurements and prints the table. An argument shortens the time at rest: kora_bench 10.
// kora_bench --soak [HOURS] lets the radio live for so many handset hours instead; kora_bench --recording
// measures recording alone; kora_bench --ether [hour] [retunes] the radio on the simulated ether alone;
// kora_bench --faults [HOURS [SEED]] lets everything go wrong.
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>

#include "tests/bench/ether/measure_ether.h"
#include "tests/bench/faults.h"
#include "tests/bench/measure.h"
#include "tests/bench/soak.h"
#include "tests/support/handset_under_test.h"

namespace {

constexpr unsigned kRest_s = 60;
constexpr double kSoak_h = 100;
constexpr double kFaults_h = 24;
constexpr long kRoundsAnHour = 1000;
constexpr int kMissed = 3;  // a demand was

void Add(std::vector<bench::Row>& table, const std::vector<bench::Row>& rows) {
    table.insert(table.end(), rows.begin(), rows.end());
}

}  // namespace

int main(int count, char** arguments) {
    if (count > 1 && std::strcmp(arguments[1], "--soak") == 0) {
        const double hours = count > 2 ? std::atof(arguments[2]) : kSoak_h;
        return bench::RunSoak(hours, static_cast<long>(hours * kRoundsAnHour));
    }
    if (count > 1 && std::strcmp(arguments[1], "--faults") == 0) {
        const double hours = count > 2 ? std::atof(arguments[2]) : kFaults_h;
        const unsigned seed = count > 3 ? static_cast<unsigned>(std::strtoul(arguments[3], nullptr, 10))
                                        : std::random_device()();
        return bench::RunFaults(hours, seed);
    }
    const bool recordingAlone = count > 1 && std::strcmp(arguments[1], "--recording") == 0;
    const unsigned rest = count > 1 ? static_cast<unsigned>(std::atoi(arguments[1])) : kRest_s;
    // A handset of its own, so that a radio in use is neither measured nor disturbed.
    test::HandsetUnderTest handset;
    const bench::Programs programs = {handset.DevicePath(L"\\Windows\\UI.exe"),
                                      test::BuildFolder() + L"\\bare_window.exe"};
    if (count > 1 && std::strcmp(arguments[1], "--ether") == 0) {
        bench::EtherOptions options;
        for (int i = 2; i < count; ++i) {
            options.hour = options.hour || std::strcmp(arguments[i], "hour") == 0;
            options.retunes = options.retunes || std::strcmp(arguments[i], "retunes") == 0;
        }
        return bench::MeasureEther(handset, options) ? 0 : kMissed;
    }
    std::vector<bench::Row> table;
    if (recordingAlone) {
        bench::Print(bench::MeasureRecording(handset));
        return 0;
    }
    std::fprintf(stderr, "start ...\n");
    Add(table, bench::MeasureStart(programs));
    std::fprintf(stderr, "repaint ...\n");
    Add(table, bench::MeasureProgram(L"bench_repaint.exe"));
    std::fprintf(stderr, "channels ...\n");
    Add(table, bench::MeasureProgram(L"bench_cedb.exe"));
    Add(table, bench::MeasureProgram(L"bench_list_fill.exe"));
    Add(table, bench::MeasureProgram(L"bench_bookings.exe"));
    std::fprintf(stderr, "monitor ...\n");
    Add(table, bench::MeasureProgram(L"bench_monitor_round.exe"));
    std::fprintf(stderr, "recording ...\n");
    Add(table, bench::MeasureRecording(handset));
    std::fprintf(stderr, "%u s at rest ...\n", rest);
    Add(table, bench::MeasureRest(programs, rest));
    std::fprintf(stderr, "the ether ...\n");
    bench::Print(table);
    std::printf("\n");
    return bench::MeasureEther(handset, {}) ? 0 : kMissed;
}
