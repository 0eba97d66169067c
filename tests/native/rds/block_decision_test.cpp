// The trellis against all words tried one by one.
#include "handset/fmdevice/sdr/rds/block_decision.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "tests/native/rds/synthetic_mpx.h"

namespace {

using namespace sdr::rds;

// Symbols of a block on a channel with that ratio of bit energy to noise density, as ln of odds.
SoftBlock Noisy(std::uint32_t block, double ebn0_dB, std::mt19937& random) {
    const double variance = 0.5 / std::pow(10.0, ebn0_dB / 10.0);
    std::normal_distribution<double> noise(0.0, std::sqrt(variance));
    SoftBlock symbols;
    bool one = (random() & 1u) != 0;
    for (std::size_t i = 0; i < kBlockSymbols; ++i) {
        if (i != 0) one ^= (block >> (kBlockBits - i) & 1u) != 0;
        symbols[i] = static_cast<float>(2.0 * ((one ? 1.0 : -1.0) + noise(random)) / variance);
    }
    return symbols;
}

double LikelihoodOf(std::uint32_t block, const SoftBlock& symbols) {
    double sum = 0.0;
    for (const bool start : {false, true}) {
        bool one = start;
        double product = 1.0;
        for (std::size_t i = 0; i < kBlockSymbols; ++i) {
            if (i != 0) one ^= (block >> (kBlockBits - i) & 1u) != 0;
            product /=
                1.0 + std::exp(one ? -static_cast<double>(symbols[i]) : static_cast<double>(symbols[i]));
        }
        sum += product;
    }
    return sum;
}

struct BruteForce {
    std::uint16_t best = 0;
    double odds = 0.0;
    double evidence = 0.0;
};

BruteForce TryAll(const SoftBlock& symbols, Offset offset, const BlockPrior& prior) {
    BruteForce result;
    double all = 0.0;
    double best = 0.0;
    for (std::uint32_t word = 0; word < 0x10000; ++word) {
        const auto information = static_cast<std::uint16_t>(word);
        const double one =
            LikelihoodOf(synthetic::EncodedBlock(information, OffsetWord(offset)), symbols) / 65536.0;
        all += one;
        if (one > best) {
            best = one;
            result.best = information;
        }
    }
    // Random bits: each way of 26 differences is as likely, with either first symbol: together all symbols,
    // which is 1.
    const double chance = 1.0 / 67108864.0;
    result.odds = std::log(best / (all - best + chance * prior.astray / (1.0 - prior.astray)));
    result.evidence = std::log(all / chance);
    return result;
}

TEST(RdsBlockDecision, FindsTheWordAndTheOddsThatTryingAllWordsFinds) {
    CBlockTrellis trellis;
    std::mt19937 random(7);
    for (int i = 0; i < 40; ++i) {
        const auto offset = static_cast<Offset>(i % 5);
        const auto word = static_cast<std::uint16_t>(random());
        const SoftBlock symbols = Noisy(Encode(word, offset), -2.0 + i % 6, random);
        const BlockPrior prior{0.001 * (1 + i % 3), {}};
        const BruteForce all = TryAll(symbols, offset, prior);
        const BlockDecision decision = trellis.Decide(symbols, offset, prior);
        ASSERT_EQ(decision.information, all.best);
        ASSERT_NEAR(decision.odds, all.odds, 1e-3);
        ASSERT_NEAR(decision.evidence, all.evidence, 1e-3);
    }
}

TEST(RdsBlockDecision, EveryWordOfEveryOffsetIsReadWithoutNoise) {
    CBlockTrellis trellis;
    std::mt19937 random(8);
    for (std::size_t i = 0; i < 3000; ++i) {
        const auto offset = static_cast<Offset>(i % kOffsets);
        const auto word = static_cast<std::uint16_t>(random());
        const BlockDecision decision = trellis.Decide(Noisy(Encode(word, offset), 12.0, random), offset);
        ASSERT_EQ(decision.information, word);
        ASSERT_GT(decision.odds, 8.0f);
    }
}

// As many as the odds say are wrong, and not more: a block at odds of 3.5 is wrong three times in a hundred.
TEST(RdsBlockDecision, TheOddsAreWhatTheySay) {
    CBlockTrellis trellis;
    std::mt19937 random(9);
    double expected = 0.0;
    int wrong = 0;
    int received = 0;
    constexpr int kBlocks = 6000;
    for (int i = 0; i < kBlocks; ++i) {
        const auto word = static_cast<std::uint16_t>(random());
        const SoftBlock symbols = Noisy(Encode(word, Offset::kC), 0.0, random);
        const BlockDecision decision = trellis.Decide(symbols, Offset::kC, {1e-9, {}});
        expected += 1.0 / (1.0 + std::exp(static_cast<double>(decision.odds)));
        wrong += decision.information != word ? 1 : 0;
        received += decision.odds > 3.5f ? 1 : 0;
    }
    EXPECT_NEAR(wrong, expected, 4.0 * std::sqrt(expected));
    // The ideal limit at 0 dB is 11 % wrong when every block is taken.
    EXPECT_NEAR(static_cast<double>(wrong) / kBlocks, 0.115, 0.02);
    EXPECT_GT(received, kBlocks * 45 / 100);
}

TEST(RdsBlockDecision, AWordThatIsExpectedNeedsLessAndAnotherIsStillHeard) {
    CBlockTrellis trellis;
    std::mt19937 random(10);
    const BlockPrior expecting{1e-4, std::uint16_t{0xD3C2}};
    int found = 0;
    int plain = 0;
    for (int i = 0; i < 400; ++i) {
        const SoftBlock weak = Noisy(Encode(0xD3C2, Offset::kA), -2.0, random);
        found += trellis.Decide(weak, Offset::kA, expecting).odds > 3.5f ? 1 : 0;
        plain += trellis.Decide(weak, Offset::kA, {1e-4, {}}).odds > 3.5f ? 1 : 0;
        const SoftBlock strong = Noisy(Encode(0x1234, Offset::kA), 8.0, random);
        ASSERT_EQ(trellis.Decide(strong, Offset::kA, expecting).information, 0x1234);
    }
    EXPECT_GT(found, 300);
    EXPECT_LT(plain, 60);
}

TEST(RdsBlockDecision, RandomBitsAreNotTakenForABlockOnceTheAlignmentIsDoubted) {
    CBlockTrellis trellis;
    std::mt19937 random(11);
    int taken = 0;
    for (int i = 0; i < 2000; ++i) {
        const std::uint32_t bits = random() & 0x3FFFFFFu;
        taken += trellis.Decide(Noisy(bits, 10.0, random), Offset::kB, {0.5, {}}).odds > 3.5f ? 1 : 0;
    }
    // One of 1024 has the right syndrome by chance.
    EXPECT_LE(taken, 10);
}

TEST(RdsBlockDecision, AtSightGivesOnlyWhatTheTrellisGives) {
    CBlockTrellis trellis;
    std::mt19937 random(12);
    int atSight = 0;
    for (int i = 0; i < 1500; ++i) {
        const SoftBlock symbols =
            Noisy(Encode(static_cast<std::uint16_t>(random()), Offset::kD), 7.0, random);
        const std::optional<BlockDecision> decision = DecideAtSight(symbols, Offset::kD);
        if (!decision) continue;
        ++atSight;
        const BlockDecision whole = trellis.Decide(symbols, Offset::kD, {1e-12, {}});
        ASSERT_EQ(decision->information, whole.information);
        ASSERT_GT(whole.odds, decision->odds - 4.0f);
        ASSERT_NEAR(decision->evidence, whole.evidence, 0.02f);
    }
    EXPECT_GT(atSight, 300);
}

TEST(RdsBlockDecision, TwoWordsDifferInThreeSymbolsAtLeast) {
    // Of differences, through the sum that makes symbols of them; all inverted is the same word.
    int least = 27;
    for (std::uint32_t word = 1; word < 0x10000; ++word) {
        const std::uint32_t block = Encode(static_cast<std::uint16_t>(word), Offset::kE);
        int ones = 0;
        bool one = false;
        for (int bit = 25; bit >= 0; --bit) {
            one ^= (block >> bit & 1u) != 0;
            ones += one ? 1 : 0;
        }
        least = std::min({least, ones, 27 - ones});
    }
    EXPECT_EQ(least, 3);
}

}  // namespace
