// Noise by level, stereo and mono.
#include "handset/fmdevice/band/receiver_sound.h"

#include <gtest/gtest.h>

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
    fm::CNoise noise(1);
    float mono[] = {0.4F, 0.2F};
    fm::AddReception(100, false, &noise, mono, 1);
    EXPECT_NEAR(mono[0], 0.3F, 0.001F);
    EXPECT_EQ(mono[0], mono[1]);
    float stereo[] = {0.4F, 0.2F};
    fm::AddReception(100, true, &noise, stereo, 1);
    EXPECT_NEAR(stereo[0], 0.4F, 0.001F);
    EXPECT_NEAR(stereo[1], 0.2F, 0.001F);
}

}  // namespace
