// Where seeks end.
#include "handset/fmdevice/band/seek.h"

#include <gtest/gtest.h>

#include <map>

namespace {

fm::SeekResult Seek(const std::map<std::uint32_t, int>& levels, std::uint32_t from, bool up, bool wrap) {
    return fm::SeekStation(from, up, wrap, [&](std::uint32_t channel) {
        const auto level = levels.find(channel);
        return level == levels.end() ? fm::kNoiseLevel : level->second;
    });
}

const std::map<std::uint32_t, int> kBand = {{8760, 40}, {9850, 45}, {10790, 30}};

TEST(Seek, TheNextStationInTheDirectionIsFound) {
    EXPECT_EQ(Seek(kBand, 8750, true, false).channel, 8760u);
    EXPECT_EQ(Seek(kBand, 8760, true, false).channel, 9850u);
    EXPECT_EQ(Seek(kBand, 10790, false, false).channel, 9850u);
}

TEST(Seek, PastAnEndItGoesOnFromTheOtherOrFails) {
    EXPECT_EQ(Seek(kBand, 10790, true, true).channel, 8760u);
    EXPECT_EQ(Seek(kBand, 8760, false, true).channel, 10790u);
    EXPECT_FALSE(Seek(kBand, 10790, true, false).found);
    EXPECT_FALSE(Seek(kBand, 8760, false, false).found);
}

TEST(Seek, TheStationItSetsOutFromIsNotFoundAgain) {
    EXPECT_FALSE(Seek({{9850, 45}}, 9850, true, true).found);
    EXPECT_FALSE(Seek({{9850, 45}}, 9850, false, true).found);
    EXPECT_FALSE(Seek({}, 8750, true, true).found);
}

TEST(Seek, StationsAtTheVeryEndsAreFound) {
    EXPECT_EQ(Seek({{10800, 20}}, 10790, true, false).channel, 10800u);
    EXPECT_EQ(Seek({{8750, 20}}, 8760, false, false).channel, 8750u);
    EXPECT_EQ(Seek({{8750, 20}}, 10800, true, true).channel, 8750u);
}

TEST(Seek, FromBetweenTwoRasterPointsBothNeighboursAreReached) {
    const std::map<std::uint32_t, int> band = {{9850, 40}, {9860, 40}};
    EXPECT_EQ(Seek(band, 9855, true, false).channel, 9860u);
    EXPECT_EQ(Seek(band, 9855, false, false).channel, 9850u);
}

TEST(Seek, OnlyALevelAboveTheThresholdIsAStation) {
    EXPECT_FALSE(Seek({{9850, fm::kSeekThreshold}}, 8750, true, true).found);
    EXPECT_TRUE(Seek({{9850, fm::kSeekThreshold + 1}}, 8750, true, true).found);
}

TEST(Seek, ItTakesATenthToThreeTenthsOfASecond) {
    EXPECT_EQ(Seek(kBand, 8750, true, false).Duration_ms(), 101u);
    EXPECT_EQ(Seek({}, 8750, true, true).Duration_ms(), 305u);
}

}  // namespace
