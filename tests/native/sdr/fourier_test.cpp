// Densities against the closed forms of a Hann window.
#include "handset/fmdevice/sdr/fourier.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <random>

namespace {

constexpr std::size_t kSize = 1024;
constexpr double kTwoPi = 6.283185307179586;

TEST(Fourier, AToneStandsInItsBinAndAQuarterOfItInEachNeighbour) {
    // The window takes one and a half bins: a tone of power P in its middle has N P / 1.5 there.
    std::vector<sdr::Sample> tone(kSize);
    constexpr double kPower = 0.25;
    for (const std::size_t bin : {std::size_t{100}, kSize - 100}) {
        for (std::size_t i = 0; i < kSize; ++i) {
            const double angle = kTwoPi * static_cast<double>(bin * i % kSize) / kSize;
            tone[i] = sdr::Sample(std::polar(std::sqrt(kPower), angle));
        }
        std::vector<double> density;
        sdr::CFourierTransform fourier(kSize);
        fourier.AddDensity(tone.data(), &density);
        ASSERT_EQ(density.size(), kSize);
        const double top = kSize * kPower / 1.5;
        EXPECT_NEAR(density[bin] / top, 1.0, 1e-4) << bin;
        EXPECT_NEAR(density[bin - 1] / top, 0.25, 1e-4) << bin;
        EXPECT_NEAR(density[bin + 1] / top, 0.25, 1e-4) << bin;
        EXPECT_LT(density[bin - 2] / top, 1e-6) << bin;
        EXPECT_LT(density[bin + 2] / top, 1e-6) << bin;
    }
}

TEST(Fourier, WhiteNoiseHasItsOwnPowerInEveryBinAndLooksAddUp) {
    std::mt19937 random(3);
    std::normal_distribution<float> normal(0.0f, 0.5f);
    sdr::CFourierTransform fourier(kSize);
    std::vector<double> density;
    constexpr int kLooks = 200;
    std::vector<float> noise(kSize);
    for (int look = 0; look < kLooks; ++look) {
        for (float& value : noise) value = normal(random);
        fourier.AddDensity(noise.data(), &density);
    }
    double sum = 0.0;
    for (const double value : density) sum += value;
    EXPECT_NEAR(sum / kSize / kLooks, 0.25, 0.005);
    // Chance moves a bin of 200 looks by 7 %.
    for (std::size_t k = 2; k < kSize / 2 - 1; ++k) EXPECT_NEAR(density[k] / kLooks, 0.25, 0.11) << k;
}

}  // namespace
