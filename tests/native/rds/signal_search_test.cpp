// The search for the signal: what it finds of a signal that is known, and that noise is none.
#include "handset/fmdevice/sdr/rds/signal_search.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/native/rds/symbol_stream.h"

namespace {

using namespace sdr::rds;

constexpr double kPi = 3.14159265358979323846;

TEST(RdsSignalSearch, FindsTimingPhaseAndFrequencyOfASignal) {
    const struct {
        double delay_bits, phase_rad, offset_Hz;
    } kSignals[] = {{0.0, 0.0, 0.0}, {0.3, 1.0, 0.0}, {0.5, -1.2, 3.0}, {0.81, 0.4, -6.0}, {0.06, 2.5, 11.0}};
    const CMatchedFilter filter;
    for (const auto& signal : kSignals) {
        SymbolStream stream;
        stream.delay_bits = signal.delay_bits;
        stream.phase_rad = signal.phase_rad;
        stream.offset_Hz = signal.offset_Hz;
        CBaseband baseband;
        stream.Append(baseband, 300.0);
        CSignalSearch search;
        const std::optional<FoundSignal> found = search.Look(baseband, filter);
        ASSERT_TRUE(found) << signal.offset_Hz;
        const double timing = found->timing_bits - signal.delay_bits;
        EXPECT_NEAR(timing - std::round(timing), 0.0, 0.03) << signal.offset_Hz;
        const double step_rad = 2.0 * kPi * signal.offset_Hz / 1187.5;
        EXPECT_NEAR(found->frequency_rad / (2.0 * kPi) * 1187.5, signal.offset_Hz, 0.3);
        // Differential coding leaves half a turn open.
        const double halfTurns =
            (found->phase_rad - signal.phase_rad - step_rad * (found->symbol + found->timing_bits)) / kPi;
        EXPECT_NEAR(halfTurns - std::round(halfTurns), 0.0, 0.05) << signal.offset_Hz;
    }
}

TEST(RdsSignalSearch, WithoutNoiseTheSignificanceIsTheNumberOfSymbols) {
    // Squares of the height 1 that all stand in phase: (n 1)^2 over n 1.
    SymbolStream stream;
    CBaseband baseband;
    stream.Append(baseband, 250.0);
    CSignalSearch search;
    const std::optional<FoundSignal> found = search.Look(baseband, CMatchedFilter());
    ASSERT_TRUE(found);
    EXPECT_GE(found->symbols, 96.0);
    EXPECT_NEAR(found->significance / found->symbols, 1.0, 0.01);
}

TEST(RdsSignalSearch, NoiseAloneIsNoSignalAndAWeakOneIsFound) {
    const CMatchedFilter filter;
    for (const bool sent : {false, true}) {
        SymbolStream stream;
        stream.height = sent ? 1.0 : 0.0;
        stream.noise = 2.0;
        CBaseband baseband;
        CSignalSearch search;
        int found = 0;
        for (int i = 0; i < 12; ++i) {
            stream.Append(baseband, 200.0);
            if (search.Look(baseband, filter)) ++found;
        }
        EXPECT_EQ(found > 0, sent);
    }
}

}  // namespace
