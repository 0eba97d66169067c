// Noise by level, stereo and mono, and the gain.
#include "handset/fmdevice/receiver_sound.h"

#include <gtest/gtest.h>

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

TEST(ReceiverSound, TheGainGoesEvenlyAndWhatIsTooLoudIsClipped) {
    const std::vector<float> frames = {1.0F, -1.0F, 1.0F, -1.0F, 4.0F, -4.0F, 4.0F, -4.0F};
    std::vector<std::int16_t> samples(frames.size());
    fm::ToSamples(frames.data(), 4, 0.0F, 1.0F, samples.data());
    EXPECT_EQ(samples, (std::vector<std::int16_t>{8192, -8192, 16384, -16384, 32767, -32767, 32767, -32767}));
}

TEST(ReceiverSound, AnOddFrameAtTheEndIsMadeAsTheOthersBeforeIt) {
    for (const std::size_t count : {1u, 2u, 5u, 882u}) {
        const std::vector<float> frames(2 * count, -0.3F);
        std::vector<std::int16_t> samples(2 * count);
        fm::ToSamples(frames.data(), count, 0.5F, 0.5F, samples.data());
        EXPECT_EQ(samples, std::vector<std::int16_t>(2 * count, -4915)) << count;
    }
}

TEST(ReceiverSound, ALoudspeakerGivesTheMeanOfBothSides) {
    std::int16_t samples[] = {32767, 32767, 100, -300};
    fm::MixDown(samples, 2);
    EXPECT_EQ(samples[0], 32767);
    EXPECT_EQ(samples[2], -100);
    EXPECT_EQ(samples[3], -100);
}

}  // namespace
