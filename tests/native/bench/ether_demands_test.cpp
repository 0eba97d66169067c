// A demand of the ether is met at its bound and missed beyond it, and by what was never measured.
#include "tests/bench/ether/ether_demands.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

namespace {

using bench::Demand;
using bench::EtherDemands;
using bench::EtherResults;
using bench::Growth;

// Everything exactly as bad as it may be.
EtherResults Bounds() {
    EtherResults results;
    results.retunes = bench::RetuneCase{100, 0, bench::Spread{350, 350}, bench::Spread{250, 250}};
    results.seeks = bench::SeekCase{200.0, 2600.0, 1000.0, 0};
    results.scan = bench::ScanCase{20, 20, 0, {5, 5, 5}, 15.0};
    for (auto* growth : {&results.life, &results.tunings, &results.awaitedTunings})
        *growth = Growth{100, 20, 21, 100, 108, true};
    bench::ToneRecord tone;
    tone.seconds = 119;
    tone.least_ppm = -310;
    tone.most_ppm = 310;
    tone.amplitude = 0.3;
    results.tone = tone;
    results.recorded_s = 120;
    return results;
}

long Missed(const EtherResults& results) {
    const auto demands = EtherDemands(results);
    return std::count_if(demands.begin(), demands.end(), [](const Demand& demand) { return !demand.met; });
}

TEST(EtherDemands, AreMetAtTheirBounds) {
    EXPECT_EQ(Missed(Bounds()), 0);
}

TEST(EtherDemands, NothingThatWasNotMeasuredIsMet) {
    const auto demands = EtherDemands({});
    EXPECT_EQ(Missed({}), static_cast<long>(demands.size()));
    for (const Demand& demand : demands) EXPECT_EQ(demand.reached, "not measured") << demand.what;
}

TEST(EtherDemands, EachIsMissedBeyondItsBound) {
    struct Row {
        const char* what;
        std::function<void(EtherResults*)> worsen;
    };
    const Row kRows[] = {
        {"sound, median", [](EtherResults* r) { r->retunes->sound_ms->median = 351; }},
        {"sound, worst", [](EtherResults* r) { r->retunes->sound_ms->worst = 351; }},
        {"level, median", [](EtherResults* r) { r->retunes->level_ms->median = 251; }},
        {"level, worst", [](EtherResults* r) { r->retunes->level_ms->worst = 251; }},
        {"unheard", [](EtherResults* r) { r->retunes->unheard = 1; }},
        {"hop", [](EtherResults* r) { r->seeks->hop_ms = 201; }},
        {"call", [](EtherResults* r) { r->seeks->longest_ms = 1001; }},
        {"wrong answer", [](EtherResults* r) { r->seeks->missed = 1; }},
        {"scan", [](EtherResults* r) { r->scan->total_s = 15.1; }},
        {"station missed", [](EtherResults* r) { r->scan->right = 19; }},
        {"station made up", [](EtherResults* r) { r->scan->wrong = 1; }},
        {"memory of the radio", [](EtherResults* r) { r->life->after_MB = 21.1; }},
        {"handles of the radio", [](EtherResults* r) { r->life->after_handles = 109; }},
        {"memory of tunings", [](EtherResults* r) { r->tunings->after_MB = 21.1; }},
        {"handles of tunings", [](EtherResults* r) { r->tunings->after_handles = 109; }},
        {"deaf after tunings", [](EtherResults* r) { r->tunings->survived = false; }},
        {"memory of received tunings", [](EtherResults* r) { r->awaitedTunings->after_MB = 21.1; }},
        {"handles of received tunings", [](EtherResults* r) { r->awaitedTunings->after_handles = 109; }},
        {"click", [](EtherResults* r) { r->tone->clicks = 1; }},
        {"break", [](EtherResults* r) { r->tone->breaks = 1; }},
        {"pitch up", [](EtherResults* r) { r->tone->most_ppm = 311; }},
        {"pitch down", [](EtherResults* r) { r->tone->least_ppm = -311; }},
    };
    for (const Row& row : kRows) {
        EtherResults results = Bounds();
        row.worsen(&results);
        EXPECT_EQ(Missed(results), 1) << row.what;
    }
}

TEST(EtherDemands, ARecordingThatBrokeOffOrIsSilentWasNotMeasured) {
    EtherResults results = Bounds();
    results.tone->seconds = 100;
    EXPECT_EQ(Missed(results), 3);
    results = Bounds();
    results.tone->amplitude = 0.001;
    EXPECT_EQ(Missed(results), 3);
    results = Bounds();
    results.life->before_MB = -1;
    EXPECT_EQ(Missed(results), 2);
}

}  // namespace
