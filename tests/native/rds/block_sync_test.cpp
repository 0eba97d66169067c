// Steps, slips and blocks without data, on symbols that need no signal.
#include "handset/fmdevice/sdr/rds/block_sync.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "tests/native/rds/synthetic_mpx.h"

namespace {

using namespace sdr::rds;

constexpr std::uint16_t kPi = 0xD3C2;

class RdsBlockSync : public testing::Test {
  protected:
    void PushBit(bool bit) {
        one_ ^= bit;
        sync_.Push(one_ ? 8.0f : -8.0f);
    }
    void PushBlock(std::uint32_t block) {
        for (int i = 25; i >= 0; --i) PushBit((block >> i & 1u) != 0);
    }
    void PushGroup(std::uint16_t b, std::uint16_t c, std::uint16_t d) {
        const bool versionB = (b & 0x0800) != 0;
        PushBlock(Encode(kPi, Offset::kA));
        PushBlock(Encode(b, Offset::kB));
        PushBlock(Encode(c, versionB ? Offset::kCPrime : Offset::kC));
        PushBlock(Encode(d, Offset::kD));
    }
    void PushRandom(int bits) {
        for (int i = 0; i < bits; ++i) PushBit((random_() & 1u) != 0);
    }
    // A block in noise: no symbol says much, and the third and the last but two of them say the wrong thing.
    void PushWeakBlock(std::uint32_t block) {
        for (int i = 25; i >= 0; --i) {
            one_ ^= (block >> i & 1u) != 0;
            const bool wrong = i == 23 || i == 2;
            sync_.Push(one_ != wrong ? 1.2f : -1.2f);
        }
    }
    void PushClearGroups(std::uint16_t pi, int count) {
        for (int i = 0; i < count; ++i) {
            PushBlock(Encode(pi, Offset::kA));
            PushBlock(Encode(0x2000, Offset::kB));
            PushBlock(Encode(0x1111, Offset::kC));
            PushBlock(Encode(0x2222, Offset::kD));
        }
    }

