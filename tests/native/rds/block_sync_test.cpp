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

    std::mt19937 random_{17};
    bool one_ = false;
    std::vector<Group> groups_;
    std::vector<Block> blocks_;
    BlockSync sync_{[this](std::size_t, const Block& block) { blocks_.push_back(block); },
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

TEST_F(RdsBlockSync, ARestartForgetsTheStep) {
    for (int i = 0; i < 4; ++i) PushGroup(0x2000, 0x1111, 0x2222);
    sync_.Restart();
    EXPECT_FALSE(sync_.InStep());
    blocks_.clear();
    PushBlock(Encode(kPi, Offset::kA));
    EXPECT_TRUE(blocks_.empty());
}

}  // namespace
