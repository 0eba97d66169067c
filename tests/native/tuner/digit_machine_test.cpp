// Typed digits: every sequence of up to eight digits against a model that works on texts, and the whole graph
// of reachable states.
#include "tuner/digit_machine.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <queue>
#include <string>
#include <utility>

namespace {

// What a digit has to lead to.
struct Expected {
    std::string label;  // empty: the tuned frequency comes back
    std::uint32_t position;
    bool complete;
    std::uint32_t channel;
    bool tune;
};

// The model keeps the digits typed so far as they were typed.
struct Model {
    std::string typed;

    Expected Type(char digit) {
        typed += digit;
        const std::size_t needed = typed[0] == '1' ? 4 : 3;
        Expected expected = {};
        expected.position = static_cast<std::uint32_t>(typed.size() - 1);
        if (typed.size() < needed) {
            expected.label = typed + (typed.size() == 1 ? "_._" : "._");
            return expected;
        }
        const double megahertz = std::stod(typed.substr(0, needed - 1) + "." + typed.substr(needed - 1));
        expected.complete = true;
        expected.channel = static_cast<std::uint32_t>(megahertz * 100 + 0.5);
        expected.tune = megahertz > 87.45 && megahertz < 108.05;
        if (expected.tune)
            expected.label = typed.substr(0, needed - 1) + "." + typed.substr(needed - 1) + " MHz";
        typed.clear();
        return expected;
    }
};

std::wstring Wide(const std::string& text) {
    return {text.begin(), text.end()};
}

// Same model without texts, quick enough for the hundred million sequences of eight digits.
struct QuickModel {
    std::uint32_t typed = 0;  // the digits as one number
    std::uint32_t count = 0;
    bool four = false;

    // The channel of an entry that this digit completes, else 0xFFFFFFFF.
    std::uint32_t Type(std::uint32_t digit) {
        if (count == 0) four = digit == 1;
        typed = typed * 10 + digit;
        if (++count < (four ? 4U : 3U)) return UINT32_MAX;
        const std::uint32_t channel = typed * 10;
        typed = count = 0;
        return channel;
    }
};

struct Tally {
    std::uint64_t steps = 0, wrong = 0, tuned = 0;
};

void WalkAll(const DigitEntry& entry, const QuickModel& model, int depth, Tally& tally) {
    for (std::uint32_t digit = 0; digit < 10; ++digit) {
        DigitEntry nextEntry = entry;
        QuickModel nextModel = model;
        const std::uint32_t position = model.count;
        const DigitStep step = TakeDigit(nextEntry, digit);
        const std::uint32_t channel = nextModel.Type(digit);
        const bool complete = channel != UINT32_MAX;
        const bool tune = complete && channel >= 8750 && channel <= 10800;
        ++tally.steps;
        tally.tuned += tune;
        tally.wrong += !step.bTaken || step.uDigit != digit || step.uPosition != position ||
                       step.bComplete != complete || step.bTune != tune ||
                       (complete && step.uChannel != channel) ||
                       (step.echo == DigitEcho::kOutOfBand) != (complete && !tune);
        if (depth > 1) WalkAll(nextEntry, nextModel, depth - 1, tally);
    }
}

using Key = std::array<std::uint32_t, 5>;

Key KeyOf(const DigitEntry& entry) {
    return {entry.uCount, entry.auDigit[0], entry.auDigit[1], entry.auDigit[2], entry.auDigit[3]};
}

DigitStep TypeAll(DigitEntry& entry, const char* digits) {
    DigitStep step = {};
    for (; *digits != '\0'; ++digits) step = TakeDigit(entry, static_cast<std::uint32_t>(*digits - '0'));
    return step;
}

}  // namespace

TEST(DigitMachine, EverySequenceOfUpToEightDigitsAgreesWithTheModel) {
    Tally tally;
    WalkAll(DigitEntry{}, QuickModel{}, 8, tally);
    EXPECT_EQ(tally.steps, 111111110U);
    EXPECT_EQ(tally.wrong, 0U);
    EXPECT_GT(tally.tuned, 0U);
}

