// What was seen of the band, and the seek by it.
#include "handset/fmdevice/antenna/band_memory.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

namespace {

using fm::CBandMemory;
using fm::CBandSeek;

// Of a stick at 1.92 MHz.
constexpr double kRate_Hz = 1.92e6;
constexpr double kHalf_Hz = 806e3;

// A band with stations at these channels, looked at around a centre.
void Look(CBandMemory* memory, const std::set<std::uint32_t>& stations, double centre_Hz,
          std::uint64_t now_ms) {
    std::vector<sdr::ChannelLook> looks;
    for (const double f : CBandMemory::Raster_Hz()) {
        if (std::fabs(f - centre_Hz) > kHalf_Hz) continue;
        sdr::ChannelLook look;
        look.frequency_Hz = f;
        look.carrier = stations.count(static_cast<std::uint32_t>(std::lround(f / 1e4))) > 0;
        look.level = look.carrier ? 40.0 : 2.0;
        looks.push_back(look);
    }
    memory->See(looks, {centre_Hz, kRate_Hz, true}, now_ms);
}

struct Sought {
    CBandSeek::Where where;
    std::uint32_t channel;
    int looks;
};

Sought Seek(const std::set<std::uint32_t>& stations, std::uint32_t from, bool up) {
    CBandMemory memory;
    CBandSeek seek(from, up);
    for (int looks = 0; looks < 100; ++looks) {
        const auto where = seek.GoOn(memory, 0);
        if (where != CBandSeek::Where::kUnknown) return {where, seek.Channel_10kHz(), looks};
        Look(&memory, stations, seek.Centre_Hz(kHalf_Hz), 1);
    }
    return {CBandSeek::Where::kUnknown, 0, 100};
}

TEST(BandSeek, FindsTheNextStationEachWayRoundTheEnds) {
    const std::set<std::uint32_t> stations = {8760, 9850, 10790};
    struct Row {
        std::uint32_t from;
        bool up;
        std::uint32_t found;
    };
    constexpr Row kRows[] = {{8750, true, 8760},  {8760, true, 9850},   {9850, true, 10790},
                             {10790, true, 8760}, {8760, false, 10790}, {10800, false, 10790},
                             {9850, false, 8760}, {9855, false, 9850},  {9845, true, 9850}};
    for (const Row& row : kRows) {
        const Sought sought = Seek(stations, row.from, row.up);
        EXPECT_EQ(sought.where, CBandSeek::Where::kFound) << row.from;
        EXPECT_EQ(sought.channel, row.found) << row.from;
    }
}

TEST(BandSeek, AnEmptyBandIsSeenInAsFewLooksAsItHasRoomFor) {
    for (const bool up : {true, false}) {
        const Sought sought = Seek({}, 9000, up);
        EXPECT_EQ(sought.where, CBandSeek::Where::kNothing);
        EXPECT_LE(sought.looks, 14);
    }
}

TEST(BandSeek, TheOnlyStationIsNotFoundFromItself) {
    EXPECT_EQ(Seek({9850}, 9850, true).where, CBandSeek::Where::kNothing);
}

TEST(BandSeek, WhatWasSeenTooLongAgoIsLookedAtAgain) {
    CBandMemory memory;
    Look(&memory, {9010}, 90e6, 1000);
    Look(&memory, {9010}, 90.2e6, 1000);
    CBandSeek seek(9000, true);
    EXPECT_EQ(seek.GoOn(memory, 1001), CBandSeek::Where::kUnknown);
    EXPECT_EQ(seek.Channel_10kHz(), 9010u);
    EXPECT_EQ(seek.GoOn(memory, 1000), CBandSeek::Where::kFound);
}

TEST(BandSeek, AStationIsStoppedAtOnceItWasSeenFromTwoCentres) {
    for (int step = -15; step <= 15; ++step) {
        const double first_Hz = 100e6 + step * 50e3;
        CBandMemory memory;
        Look(&memory, {10000}, first_Hz, 1);
        CBandSeek seek(9990, true);
        ASSERT_EQ(seek.GoOn(memory, 0), CBandSeek::Where::kUnknown) << step;
        EXPECT_EQ(seek.Channel_10kHz(), 10000u);
        const double other_Hz = seek.Centre_Hz(kHalf_Hz);
        // It can stay there to be received, and what is in the middle is between two channels.
        EXPECT_GE(std::fabs(other_Hz - 100e6), 150e3) << step;
        EXPECT_LE(std::fabs(other_Hz - 100e6), 700e3) << step;
        EXPECT_NEAR(std::fabs(std::remainder(other_Hz, 100e3)), 50e3, 1.0) << step;
        Look(&memory, {10000}, first_Hz, 2);
        EXPECT_EQ(seek.GoOn(memory, 0), CBandSeek::Where::kUnknown) << step;
        Look(&memory, {10000}, other_Hz, 3);
        EXPECT_EQ(seek.GoOn(memory, 0), CBandSeek::Where::kFound) << step;
    }
}

TEST(BandSeek, AnImageThatMovesWithTheCentreIsPassedBy) {
    // Where the converter shows a station at 99.6 MHz once more: its carrier times so much, folded at the
    // rate.
    for (const double times : {-1.0, -3.0, 3.0, 5.0}) {
        CBandMemory memory;
        CBandSeek seek(9960, true);
        auto where = CBandSeek::Where::kUnknown;
        for (int looks = 0; looks < 30 && where == CBandSeek::Where::kUnknown; ++looks) {
            where = seek.GoOn(memory, 0);
            if (where != CBandSeek::Where::kUnknown) break;
            const double centre_Hz = seek.Centre_Hz(kHalf_Hz);
            const double image_Hz = centre_Hz + std::remainder(times * (99.6e6 - centre_Hz), kRate_Hz);
            const auto image = static_cast<std::uint32_t>(std::lround(image_Hz / 1e5)) * 10;
            const bool inBand = std::fabs(99.6e6 - centre_Hz) < kRate_Hz / 2.0;
            Look(&memory,
                 inBand ? std::set<std::uint32_t>{9960, image, 10300} : std::set<std::uint32_t>{10300},
                 centre_Hz, 1);
        }
        EXPECT_EQ(where, CBandSeek::Where::kFound) << times;
        EXPECT_EQ(seek.Channel_10kHz(), 10300u) << times;
    }
}

TEST(BandMemory, WhatHasNoOtherCentreIsBelievedAtOnce) {
    CBandMemory memory;
    sdr::ChannelLook station;
    station.frequency_Hz = 90e6;
    station.level = 40.0;
    station.carrier = true;
    memory.See({station}, {90e6, kRate_Hz, false}, 5);
    EXPECT_EQ(memory.Station(25, 0), true);
    EXPECT_FALSE(memory.Doubt_Hz(25));
}

TEST(BandMemory, KeepsLevelsAndSaysWhatItNeverSaw) {
    CBandMemory memory;
    EXPECT_EQ(memory.Levels()[0], fm::kNeverSeen);
    Look(&memory, {8750}, 87.5e6, 5);
    EXPECT_EQ(memory.Levels()[0], 40);
    EXPECT_EQ(memory.Levels()[1], 2);
    EXPECT_EQ(memory.Levels()[100], fm::kNeverSeen);
}

TEST(BandMemory, ThePowerOfANeighbourIsNoLevelOfAChannel) {
    CBandMemory memory;
    sdr::ChannelLook beside;
    beside.frequency_Hz = 87.5e6;
    beside.level = 30.0;
    memory.See({beside}, {90.05e6, kRate_Hz, true}, 5);
    EXPECT_EQ(memory.Levels()[0], fm::kSeekThreshold);
}

}  // namespace
