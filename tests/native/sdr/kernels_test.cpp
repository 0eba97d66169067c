// Each form of the inner loops against the same in double precision.
#include "handset/fmdevice/sdr/kernels.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace {

constexpr double kTwoPi = 6.283185307179586;

std::vector<float> Random(std::size_t count, unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> uniform(-1.0f, 1.0f);
    std::vector<float> values(count);
    for (float& value : values) value = uniform(random);
    return values;
}

class Kernels : public testing::TestWithParam<const sdr::Kernels*> {
  protected:
    void SetUp() override {
        if (GetParam() == nullptr) GTEST_SKIP() << "this processor has no AVX2";
    }
};

TEST_P(Kernels, AFilterGivesTheSumOfProducts) {
    const std::vector<float> pairs = Random(400, 1);
    const std::vector<double> taps = {0.5, -0.25, 0.125, 1.0, 0.75, -0.5, 0.3, 0.2,
                                      0.1, 0.9,   -0.9,  0.7, 0.6,  0.5,  0.4, 0.3};
    std::vector<float> twice;
    for (const double tap : taps) twice.insert(twice.end(), 2, static_cast<float>(tap));
    for (const std::size_t count : {1, 2, 5, 8}) {
        std::vector<float> results(2 * count);
        GetParam()->filter(pairs.data() + 1, 10, twice.data(), twice.size(), results.data(), count);
        for (std::size_t i = 0; i < results.size(); ++i) {
            double expected = 0.0;
            for (std::size_t k = 0; k < taps.size(); ++k)
                expected += taps[k] * pairs[1 + i / 2 * 10 + 2 * k + i % 2];
            EXPECT_NEAR(results[i], expected, 1e-5);
        }
    }
}

TEST_P(Kernels, ARotationTurnsEachSampleAndTakesDirectCurrentAway) {
    for (const std::size_t count : {1, 3, 512, 1501}) {
        std::vector<float> pairs = Random(2 * count, 2);
        const std::vector<float> before = pairs;
        const float dc[2] = {0.25f, -0.125f};
        GetParam()->rotate(pairs.data(), count, dc, 1.0, 2.5);
        for (std::size_t i = 0; i < count; ++i) {
            const double angle = 1.0 + 2.5 * static_cast<double>(i);
            const double re = before[2 * i] - 0.25;
            const double im = before[2 * i + 1] + 0.125;
            ASSERT_NEAR(pairs[2 * i], re * std::cos(angle) - im * std::sin(angle), 1e-4);
            ASSERT_NEAR(pairs[2 * i + 1], re * std::sin(angle) + im * std::cos(angle), 1e-4);
        }
    }
}

TEST_P(Kernels, ARotationLetsNothingThroughThatIsNoNumber) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float infinite = std::numeric_limits<float>::infinity();
    std::vector<float> pairs;
    for (int i = 0; i < 11; ++i) pairs.insert(pairs.end(), {nan, infinite, -infinite, 1e20f});
    const float dc[2] = {0.0f, 0.0f};
    GetParam()->rotate(pairs.data(), pairs.size() / 2, dc, 0.0, 0.1);
    for (const float value : pairs) EXPECT_EQ(value, 0.0f);
}

TEST_P(Kernels, TheDiscriminatorGivesTheAngleAllAroundTheCircle) {
    for (const std::size_t count : {1, 5, 999}) {
        std::vector<float> pairs = {0.3f, 0.1f};
        std::vector<double> angles;
        double phase = std::atan2(0.1, 0.3);
        for (std::size_t i = 0; i < count; ++i) {
            // From just above half a turn back to just below half a turn on.
            angles.push_back(kTwoPi * ((static_cast<double>(i) + 0.5) / static_cast<double>(count) - 0.5));
            phase += angles.back();
            pairs.push_back(static_cast<float>(0.7 * std::cos(phase)));
            pairs.push_back(static_cast<float>(0.7 * std::sin(phase)));
        }
        std::vector<float> output(count);
        GetParam()->discriminate(pairs.data() + 2, count, 1.0f, output.data());
        for (std::size_t i = 0; i < count; ++i) ASSERT_NEAR(output[i], angles[i], 1e-6);
    }
}

