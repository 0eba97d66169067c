// Noise by level, stereo and mono.
#include "handset/fmdevice/band/receiver_sound.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

TEST(ReceiverSound, ABetterLevelHasMoreProgrammeAndLessHiss) {
    EXPECT_EQ(fm::ProgrammeGain(3), 0.0F);
    EXPECT_EQ(fm::ProgrammeGain(20), 1.0F);
    for (int level = 0; level < 100; ++level) {
        EXPECT_LE(fm::ProgrammeGain(level), fm::ProgrammeGain(level + 1));
        EXPECT_GT(fm::HissAmplitude(level), fm::HissAmplitude(level + 1));
    }
    EXPECT_LT(fm::HissAmplitude(65), 0.002F);
    EXPECT_GT(fm::HissAmplitude(3), 0.2F);
}

TEST(ReceiverSound, MonoIsTheMeanOnBothSidesAndStereoKeepsThemApart) {
    fm::CHiss hiss(1);
    float mono[] = {0.4F, 0.2F};
    fm::AddReception(100, false, &hiss, mono, 1);
    EXPECT_NEAR(mono[0], 0.3F, 0.001F);
    EXPECT_EQ(mono[0], mono[1]);
    float stereo[] = {0.4F, 0.2F};
    fm::AddReception(100, true, &hiss, stereo, 1);
    EXPECT_NEAR(stereo[0], 0.4F, 0.001F);
    EXPECT_NEAR(stereo[1], 0.2F, 0.001F);
}

double MeanProduct(const std::vector<float>& frames, std::size_t first, std::size_t second) {
    double sum = 0;
    for (std::size_t i = 0; i + second < frames.size(); i += 4)
        sum += static_cast<double>(frames[i + first]) * static_cast<double>(frames[i + second]);
    return 4 * sum / static_cast<double>(frames.size());
}

TEST(ReceiverSound, TheHissOfASideIsNeitherThatOfTheOtherNorThatOfTheMomentBefore) {
    fm::CHiss hiss(1);
    std::vector<float> frames(400000);
    fm::AddReception(0, true, &hiss, frames.data(), frames.size() / 2);
    const double power = std::pow(fm::HissAmplitude(0), 2) / 3;
    for (std::size_t first = 0; first < 4; ++first) {
        EXPECT_NEAR(MeanProduct(frames, first, first), power, 0.02 * power) << first;
        for (std::size_t second = first + 1; second < 8; ++second)
            EXPECT_NEAR(MeanProduct(frames, first, second), 0, 0.02 * power) << first << " and " << second;
    }
}

TEST(ReceiverSound, AnyNumberOfFramesIsHeardAndNoneBehindThem) {
    constexpr float kUntouched = 7;
    for (const bool stereo : {false, true}) {
        for (std::size_t count = 0; count < 6; ++count) {
            fm::CHiss hiss(20211);
            std::vector<float> frames(20, kUntouched);
            std::fill_n(frames.begin(), 2 * count, 0.25F);
            fm::AddReception(100, stereo, &hiss, frames.data(), count);
            for (std::size_t i = 0; i < 2 * count; ++i) {
                EXPECT_NEAR(frames[i], 0.25F, 0.001F);
                EXPECT_NE(frames[i], 0.25F) << "without hiss";
            }
            for (std::size_t i = 2 * count; i < frames.size(); ++i) EXPECT_EQ(frames[i], kUntouched);
        }
    }
}

}  // namespace