// States are pairs of the machine's and the model's; each leads to the same whatever was typed before it.
TEST(DigitMachine, EveryReachableStateShowsAndTunesWhatTheModelDoes) {
    std::map<std::pair<Key, std::string>, bool> seen;
    std::queue<std::pair<DigitEntry, Model>> open;
    open.push({});
    seen[{KeyOf({}), ""}] = true;
    while (!open.empty()) {
        const auto [entry, model] = open.front();
        open.pop();
        for (char digit = '0'; digit <= '9'; ++digit) {
            DigitEntry nextEntry = entry;
            Model nextModel = model;
            const DigitStep step = TakeDigit(nextEntry, static_cast<std::uint32_t>(digit - '0'));
            const Expected expected = nextModel.Type(digit);
            const std::string where = model.typed + digit;
            ASSERT_TRUE(step.bTaken) << where;
            ASSERT_EQ(step.uPosition, expected.position) << where;
            ASSERT_EQ(step.uDigit, static_cast<std::uint32_t>(digit - '0')) << where;
            ASSERT_EQ(DigitLabel(nextEntry, step.echo).sz, Wide(expected.label)) << where;
            ASSERT_EQ(step.bComplete, expected.complete) << where;
            ASSERT_EQ(step.bTune, expected.tune) << where;
            if (expected.complete) ASSERT_EQ(step.uChannel, expected.channel) << where;
            if (expected.complete && !expected.tune) {
                ASSERT_EQ(KeyOf(nextEntry), KeyOf(DigitEntry{})) << where << ": the cells are cleared";
            }
            if (!std::exchange(seen[{KeyOf(nextEntry), nextModel.typed}], true))
                open.push({nextEntry, nextModel});
        }
    }
    EXPECT_GT(seen.size(), 1000U);
}

TEST(DigitMachine, EightSevenFiveTunes8750AndShowsItAfterTheThirdKey) {
    DigitEntry entry = {};
    const DigitStep step = TypeAll(entry, "875");
    EXPECT_TRUE(step.bTune);
    EXPECT_EQ(step.uChannel, 8750U);
    EXPECT_STREQ(DigitLabel(entry, step.echo).sz, L"87.5 MHz");
}

TEST(DigitMachine, OneZeroEightZeroTunes10800AndOneZeroEightFiveDoesNotTune) {
    DigitEntry entry = {};
    EXPECT_EQ(TypeAll(entry, "1080").uChannel, 10800U);
    const DigitStep step = TypeAll(entry, "1085");
    EXPECT_TRUE(step.bComplete);
    EXPECT_FALSE(step.bTune);
    EXPECT_EQ(step.echo, DigitEcho::kOutOfBand);
}

TEST(DigitMachine, ZeroEightSevenIsOutOfBandAndDoesNotTune) {
    DigitEntry entry = {};
    const DigitStep step = TypeAll(entry, "087");
    EXPECT_TRUE(step.bComplete);
    EXPECT_FALSE(step.bTune);
    EXPECT_EQ(step.uChannel, 870U);
}

TEST(DigitMachine, OneNineIsOutOfBandAtTheFourthDigit) {
    DigitEntry entry = {};
    EXPECT_FALSE(TypeAll(entry, "190").bComplete);
    const DigitStep step = TakeDigit(entry, 0);
    EXPECT_TRUE(step.bComplete);
    EXPECT_EQ(step.echo, DigitEcho::kOutOfBand);
}

TEST(DigitMachine, AFourthDigitAfterACommittedThreeDigitEntryStartsANewEntry) {
    DigitEntry entry = {};
    TypeAll(entry, "987");
    const DigitStep step = TakeDigit(entry, 9);
    EXPECT_EQ(step.uPosition, 0U);
    EXPECT_STREQ(DigitLabel(entry, step.echo).sz, L"9_._");
}

TEST(DigitMachine, TheFourthCellOfAnEarlierEntryChangesNothingInAThreeDigitEntry) {
    DigitEntry entry = {};
    TypeAll(entry, "1079");
    EXPECT_EQ(entry.auDigit[3], 9U);
    const DigitStep below = TypeAll(entry, "874");  // with the old cell 8749, still below the band
    EXPECT_FALSE(below.bTune);
    TypeAll(entry, "1079");
    const DigitStep lowest = TypeAll(entry, "875");
    EXPECT_TRUE(lowest.bTune);
    EXPECT_EQ(lowest.uChannel, 8750U);
    EXPECT_EQ(entry.auDigit[3], 0U);
}