TEST_P(Kernels, TheDiscriminatorOfSilenceIsZero) {
    const std::vector<float> pairs(42, 0.0f);
    std::vector<float> output(20, 1.0f);
    GetParam()->discriminate(pairs.data() + 2, output.size(), 1.0f, output.data());
    for (const float value : output) EXPECT_EQ(value, 0.0f);
}

TEST_P(Kernels, FiveTapsAreSymmetric) {
    const std::vector<float> input = Random(30, 3);
    const float taps[3] = {1.0f, 0.5f, -0.25f};
    std::vector<float> output(26);
    GetParam()->five(input.data() + 2, output.size(), taps, output.data());
    for (std::size_t i = 0; i < output.size(); ++i) {
        EXPECT_NEAR(output[i],
                    input[i + 2] + 0.5 * (input[i + 1] + input[i + 3]) - 0.25 * (input[i] + input[i + 4]),
                    1e-6);
    }
}

TEST_P(Kernels, ThePilotsSumsAndTheDifferenceAreWhatTheyAreDefinedAs) {
    constexpr std::size_t kCount = 384;
    const std::vector<float> multiplex = Random(kCount, 4);
    const std::vector<float> window = Random(kCount, 5);
    std::vector<float> pairs(2 * kCount);
    const sdr::PilotSums sums =
        GetParam()->mixPilot(multiplex.data(), kCount, 0.3, 19000.0 / 384000.0, window.data(), pairs.data());
    sdr::PilotSums expected;
    for (std::size_t i = 0; i < kCount; ++i) {
        const double angle = kTwoPi * (0.3 + 19000.0 / 384000.0 * static_cast<double>(i));
        expected.sine += multiplex[i] * std::sin(angle);
        expected.cosine += multiplex[i] * std::cos(angle);
        expected.risingSine += window[i] * multiplex[i] * std::sin(angle);
        expected.risingCosine += window[i] * multiplex[i] * std::cos(angle);
        ASSERT_EQ(pairs[2 * i], multiplex[i]);
        ASSERT_NEAR(pairs[2 * i + 1], 2.0 * multiplex[i] * std::sin(2.0 * angle), 1e-5);
    }
    EXPECT_NEAR(sums.sine, expected.sine, 1e-4);
    EXPECT_NEAR(sums.cosine, expected.cosine, 1e-4);
    EXPECT_NEAR(sums.risingSine, expected.risingSine, 1e-4);
    EXPECT_NEAR(sums.risingCosine, expected.risingCosine, 1e-4);
}

TEST_P(Kernels, MomentsAreTheSumsOfTheSecondAndFourthPower) {
    const std::vector<float> pairs = Random(2 * 37, 6);
    double second = 0.0;
    double fourth = 0.0;
    for (std::size_t i = 0; i < pairs.size(); i += 2) {
        const double power =
            static_cast<double>(pairs[i]) * pairs[i] + static_cast<double>(pairs[i + 1]) * pairs[i + 1];
        second += power;
        fourth += power * power;
    }
    const sdr::Moments moments = GetParam()->moments(pairs.data(), 37);
    EXPECT_NEAR(moments.second, second, 1e-4);
    EXPECT_NEAR(moments.fourth, fourth, 1e-4);
}

TEST_P(Kernels, BytesAreMovedAndScaled) {
    std::vector<std::uint8_t> bytes;
    for (int i = 0; i < 256; ++i) bytes.push_back(static_cast<std::uint8_t>(i));
    bytes.insert(bytes.end(), {7, 8, 9});
    std::vector<float> output(bytes.size());
    GetParam()->fromUnsigned8(bytes.data(), bytes.size(), 127.5f, 0.5f, output.data());
    for (std::size_t i = 0; i < bytes.size(); ++i)
        ASSERT_EQ(output[i], (static_cast<float>(bytes[i]) - 127.5f) * 0.5f);
}

INSTANTIATE_TEST_SUITE_P(Plain, Kernels, testing::Values(sdr::PlainKernels()));
INSTANTIATE_TEST_SUITE_P(Avx2, Kernels, testing::Values(sdr::Avx2Kernels()));

}  // namespace
