// Limits against closed forms and against what the theory's tables say.
#include "tests/bench/reception/ideal_limit.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

TEST(BenchLimit, EnergyToNoiseFollowsCarrierToNoiseAndTheSquareOfTheDeviation) {
    // Noise of f^2 N0 / C at 57 kHz, (2 kHz)^2 / 4 / 1187.5 a bit.
    EXPECT_NEAR(bench::EnergyToNoise_dB(66, 2000), 66 - 65.864, 0.001);
    EXPECT_NEAR(bench::EnergyToNoise_dB(76, 2000) - bench::EnergyToNoise_dB(66, 2000), 10, 1e-9);
    EXPECT_NEAR(bench::EnergyToNoise_dB(66, 1000) - bench::EnergyToNoise_dB(66, 2000), -6.02, 0.01);
}

TEST(BenchLimit, TheBestDecisionErrsAsOftenAsIsKnown) {
    // 11 and 1.3 % at 0 and 2 dB; three times the deviation of so few blocks.
    EXPECT_NEAR(bench::BestBlockErrorRate(0, 700, 3), 0.11, 0.035);
    EXPECT_NEAR(bench::BestBlockErrorRate(2, 700, 5), 0.013, 0.013);
}

TEST(BenchLimit, WithoutNoiseNoBlockIsLostAndInNothingButNoiseEveryOne) {
    EXPECT_EQ(bench::BestBlockErrorRate(30, 50, 1), 0);
    EXPECT_EQ(bench::BestBlockErrorRate(-60, 50, 1), 1);
}

// The integral over f^2 and the two sides of 38 kHz, without de-emphasis, is a polynomial; 50 us takes some
// off.
TEST(BenchLimit, TheLimitOfStereoSoundIsThatOfTriangularNoise) {
    EXPECT_NEAR(bench::StereoLimit_dB(66, 57000), 27.0, 0.05);
    EXPECT_NEAR(bench::StereoLimit_dB(80, 57000), 41.0, 0.05);
    EXPECT_NEAR(bench::StereoLimit_dB(80, 57000) - bench::StereoLimit_dB(80, 28500), 6.02, 0.01);
    const double cubes = std::pow(15000.0, 3) / 3 + (std::pow(38000.0, 3) - std::pow(23000.0, 3)) / 3 +
                         (std::pow(53000.0, 3) - std::pow(38000.0, 3)) / 3;
    const double flat_dB = 80 + 10 * std::log10(57000.0 * 57000.0 / 2 / cubes);
    EXPECT_GT(bench::StereoLimit_dB(80, 57000), flat_dB);
    EXPECT_LT(bench::StereoLimit_dB(80, 57000), flat_dB + 10);
}

}  // namespace
