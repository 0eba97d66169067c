// Sound that is heard at its moment, whoever listens when.
#include "handset/fmdevice/antenna/clocked_sound.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <random>

namespace {

using fm::CClockedSound;
constexpr double kLead_s = 0.15;
constexpr std::uint64_t kLead = 6615;
constexpr std::size_t kBlock = 441;

// Frames that carry their number.
std::vector<float> Numbered(std::uint64_t first, std::size_t count) {
    std::vector<float> frames;
    for (std::size_t i = 0; i < count; ++i) {
        frames.push_back(static_cast<float>(first + i));
        frames.push_back(-static_cast<float>(first + i));
    }
    return frames;
}

float At(const CClockedSound& sound, std::uint64_t position) {
    float frame[2];
    sound.Read(position, frame, 1);
    return frame[0];
}

TEST(ClockedSound, EachFrameIsHeardItsLeadAfterItsArrivalHoweverLateItIsAskedFor) {
    CClockedSound sound(4.0, kLead_s);
    constexpr std::uint64_t kStart = 1000000;
    std::uint64_t made = 1;
    for (std::uint64_t now = kStart; now < kStart + 100 * kBlock; now += kBlock, made += kBlock)
        sound.Append(Numbered(made, kBlock).data(), kBlock, now);
    EXPECT_EQ(At(sound, kStart + kLead - 1), 0.0F);
    for (std::uint64_t i = 0; i < 100 * kBlock; i += 97)
        ASSERT_EQ(At(sound, kStart + kLead + i), static_cast<float>(1 + i));
    EXPECT_EQ(At(sound, kStart + kLead + 100 * kBlock), 0.0F);
    EXPECT_EQ(sound.Gaps(), 0u);
    EXPECT_NEAR(sound.Fill_s(kStart + 99 * kBlock), kLead_s + 0.01, 1e-3);
}

TEST(ClockedSound, AfterAGapOfSilenceItBeginsAnewWithItsLead) {
    CClockedSound sound(4.0, kLead_s);
    sound.Append(Numbered(1, kBlock).data(), kBlock, 100000);
    sound.Append(Numbered(1000, kBlock).data(), kBlock, 200000);
    EXPECT_EQ(sound.Gaps(), 1u);
    EXPECT_EQ(At(sound, 150000), 0.0F);
    EXPECT_EQ(At(sound, 200000 + kLead), 1000.0F);
}

TEST(ClockedSound, WhatComesMuchTooEarlyIsLeftOutUntilTheLeadIsRight) {
    CClockedSound sound(4.0, kLead_s);
    // A second at once, as after a stalled network; then as usual.
    for (int i = 0; i < 100; ++i) sound.Append(Numbered(1, kBlock).data(), kBlock, 500000);
    EXPECT_LE(sound.Fill_s(500000), kLead_s + CClockedSound::kMostAhead_s + 0.011);
    EXPECT_GT(sound.LeftOut(), 20000u);
    std::uint64_t now = 500000;
    for (int i = 0; i < 100; ++i, now += kBlock) sound.Append(Numbered(1, kBlock).data(), kBlock, now);
    EXPECT_NEAR(sound.Fill_s(now), kLead_s, 0.02);
    EXPECT_EQ(sound.Gaps(), 0u);
}

TEST(ClockedSound, AnotherStationSilencesWhatWasReceivedBefore) {
    CClockedSound sound(4.0, kLead_s);
    for (int i = 0; i < 20; ++i) sound.Append(Numbered(1, kBlock).data(), kBlock, 300000);
    sound.Silence(300000 + kLead + 100);
    EXPECT_NE(At(sound, 300000 + kLead + 99), 0.0F);
    EXPECT_EQ(At(sound, 300000 + kLead + 100), 0.0F);
    EXPECT_EQ(At(sound, 300000 + kLead + 8000), 0.0F);
}

// Whatever arrives when, and however far back is asked for: at each moment there is one frame or silence, and
// frames are heard in their order.
TEST(ClockedSound, NoArrivalWhateverBringsItDown) {
    CClockedSound sound(0.5, kLead_s);
    std::mt19937 random(3);
    std::uint64_t now = 0, made = 1;
    std::vector<float> heard(2 * kBlock);
    std::map<std::uint64_t, float> all;
    std::size_t sounding = 0;
    for (int i = 0; i < 3000; ++i) {
        now += random() % (i % 50 == 0 ? 10000000 : 2000);
        const std::size_t count = random() % (i % 30 == 0 ? 50000 : 1000);
        sound.Append(Numbered(made, count).data(), count, now);
        made += count;
        if (random() % 20 == 0) sound.Silence(now);
        const std::uint64_t back = random() % 60000;
        const std::uint64_t from = now + 10000 > back ? now + 10000 - back : 0;
        sound.Read(from, heard.data(), kBlock);
        for (std::size_t k = 0; k < kBlock; ++k) {
            const float frame = heard[2 * k];
            ASSERT_EQ(heard[2 * k + 1], -frame);
            if (frame == 0.0F) continue;
            ++sounding;
            const auto [place, fresh] = all.emplace(from + k, frame);
            ASSERT_EQ(place->second, frame) << "another one than before";
            if (place != all.begin()) {
                ASSERT_LT(std::prev(place)->second, frame);
            }
            if (std::next(place) != all.end()) {
                ASSERT_GT(std::next(place)->second, frame);
            }
        }
    }
    EXPECT_GT(sounding, 50000u);
}

}  // namespace
