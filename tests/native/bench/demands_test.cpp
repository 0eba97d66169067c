// A demand is met at its bound and missed beyond it, and by what was never measured.
#include "tests/bench/reception/demands.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

using bench::DataCase;
using bench::Demand;
using bench::Results;

DataCase Data(const char* what, double carrierToNoise_dBHz, long lost) {
    DataCase data;
    data.what = what;
    data.air.stream.carrierToNoise_dBHz = carrierToNoise_dBHz;
    data.air.stations.resize(1);
    data.ours.sent = 4000;
    data.ours.sentGroups = 1000;
    data.ours.right = 4000 - lost;
    data.ours.wholeGroups = 700;
    data.ours.wrong = 20;
    return data;
}

// Everything exactly as bad as it may be.
Results Bounds() {
    Results results;
    results.weak = {Data("66", 66, 2000), Data("68", 68, 400), Data("70", 70, 40)};
    results.fallback = {Data("mono", 69, 400), Data("beside", 69, 400), Data("mono", 67, 4000)};
    results.odd = {Data("weak", 76, 40), Data("fading", 82, 3000)};
    results.odd[0].most = 0.01;
    results.tunings = {{72, 1, {{0.3}}, {}, {}}, {68, 1, {{1.5}}, {}, {}}};
    results.truths = {{66, 30, 10, 0}};
    bench::BandCase band{"band", 20, 60, 100, 400e3};
    band.looks = 12;
    band.found = 20;
    band.air_s = 0.02;
    band.processor_s = 0.03;
    results.bands = {band};
    results.noise = {{63, 3, 24.0, 23.5}, {66, 3, 27.0, 26.75}, {90, 3, 51.0, 50.75}};
    results.separation = {{1000, 70}, {3000, 95}, {12000, 90}, {14000, 60}};
    results.clean = {90, -90, -0.1, 0.1, -80, -0.1, 0.1};
    results.plain = {{"all, with RDS", 0.04}, {"all, with RDS, at 68 dB-Hz", 0.04}};
    results.fast = {{"all, with RDS", 0.03}, {"all, with RDS, at 68 dB-Hz", 0.03}};
    return results;
}

std::vector<std::string> Missed(const Results& results) {
    std::vector<std::string> missed;
    for (const Demand& demand : bench::Demands(results)) {
        if (!demand.met) missed.push_back(demand.what);
    }
    return missed;
}

TEST(BenchDemands, WhatIsExactlyAtItsBoundIsMet) {
    EXPECT_EQ(Missed(Bounds()), std::vector<std::string>());
}

TEST(BenchDemands, EachOneIsMissedAloneWhenItsOwnFigureIsBeyondItsBound) {
    const struct {
        const char* missed;
        std::function<void(Results&)> spoil;
    } kRows[] = {
        {"block errors at 66 dB-Hz", [](Results& r) { --r.weak[0].ours.right; }},
        {"block errors at 68 dB-Hz", [](Results& r) { --r.weak[1].ours.right; }},
        {"block errors at 70 dB-Hz", [](Results& r) { --r.weak[2].ours.right; }},
        {"wrong blocks, the most of any signal (fading)", [](Results& r) { ++r.odd[1].ours.wrong; }},
        {"wrong blocks, the most of any signal (mono)", [](Results& r) { ++r.fallback[2].ours.wrong; }},
        {"whole groups at 68 dB-Hz", [](Results& r) { --r.weak[1].ours.wholeGroups; }},
        {"block errors, mono", [](Results& r) { --r.fallback[0].ours.right; }},
        {"block errors, beside", [](Results& r) { --r.fallback[1].ours.right; }},
        {"block errors, weak", [](Results& r) { --r.odd[0].ours.right; }},
        {"texts shown that were not sent", [](Results& r) { r.truths[0].untrue = 1; }},
        {"station code after tuning at 72 dB-Hz, median", [](Results& r) { r.tunings[0].pi = {{0.31}}; }},
        {"station code after tuning at 68 dB-Hz, median", [](Results& r) { r.tunings[1].pi = {{1.51}}; }},
        {"stations missed or made up in the band", [](Results& r) { r.bands[0].missed = 1; }},
        {"stations missed or made up in the band", [](Results& r) { r.bands[0].untrue = 1; }},
        {"a look at the band, what is stale included", [](Results& r) { r.bands[0].air_s = 0.021; }},
        {"the whole band, what is stale included", [](Results& r) { r.bands[0].looks = 13; }},
        {"stereo SINAD at 63 dB-Hz", [](Results& r) { r.noise[0].reached_dB = 23.4; }},
        {"stereo SINAD below the limit, 66 to 90 dB-Hz", [](Results& r) { r.noise[2].reached_dB = 50.6; }},
        {"clean SINAD at 1 kHz", [](Results& r) { r.clean.sinad_dB = 89.9; }},
        {"separation to 10 kHz", [](Results& r) { r.separation[0].reached_dB = 69.9; }},
        {"separation to 14 kHz", [](Results& r) { r.separation[3].reached_dB = 59.9; }},
        {"response 30 Hz to 14 kHz, 50 us", [](Results& r) { r.clean.lowest_dB = -0.11; }},
        {"response 30 Hz to 14 kHz, 75 us", [](Results& r) { r.clean.highest75_dB = 0.11; }},
        {"19 kHz in the sound", [](Results& r) { r.clean.pilot_dB = -79.9; }},
        {"processor, all, with RDS, plain", [](Results& r) { r.plain[0].share = 0.041; }},
        {"processor, all, with RDS, AVX2", [](Results& r) { r.fast[0].share = 0.031; }},
        {"processor, all, with RDS, at 68 dB-Hz, plain", [](Results& r) { r.plain[1].share = 0.041; }},
        {"processor, all, with RDS, at 68 dB-Hz, AVX2", [](Results& r) { r.fast[1].share = 0.031; }},
    };
    for (const auto& row : kRows) {
        Results results = Bounds();
        row.spoil(results);
        EXPECT_EQ(Missed(results), std::vector<std::string>{row.missed});
    }
}

TEST(BenchDemands, WhatWasNotMeasuredIsMissed) {
    for (const Demand& demand : bench::Demands(Results())) {
        EXPECT_FALSE(demand.met) << demand.what << ": " << demand.reached;
    }
    const std::vector<std::function<void(Results&)>> kTaken = {
        [](Results& r) { r.weak.pop_back(); },      [](Results& r) { r.fallback.clear(); },
        [](Results& r) { r.odd[0].ours.sent = 0; }, [](Results& r) { r.tunings.clear(); },
        [](Results& r) { r.truths.clear(); },       [](Results& r) { r.bands.clear(); },
        [](Results& r) { r.noise.clear(); },        [](Results& r) { r.separation.resize(2); },
        [](Results& r) { r.clean = {}; },           [](Results& r) { r.fast.clear(); },
        [](Results& r) { r.plain[0].share = 0; },   [](Results& r) { r.tunings[0].pi = {}; },
    };
    for (std::size_t i = 0; i < kTaken.size(); ++i) {
        Results results = Bounds();
        kTaken[i](results);
        EXPECT_NE(Missed(results), std::vector<std::string>()) << i;
    }
}

}  // namespace
