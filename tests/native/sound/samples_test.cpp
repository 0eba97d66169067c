// Samples from numbers, and the mean of both sides.
#include "handset/sound/samples.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

TEST(Samples, TheGainGoesEvenlyAndWhatIsTooLoudIsClipped) {
    const std::vector<float> frames = {1.0F, -1.0F, 1.0F, -1.0F, 4.0F, -4.0F, 4.0F, -4.0F};
    std::vector<std::int16_t> samples(frames.size());
    sound::ToSamples(frames.data(), 4, 0.0F, 1.0F, samples.data());
    EXPECT_EQ(samples, (std::vector<std::int16_t>{8192, -8192, 16384, -16384, 32767, -32767, 32767, -32767}));
}

TEST(Samples, AnOddFrameAtTheEndIsMadeAsTheOthersBeforeIt) {
    for (const std::size_t count : {1u, 2u, 5u, 882u}) {
        const std::vector<float> frames(2 * count, -0.3F);
        std::vector<std::int16_t> samples(2 * count);
        sound::ToSamples(frames.data(), count, 0.5F, 0.5F, samples.data());
        EXPECT_EQ(samples, std::vector<std::int16_t>(2 * count, -4915)) << count;
    }
}

TEST(Samples, ALoudspeakerGivesTheMeanOfBothSides) {
    std::int16_t samples[] = {32767, 32767, 100, -300};
    sound::MixDown(samples, 2);
    EXPECT_EQ(samples[0], 32767);
    EXPECT_EQ(samples[2], -100);
    EXPECT_EQ(samples[3], -100);
}

}  // namespace
