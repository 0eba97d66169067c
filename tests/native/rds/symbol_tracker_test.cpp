// The loops that follow the signal, against the straight line that they stand for, and the odds they give.
#include "handset/fmdevice/sdr/rds/symbol_tracker.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "tests/native/rds/symbol_stream.h"

namespace {

using namespace sdr::rds;

TEST(RdsLineFit, WhileItFillsItIsTheLineOfLeastSquares) {
    std::mt19937 random(5);
    std::normal_distribution<double> noise;
    CLineFit fit(1000.0, 100.0);
    fit.Begin(17.0, -3.0, 0.0);
    double n = 0.0, sumX = 0.0, sumY = 0.0, sumXX = 0.0, sumXY = 0.0;
    for (int i = 0; i < 300; ++i) {
        const double y = 0.7 - 0.03 * i + noise(random);
        n += 1.0;
        sumX += i;
        sumY += y;
        sumXX += static_cast<double>(i) * i;
        sumXY += i * y;
        fit.Correct(y - fit.Value());
        if (i > 0) {
            const double slope = (n * sumXY - sumX * sumY) / (n * sumXX - sumX * sumX);
            const double value = (sumY - slope * sumX) / n + slope * i;
            ASSERT_NEAR(fit.Slope(), slope, 1e-9) << i;
            ASSERT_NEAR(fit.Value(), value, 1e-9) << i;
        }
        fit.Step();
    }
}

TEST(RdsLineFit, AtRestItsNoiseIsThatOfALoopOfTheSecondOrder) {
    // Gains a and b of value and slope let through (2 a^2 + b (2 - 3 a)) / (a (4 - 2 a - b)) of white noise.
    constexpr double kMemory = 60.0;
    const double a = 2.0 * (2.0 * kMemory + 1.0) / ((kMemory + 1.0) * (kMemory + 2.0));
    const double b = 6.0 / ((kMemory + 1.0) * (kMemory + 2.0));
    const double expected = (2.0 * a * a + b * (2.0 - 3.0 * a)) / (a * (4.0 - 2.0 * a - b));
    std::mt19937 random(6);
    std::normal_distribution<double> noise;
    CLineFit fit(kMemory, 100.0);
    double power = 0.0;
    constexpr int kSteps = 400000;
    for (int i = -2000; i < kSteps; ++i) {
        fit.Correct(noise(random) - fit.Value());
        if (i >= 0) power += fit.Value() * fit.Value();
        fit.Step();
    }
    EXPECT_NEAR(power / kSteps / expected, 1.0, 0.05);
}

TEST(RdsLineFit, ItsSlopeStaysWithinItsBounds) {
    CLineFit fit(100.0, 0.5);
    for (int i = 0; i < 200; ++i) {
        fit.Correct(1000.0);
        fit.Step();
        ASSERT_LE(fit.Slope(), 0.5);
    }
    EXPECT_EQ(fit.Slope(), 0.5);
}

// Follows a signal from its finding on; each symbol's odds.
struct Tracking {
    CSymbolTracker tracker;
    std::int64_t first = 0;  // symbol
    std::vector<float> odds;

    void Run(SymbolStream& stream, int pieces) {
        const CMatchedFilter filter;
        CBaseband baseband;
        CSignalSearch search;
        stream.Append(baseband, 300.0);
        const std::optional<FoundSignal> found = search.Look(baseband, filter);
        ASSERT_TRUE(found);
        tracker.Begin(*found, baseband, filter);
        first = static_cast<std::int64_t>(
            std::ceil(baseband.OldestClock() + CMatchedFilter::kReach_bits - found->timing_bits));
        first += std::llround(found->timing_bits - stream.delay_bits);
        float symbol = 0.0f;
        for (int i = 0; i < pieces; ++i) {
            stream.Append(baseband, 200.0);
            while (tracker.Next(baseband, filter, &symbol)) odds.push_back(symbol);
        }
    }
    // Of the symbols from `from` on: how many are wrong, whole inversion apart.
    std::size_t Wrong(const SymbolStream& stream, std::size_t from) const {
        std::size_t wrong = 0;
        for (std::size_t i = from; i < odds.size(); ++i) {
            wrong += (odds[i] > 0.0f) != (stream.symbols[static_cast<std::size_t>(first) + i] > 0) ? 1u : 0u;
        }
        return std::min(wrong, odds.size() - from - wrong);
    }
};

TEST(RdsSymbolTracker, GivesEachSymbolFromTheOldestOnAndTellsTheOffsetAndTheHeight) {
    for (const double offset_Hz : {0.0, 2.0, -5.0, 9.0}) {
        SymbolStream stream;
        stream.delay_bits = 0.4;
        stream.phase_rad = 1.1;
        stream.offset_Hz = offset_Hz;
        stream.height = 0.027;
        Tracking tracking;
        tracking.Run(stream, 5);
        ASSERT_GT(tracking.odds.size(), 1200u) << offset_Hz;
        EXPECT_EQ(tracking.Wrong(stream, 0), 0u) << offset_Hz;
        EXPECT_NEAR(tracking.tracker.Frequency_Hz(), offset_Hz, 0.05);
        EXPECT_NEAR(tracking.tracker.Height(), 0.027, 0.001);
        EXPECT_GT(tracking.tracker.Coherence(), 0.98);
    }
}

TEST(RdsSymbolTracker, AsManySymbolsAreWrongAsTheirOddsSay) {
    SymbolStream stream;
    stream.delay_bits = 0.7;
    stream.phase_rad = -0.6;
    stream.offset_Hz = 1.0;
    stream.noise = 1.5;
    Tracking tracking;
    tracking.Run(stream, 180);
    ASSERT_GT(tracking.odds.size(), 30000u);
    constexpr std::size_t kFrom = 300;
    double expected = 0.0;
    for (std::size_t i = kFrom; i < tracking.odds.size(); ++i) {
        expected += 1.0 / (1.0 + std::exp(std::abs(static_cast<double>(tracking.odds[i]))));
    }
    const auto wrong = static_cast<double>(tracking.Wrong(stream, kFrom));
    EXPECT_GT(wrong, 300.0);
    EXPECT_NEAR(wrong / expected, 1.0, 0.1);
}

}  // namespace
