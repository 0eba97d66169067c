// What becomes a text, and what never does.
#include "handset/fmdevice/sdr/rds/text_voter.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

using sdr::rds::CTextVoter;

std::uint16_t PairOf(const std::string& text, std::size_t pair) {
    const auto letter = [&text](std::size_t i) {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : 0x20u;
    };
    return static_cast<std::uint16_t>(letter(2 * pair) << 8 | letter(2 * pair + 1));
}

void SendRound(CTextVoter& voter, const std::string& text, std::size_t pairs, bool certain) {
    for (std::size_t i = 0; i < pairs; ++i) voter.Take(i, PairOf(text, i), certain);
}

TEST(RdsTextVoter, OneRoundBeyondDoubtMakesATextWhole) {
    CTextVoter voter(4, CTextVoter::Length::kFixed);
    SendRound(voter, "KORA ONE", 3, true);
    EXPECT_FALSE(voter.Whole());
    voter.Take(3, PairOf("KORA ONE", 3), true);
    EXPECT_EQ(voter.Whole(), "KORA ONE");
}

TEST(RdsTextVoter, WithDoubtEveryPairIsAwaitedTwice) {
    CTextVoter voter(4, CTextVoter::Length::kFixed);
    SendRound(voter, "KORA ONE", 4, false);
    EXPECT_FALSE(voter.Whole());
    EXPECT_EQ(voter.Letters(), "        ");
    SendRound(voter, "KORA ONE", 4, false);
    EXPECT_EQ(voter.Letters(), "KORA ONE");
    EXPECT_EQ(voter.Whole(), "KORA ONE");
}

TEST(RdsTextVoter, AWrongPairOnceIsNeverShown) {
    CTextVoter voter(4, CTextVoter::Length::kFixed);
    SendRound(voter, "KORA ONE", 4, true);
    voter.Take(1, PairOf("XXXXXXXX", 1), false);
    EXPECT_EQ(voter.Whole(), "KORA ONE");
    voter.Take(1, PairOf("KORA ONE", 1), false);
    voter.Take(1, PairOf("XXXXXXXX", 1), false);
    EXPECT_EQ(voter.Whole(), "KORA ONE");
    EXPECT_EQ(voter.Letters(), "KORA ONE");
}

TEST(RdsTextVoter, HalvesOfTwoTextsAreNotOneText) {
    CTextVoter voter(4, CTextVoter::Length::kFixed);
    voter.Take(0, PairOf("MORNINGS", 0), true);
    voter.Take(1, PairOf("MORNINGS", 1), true);
    voter.Lost();
    voter.Lost();
    // The station has changed its name meanwhile.
    voter.Take(2, PairOf("KORA ONE", 2), true);
    voter.Take(3, PairOf("KORA ONE", 3), true);
    EXPECT_FALSE(voter.Whole());
    SendRound(voter, "KORA ONE", 4, true);
    EXPECT_EQ(voter.Whole(), "KORA ONE");
}

TEST(RdsTextVoter, AChangeAfterTheFirstPairsKeepsThemWhenNothingWasLost) {
    CTextVoter voter(4, CTextVoter::Length::kFixed);
    SendRound(voter, "KORA ONE", 4, true);
    SendRound(voter, "KORA TWO", 4, true);
    EXPECT_EQ(voter.Whole(), "KORA TWO");
}

TEST(RdsTextVoter, OutOfOrderATextIsWholeWhenEachPairHasComeAgain) {
    CTextVoter voter(4, CTextVoter::Length::kFixed);
    for (const std::size_t i : {2u, 0u, 3u, 1u}) voter.Take(i, PairOf("KORA ONE", i), true);
    EXPECT_FALSE(voter.Whole());
    for (const std::size_t i : {2u, 0u, 3u}) voter.Take(i, PairOf("KORA ONE", i), true);
    EXPECT_FALSE(voter.Whole());
    voter.Take(1, PairOf("KORA ONE", 1), true);
    EXPECT_EQ(voter.Whole(), "KORA ONE");
}

TEST(RdsTextVoter, ATextEndsAtItsMarkAndNeedsNoMore) {
    CTextVoter voter(32, CTextVoter::Length::kUpToEnd);
    SendRound(voter, "Hello there\r", 6, true);
    EXPECT_EQ(voter.Whole(), "Hello there");
}

TEST(RdsTextVoter, ATextOfFullLengthHasNoMark) {
    CTextVoter voter(32, CTextVoter::Length::kUpToEnd);
    const std::string text = "0123456789012345678901234567890123456789012345678901234567890123";
    SendRound(voter, text, 31, true);
    EXPECT_FALSE(voter.Whole());
    voter.Take(31, PairOf(text, 31), true);
    EXPECT_EQ(voter.Whole(), text);
}

TEST(RdsTextVoter, ATextWithoutMarkEndsWhereItAlwaysBeginsAnew) {
    CTextVoter voter(32, CTextVoter::Length::kUpToEnd);
    for (int round = 0; round < 3; ++round) {
        SendRound(voter, "Eight letters...", 8, true);
        EXPECT_FALSE(voter.Whole()) << round;
    }
    voter.Take(0, PairOf("Eight letters...", 0), true);
    EXPECT_EQ(voter.Whole(), "Eight letters...");
}

TEST(RdsTextVoter, GroupsThatAreSentTwiceAreNoEnd) {
    CTextVoter voter(32, CTextVoter::Length::kUpToEnd);
    const std::string text = "A text that is sent with every group twice.\r";
    for (int round = 0; round < 2; ++round) {
        for (std::size_t group = 0; group < text.size() / 4; ++group) {
            for (int repeat = 0; repeat < 2; ++repeat) {
                voter.Take(2 * group, PairOf(text, 2 * group), true);
                voter.Take(2 * group + 1, PairOf(text, 2 * group + 1), true);
                if (voter.Whole()) {
                    ASSERT_EQ(*voter.Whole(), text.substr(0, text.size() - 1));
                }
            }
        }
    }
    EXPECT_EQ(voter.Whole(), text.substr(0, text.size() - 1));
}

// Three texts in turn, a third of all pairs lost and one of a hundred wrong: whatever is shown was sent.
TEST(RdsTextVoter, WhateverIsLostOrWrongOnlyTextsThatWereSentBecomeWhole) {
    const std::vector<std::string> sent = {"KORA ONE", "KORA TWO", "MORNINGS"};
    std::mt19937 random(5);
    std::size_t shown = 0;
    CTextVoter voter(4, CTextVoter::Length::kFixed, 3);
    for (int turn = 0; turn < 20000; ++turn) {
        const std::string& text = sent[random() % sent.size()];
        // No station changes its name faster than that: eight seconds.
        const std::size_t rounds = 5 + random() % 8;
        for (std::size_t round = 0; round < rounds; ++round) {
            for (std::size_t i = 0; i < 4; ++i) {
                if (random() % 3 == 0) {
                    voter.Lost();
                    continue;
                }
                const bool wrong = random() % 100 == 0;
                const auto other = static_cast<std::uint16_t>(random());
                voter.Take(i, wrong ? other : PairOf(text, i), false);
                if (!voter.Whole()) continue;
                ++shown;
                ASSERT_TRUE(*voter.Whole() == sent[0] || *voter.Whole() == sent[1] ||
                            *voter.Whole() == sent[2])
                    << *voter.Whole();
            }
        }
    }
    EXPECT_GT(shown, 1000u);
}

}  // namespace
