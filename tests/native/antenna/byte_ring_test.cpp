// Bytes of a stream on their way from who receives them to who needs them.
#include "handset/fmdevice/antenna/byte_ring.h"

#include <gtest/gtest.h>

#include <deque>
#include <random>

namespace {

using fm::CByteRing;

TEST(ByteRing, WhatIsWrittenIsReadInOrder) {
    CByteRing ring(8, 2);
    const std::uint8_t bytes[] = {1, 2, 3, 4, 5};
    ring.Write(bytes, 5);
    std::uint8_t read[8] = {};
    EXPECT_EQ(ring.Read(read, 3), 3u);
    EXPECT_EQ(read[2], 3);
    ring.Write(bytes, 5);
    EXPECT_EQ(ring.Held(), 7u);
    EXPECT_EQ(ring.Read(read, 8), 7u);
    EXPECT_EQ(read[0], 4);
    EXPECT_EQ(read[6], 5);
    EXPECT_EQ(ring.TakeLost(), 0u);
}

// Against a plain queue: whatever is written and read, in whatever pieces, comes in order but for whole
// samples that were lost and counted.
TEST(ByteRing, OnlyWholeSamplesAreLostAndEachIsCounted) {
    std::mt19937 random(11);
    for (int run = 0; run < 300; ++run) {
        const std::size_t unit = 1u << random() % 4;
        const std::size_t capacity = unit * (1 + random() % 20);
        CByteRing ring(capacity, unit);
        std::uint64_t written = 0, next = 0;
        for (int i = 0; i < 100; ++i) {
            std::vector<std::uint8_t> bytes(random() % (2 * capacity + 3));
            for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(written++ * 7);
            ring.Write(bytes.data(), bytes.size());
            const std::uint64_t lost = ring.TakeLost();
            ASSERT_EQ(lost % unit, 0u);
            next += lost;
            ASSERT_EQ(ring.Held(), written - next);
            ASSERT_LE(ring.Held(), capacity);
            std::vector<std::uint8_t> read(random() % (capacity + 2));
            const std::size_t count = ring.Read(read.data(), read.size());
            for (std::size_t k = 0; k < count; ++k)
                ASSERT_EQ(read[k], static_cast<std::uint8_t>(next++ * 7)) << run;
        }
    }
}

}  // namespace