    std::mt19937 random_{17};
    bool one_ = false;
    std::vector<Group> groups_;
    std::vector<Block> blocks_;
    CBlockSync sync_{[this](std::size_t, const Block& block) { blocks_.push_back(block); },
                     [this](const Group& group) { groups_.push_back(group); }};
};

TEST_F(RdsBlockSync, TwoBlocksAreEnoughAndTheOnesBeforeAreNotLost) {
    PushRandom(57);
    PushGroup(0x2000, 0x1111, 0x2222);
    PushGroup(0x2001, 0x3333, 0x4444);
    EXPECT_TRUE(sync_.InStep());
    ASSERT_GE(groups_.size(), 2u);
    const Group& first = groups_[groups_.size() - 2];
    EXPECT_TRUE(first.Whole());
    EXPECT_EQ(first.blocks[2].information, 0x1111);
    EXPECT_EQ(first.firstBit, 57);
    EXPECT_EQ(groups_.back().blocks[3].information, 0x4444);
    EXPECT_EQ(groups_.back().firstBit, 57 + 104);
}

TEST_F(RdsBlockSync, ASlipOfABitEitherWayIsFollowed) {
    for (int i = 0; i < 20; ++i) PushGroup(0x2000, static_cast<std::uint16_t>(i), 0x2222);
    PushBit(true);
    groups_.clear();
    for (int i = 0; i < 12; ++i) PushGroup(0x2000, static_cast<std::uint16_t>(i), 0x2222);
    ASSERT_GE(groups_.size(), 8u);
    EXPECT_TRUE(groups_.back().Whole());
    EXPECT_EQ(groups_.back().blocks[2].information, 11);
    // One bit lost: the last of a block.
    for (int i = 25; i > 0; --i) PushBit((Encode(kPi, Offset::kA) >> i & 1u) != 0);
    PushBlock(Encode(0x2000, Offset::kB));
    PushBlock(Encode(0x1111, Offset::kC));
    PushBlock(Encode(0x2222, Offset::kD));
    for (int i = 0; i < 12; ++i) PushGroup(0x2000, static_cast<std::uint16_t>(i), 0x2222);
    EXPECT_TRUE(groups_.back().Whole());
    EXPECT_EQ(groups_.back().blocks[2].information, 11);
}

TEST_F(RdsBlockSync, WhatCameBetweenASlipAndItsDiscoveryIsNotPassedOn) {
    for (int i = 0; i < 20; ++i) PushGroup(0x2000, 0x1111, 0x2222);
    blocks_.clear();
    PushBit(false);
    for (int i = 0; i < 20; ++i) PushGroup(0x2000, 0x1111, 0x2222);
    for (const Block& block : blocks_) {
        if (!block.Received()) continue;
        EXPECT_TRUE(block.information == kPi || block.information == 0x2000 || block.information == 0x1111 ||
                    block.information == 0x2222);
    }
}

TEST_F(RdsBlockSync, RandomBitsAreNeverBelieved) {
    PushRandom(1187 * 600);
    for (const Block& block : blocks_) EXPECT_FALSE(block.Certain());
    // Ten minutes of 27000 blocks, all of them clear: a few steps may be tried, none is kept.
    EXPECT_LT(blocks_.size(), 100u);
}

TEST_F(RdsBlockSync, BothOffsetsOfTheThirdBlockAreKnownWithoutTheSecond) {
    for (int i = 0; i < 4; ++i) PushGroup(0x2000, 0x1111, 0x2222);
    PushBlock(Encode(kPi, Offset::kA));
    PushRandom(26);
    PushBlock(Encode(kPi, Offset::kCPrime));
    PushBlock(Encode(0x2222, Offset::kD));
    EXPECT_EQ(groups_.back().blocks[1].status, BlockStatus::kWrong);
    EXPECT_EQ(groups_.back().blocks[2].offset, Offset::kCPrime);
    EXPECT_TRUE(groups_.back().blocks[2].Received());
    PushBlock(Encode(kPi, Offset::kA));
    PushRandom(26);
    PushBlock(Encode(0x5555, Offset::kC));
    PushBlock(Encode(0x2222, Offset::kD));
    EXPECT_EQ(groups_.back().blocks[2].offset, Offset::kC);
    EXPECT_EQ(groups_.back().blocks[2].information, 0x5555);
}

TEST_F(RdsBlockSync, BlocksUnderOffsetECarryNoDataAndDoNoHarm) {
    for (int i = 0; i < 6; ++i) PushGroup(0x2000, 0x1111, 0x2222);
    for (int i = 0; i < 40; ++i) PushBlock(Encode(0x7777, Offset::kE));
    for (const Group* group = &groups_.back() - 8; group != &groups_.back() + 1; ++group) {
        for (const Block& block : group->blocks) EXPECT_EQ(block.status, BlockStatus::kNoData);
    }
    PushGroup(0x2000, 0x1111, 0x2222);
    EXPECT_TRUE(groups_.back().Whole());
}

TEST_F(RdsBlockSync, ABlockInNoiseIsTakenForTheStationsCodeOnceThatIsKnown) {
    PushClearGroups(kPi, 6);
    PushWeakBlock(Encode(kPi, Offset::kA));
    EXPECT_TRUE(blocks_.back().Received());
    EXPECT_EQ(blocks_.back().information, kPi);
    EXPECT_FALSE(blocks_.back().Certain());
}

TEST_F(RdsBlockSync, WithACodeThatWasSeenOnceTheSameBlockIsNothing) {
    // Six codes, each once; this one comes last.
    for (int i = 5; i >= 0; --i) PushClearGroups(static_cast<std::uint16_t>(kPi + 0x111 * i), 1);
    PushWeakBlock(Encode(kPi, Offset::kA));
    EXPECT_FALSE(blocks_.back().Received());
}

TEST_F(RdsBlockSync, OnlyTheBlocksThatRepeatTheCodeAreExpectedToHoldIt) {
    PushClearGroups(kPi, 6);
    PushBlock(Encode(kPi, Offset::kA));
    PushWeakBlock(Encode(kPi, Offset::kB));
    EXPECT_FALSE(blocks_.back().Received());
    PushBlock(Encode(0x2222, Offset::kC));
    PushWeakBlock(Encode(kPi, Offset::kD));
    EXPECT_FALSE(blocks_.back().Received());
    // The third block of version B repeats it.
    PushBlock(Encode(kPi, Offset::kA));
    PushBlock(Encode(0x2800, Offset::kB));
    PushWeakBlock(Encode(kPi, Offset::kCPrime));
    EXPECT_TRUE(blocks_.back().Received());
    EXPECT_EQ(blocks_.back().information, kPi);
}

TEST_F(RdsBlockSync, AnExpectedCodeReplacesNoneThatIsClearAndIsNotMadeOfNoise) {
    PushClearGroups(kPi, 20);
    PushBlock(Encode(0x1234, Offset::kA));
    EXPECT_TRUE(blocks_.back().Received());
    EXPECT_EQ(blocks_.back().information, 0x1234);
    int made = 0;
    for (int i = 0; i < 2000; ++i) {
        PushClearGroups(kPi, 1);
        // In step after clear blocks, and where the code should stand there is noise of any loudness.
        const float size = 0.5f * static_cast<float>(1 + i % 8);
        for (int bit = 0; bit < 26; ++bit) sync_.Push((random_() & 1u) != 0 ? size : -size);
        made += blocks_.back().Received() ? 1 : 0;
        PushBlock(Encode(0x2000, Offset::kB));
        PushBlock(Encode(0x1111, Offset::kC));
        PushBlock(Encode(0x2222, Offset::kD));
    }
    EXPECT_LE(made, 100);
}

TEST_F(RdsBlockSync, AnotherStationsCodeIsExpectedInItsTurnAndTheOldOneNoMore) {
    PushClearGroups(kPi, 20);
    PushClearGroups(0x1234, 12);
    PushWeakBlock(Encode(0x1234, Offset::kA));
    EXPECT_TRUE(blocks_.back().Received());
    EXPECT_EQ(blocks_.back().information, 0x1234);
    PushBlock(Encode(0x2000, Offset::kB));
    PushBlock(Encode(0x1111, Offset::kC));
    PushBlock(Encode(0x2222, Offset::kD));
    PushWeakBlock(Encode(kPi, Offset::kA));
    EXPECT_FALSE(blocks_.back().Received() && blocks_.back().information == kPi);
}

TEST_F(RdsBlockSync, ARestartForgetsTheStep) {
    for (int i = 0; i < 4; ++i) PushGroup(0x2000, 0x1111, 0x2222);
    sync_.Restart();
    EXPECT_FALSE(sync_.InStep());
    blocks_.clear();
    PushBlock(Encode(kPi, Offset::kA));
    EXPECT_TRUE(blocks_.empty());
}

}  // namespace
