// Checkwords and offset words against the standard's own definitions and long division.
#include "handset/fmdevice/sdr/rds/block_code.h"

#include <gtest/gtest.h>

#include "tests/native/rds/synthetic_mpx.h"

namespace {

using namespace sdr::rds;

TEST(RdsBlockCode, TheOffsetWordsAreThoseOfTheStandard) {
    // IEC 62106, annex A, table A.1, d9 to d0.
    EXPECT_EQ(OffsetWord(Offset::kA), 0b0011111100);
    EXPECT_EQ(OffsetWord(Offset::kB), 0b0110011000);
    EXPECT_EQ(OffsetWord(Offset::kC), 0b0101101000);
    EXPECT_EQ(OffsetWord(Offset::kCPrime), 0b1101010000);
    EXPECT_EQ(OffsetWord(Offset::kD), 0b0110110100);
    EXPECT_EQ(OffsetWord(Offset::kE), 0b0000000000);
}

TEST(RdsBlockCode, EveryWordHasTheCheckwordOfLongDivision) {
    for (std::uint32_t word = 0; word < 0x10000; ++word) {
        ASSERT_EQ(Encode(static_cast<std::uint16_t>(word), Offset::kE),
                  synthetic::EncodedBlock(static_cast<std::uint16_t>(word), 0));
    }
}

TEST(RdsBlockCode, EveryOffsetWordIsRecognisedOnEveryWord) {
    for (std::size_t i = 0; i < kOffsets; ++i) {
        const auto offset = static_cast<Offset>(i);
        for (std::uint32_t word = 0; word < 0x10000; word += 37) {
            const std::uint32_t block = Encode(static_cast<std::uint16_t>(word), offset);
            ASSERT_EQ(OffsetOf(Syndrome(block)), offset);
            ASSERT_EQ(InformationOf(block), word);
        }
    }
}

TEST(RdsBlockCode, NoBurstOfTenBitsPassesForAnotherWordOfTheSameBlock) {
    // 2.3: all single and double errors within a burst of ten bits, and every longer single one with a rest.
    for (std::uint32_t burst = 1; burst < 1u << kCheckBits; ++burst) {
        for (std::size_t at = 0; at + kCheckBits <= kBlockBits; ++at) {
            ASSERT_NE(Syndrome(Encode(0x1234, Offset::kB) ^ burst << at), OffsetWord(Offset::kB));
        }
    }
}

TEST(RdsBlockCode, TheFourBlocksOfAGroupHaveTheirPlaces) {
    EXPECT_EQ(PlaceOf(Offset::kA), 0u);
    EXPECT_EQ(PlaceOf(Offset::kB), 1u);
    EXPECT_EQ(PlaceOf(Offset::kC), 2u);
    EXPECT_EQ(PlaceOf(Offset::kCPrime), 2u);
    EXPECT_EQ(PlaceOf(Offset::kD), 3u);
}

}  // namespace
