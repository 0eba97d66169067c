// What the peer is given is the station's multiplex, as loud and as fast as it was sent.
#include "tests/bench/reception/reference_multiplex.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

constexpr double kPi = 3.14159265358979323846;

// A carrier deviated by a tone, and another one beside it that is not to be heard.
std::vector<std::complex<float>> Air(double rate_Hz, double tone_Hz, double deviation_Hz, double beside_Hz) {
    std::vector<std::complex<float>> samples;
    for (int i = 0; i < static_cast<int>(rate_Hz / 10); ++i) {
        const double t = i / rate_Hz;
        const double phase = deviation_Hz / tone_Hz * std::sin(2 * kPi * tone_Hz * t);
        samples.emplace_back(std::polar(0.5, phase));
        if (beside_Hz != 0) samples.back() += std::complex<float>(std::polar(0.7, 2 * kPi * beside_Hz * t));
    }
    return samples;
}

double Size(const std::vector<std::int16_t>& multiplex, double tone_Hz) {
    std::complex<double> sum = 0;
    constexpr std::size_t kCount = 8550;  // whole periods of every tone here
    for (std::size_t i = 0; i < kCount; ++i)
        sum +=
            std::polar(1.0 * multiplex[i], -2 * kPi * tone_Hz * static_cast<double>(i) / bench::kPeerRate_Hz);
    return 2 * std::abs(sum) / kCount;
}

// A discriminator by differences droops by sin(x) / x.
double Expected(double rate_Hz, double tone_Hz, double deviation_Hz) {
    const double x = kPi * tone_Hz / rate_Hz;
    return deviation_Hz / 75000 * 32767 / 3 * std::sin(x) / x;
}

TEST(BenchReferenceMultiplex, ATonesSizeIsItsDeviationAtEveryRate) {
    for (const double rate_Hz : {240000.0, 960000.0}) {
        for (const double tone_Hz : {1000.0, 19000.0, 57000.0}) {
            const auto multiplex =
                bench::ReferenceMultiplex(Air(rate_Hz, tone_Hz, 5000, 0), rate_Hz, rate_Hz / 2);
            ASSERT_GT(multiplex.size(), 16500u);
            const double expected = Expected(rate_Hz, tone_Hz, 5000);
            EXPECT_NEAR(Size(multiplex, tone_Hz) / expected, 1, 0.01) << rate_Hz << ", " << tone_Hz;
            EXPECT_LT(Size(multiplex, tone_Hz == 1000 ? 30000 : 1000) / expected, 0.01);
        }
    }
}

TEST(BenchReferenceMultiplex, ANeighbourOutsideTheWidthIsNotHeard) {
    const auto alone = bench::ReferenceMultiplex(Air(960000, 1000, 20000, 0), 960000, 100000);
    const auto beside = bench::ReferenceMultiplex(Air(960000, 1000, 20000, 250000), 960000, 100000);
    EXPECT_NEAR(Size(beside, 1000) / Size(alone, 1000), 1, 0.01);
    EXPECT_NEAR(Size(alone, 1000) / Expected(960000, 1000, 20000), 1, 0.01);
}

}  // namespace
