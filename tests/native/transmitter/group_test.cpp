// Checkwords and bits of groups, against the tables of the standard.
#include "handset/transmitter/group.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using transmitter::Bits;
using transmitter::Block;
using transmitter::Checkword;
using transmitter::Group;
using transmitter::Offset;

constexpr auto kNoOffset = static_cast<Offset>(0);

// IEC 62106, annex B, the rows of the parity-check matrix: what a received bit adds to the syndrome, first
// bit first.
constexpr std::uint16_t kParityRows[26] = {0x200, 0x100, 0x080, 0x040, 0x020, 0x010, 0x008, 0x004, 0x002,
                                           0x001, 0x2DC, 0x16E, 0x0B7, 0x287, 0x39F, 0x313, 0x355, 0x376,
                                           0x1BB, 0x201, 0x3DC, 0x1EE, 0x0F7, 0x2A7, 0x38F, 0x31B};

std::uint16_t Syndrome(std::uint32_t block) {
    std::uint16_t syndrome = 0;
    for (int bit = 0; bit < 26; ++bit) {
        if ((block >> (25 - bit) & 1u) != 0)
            syndrome = static_cast<std::uint16_t>(syndrome ^ kParityRows[bit]);
    }
    return syndrome;
}

TEST(TransmitterGroups, ACheckwordIsTheGeneratorMatrixsRowOfEachSingleBit) {
    constexpr std::uint16_t kRows[16] = {0x077, 0x2E7, 0x3AF, 0x30B, 0x359, 0x370, 0x1B8, 0x0DC,
                                         0x06E, 0x037, 0x2C7, 0x3BF, 0x303, 0x35D, 0x372, 0x1B9};
    for (int bit = 0; bit < 16; ++bit) {
        EXPECT_EQ(Checkword(static_cast<std::uint16_t>(0x8000 >> bit), kNoOffset), kRows[bit])
            << "bit " << bit;
    }
}

TEST(TransmitterGroups, EveryWordsBlockHasTheSyndromeOfItsOffset) {
    const struct {
        Offset offset;
        std::uint16_t syndrome;
    } kOffsets[] = {{Offset::kA, 0x3D8},
                    {Offset::kB, 0x3D4},
                    {Offset::kC, 0x25C},
                    {Offset::kCPrime, 0x3CC},
                    {Offset::kD, 0x258}};
    for (const auto& row : kOffsets) {
        for (std::uint32_t word = 0; word < 0x10000; ++word) {
            ASSERT_EQ(Syndrome(Block(static_cast<std::uint16_t>(word), row.offset)), row.syndrome)
                << std::hex << word << " with " << static_cast<int>(row.offset);
        }
    }
}

TEST(TransmitterGroups, TheThirdBlockOfVersionBHasTheOtherOffset) {
    const Group plain{{0xD301, 0x0000, 0x1234, 0x5678}, {}};
    const Group versionB{{0xD301, 0x0800, 0x1234, 0x5678}, {}};
    EXPECT_EQ(OffsetAt(plain, 2), Offset::kC);
    EXPECT_EQ(OffsetAt(versionB, 2), Offset::kCPrime);
}

TEST(TransmitterGroups, TheBitsAreTheFourBlocksInOrderHighestFirstWithWhatIsToBeTurnedOver) {
    Group group{{0xD301, 0x0408, 0xE0CD, 0x4B4F}, {}};
    const auto bits = Bits(group);
    std::vector<std::uint32_t> blocks(4);
    for (std::size_t i = 0; i < bits.size(); ++i) blocks[i / 26] = blocks[i / 26] << 1 | (bits[i] ? 1u : 0u);
    EXPECT_THAT(blocks, testing::ElementsAre(Block(0xD301, Offset::kA), Block(0x0408, Offset::kB),
                                             Block(0xE0CD, Offset::kC), Block(0x4B4F, Offset::kD)));
    group.flips[3] = 1u << 25;
    const auto flipped = Bits(group);
    for (std::size_t i = 0; i < bits.size(); ++i) EXPECT_EQ(flipped[i] != bits[i], i == 78) << "bit " << i;
}

}  // namespace
