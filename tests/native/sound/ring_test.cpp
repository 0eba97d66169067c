// The ring behind the taps.
#include "handset/sound/ring.h"

#include <gtest/gtest.h>

namespace {

// Frames whose samples say their position.
std::vector<std::int16_t> Frames(std::uint64_t from, std::size_t count) {
    std::vector<std::int16_t> samples;
    for (std::size_t i = 0; i < count; ++i) {
        samples.push_back(static_cast<std::int16_t>(from + i));
        samples.push_back(static_cast<std::int16_t>(-static_cast<int>(from + i)));
    }
    return samples;
}

TEST(SoundRing, WhatWasWrittenIsReadAtItsPosition) {
    sound::CSoundRing ring(10);
    ring.SkipTo(1003);
    for (std::uint64_t position = 1003; position < 1100; position += 7) {
        ring.Append(Frames(position, 7).data(), 7);
        std::vector<std::int16_t> read(14);
        std::uint64_t at = position;
        ASSERT_EQ(ring.Read(&at, read.data(), 7), 7u);
        ASSERT_EQ(at, position);
        ASSERT_EQ(read, Frames(position, 7));
    }
}

TEST(SoundRing, TheOldestGiveWayAndALateReaderIsMovedOn) {
    sound::CSoundRing ring(10);
    ring.Append(Frames(0, 8).data(), 8);
    ring.Append(Frames(8, 8).data(), 8);
    EXPECT_EQ(ring.Begin(), 6u);
    EXPECT_EQ(ring.End(), 16u);
    std::uint64_t at = 2;
    std::vector<std::int16_t> read(40);
    ASSERT_EQ(ring.Read(&at, read.data(), 20), 10u);
    EXPECT_EQ(at, 6u);
    read.resize(20);
    EXPECT_EQ(read, Frames(6, 10));
}

TEST(SoundRing, WhatIsNotThereYetIsNotRead) {
    sound::CSoundRing ring(10);
    ring.SkipTo(50);
    std::uint64_t at = 60;
    std::int16_t sample[2];
    EXPECT_EQ(ring.Read(&at, sample, 1), 0u);
    EXPECT_EQ(at, 60u);
}

}  // namespace
