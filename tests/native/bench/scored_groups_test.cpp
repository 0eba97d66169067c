// What was received beside what was sent, counted by hand.
#include "tests/bench/reception/scored_groups.h"

#include <gtest/gtest.h>

namespace {

using bench::Compare;
using bench::GivenGroup;
using bench::Score;
using bench::SentGroup;

std::vector<SentGroup> Sent(std::size_t count) {
    std::vector<SentGroup> sent;
    for (std::size_t i = 0; i < count; ++i) {
        const auto word = static_cast<std::uint16_t>(0x100 * i);
        sent.push_back({0xD301, static_cast<std::uint16_t>(word + 1), static_cast<std::uint16_t>(word + 2),
                        static_cast<std::uint16_t>(word + 3)});
    }
    return sent;
}

std::vector<GivenGroup> AllOf(const std::vector<SentGroup>& sent) {
    std::vector<GivenGroup> given;
    for (const SentGroup& group : sent) given.push_back({group[0], group[1], group[2], group[3]});
    return given;
}

void Expect(const Score& score, long sent, long right, long wrong, long whole) {
    EXPECT_EQ(score.sent, sent);
    EXPECT_EQ(score.right, right);
    EXPECT_EQ(score.wrong, wrong);
    EXPECT_EQ(score.wholeGroups, whole);
    EXPECT_EQ(score.sentGroups, sent / 4);
}

TEST(BenchScore, AllThatWasSentAndArrivedIsRight) {
    const auto sent = Sent(10);
    const Score score = Compare(sent, AllOf(sent), 0, 10);
    Expect(score, 40, 40, 0, 10);
    EXPECT_EQ(score.ErrorRate(), 0);
    EXPECT_EQ(score.WholeRate(), 1);
}

TEST(BenchScore, ABlockThatDidNotArriveIsAnErrorAndNoneThatIsWrong) {
    const auto sent = Sent(10);
    auto given = AllOf(sent);
    given[4][2].reset();
    given[5][2].reset();
    given[5][3].reset();
    const Score score = Compare(sent, given, 0, 10);
    Expect(score, 40, 37, 0, 8);
    EXPECT_DOUBLE_EQ(score.ErrorRate(), 3.0 / 40);
}

TEST(BenchScore, ABlockThatIsNotWhatWasSentIsWrongAndAnErrorToo) {
    const auto sent = Sent(10);
    auto given = AllOf(sent);
    given[4][2] = 0xFFFF;
    const Score score = Compare(sent, given, 0, 10);
    Expect(score, 40, 39, 1, 9);
    EXPECT_DOUBLE_EQ(score.WrongRate(), 1.0 / 40);
    EXPECT_DOUBLE_EQ(score.ErrorRate(), 1.0 / 40);
}

TEST(BenchScore, AGroupThatNeverCameShiftsNoneOfTheOthers) {
    const auto sent = Sent(10);
    auto given = AllOf(sent);
    given.erase(given.begin() + 3, given.begin() + 5);
    Expect(Compare(sent, given, 0, 10), 40, 32, 0, 8);
}

TEST(BenchScore, AGroupThatNobodySentCountsWithAllItsBlocksAsWrong) {
    const auto sent = Sent(10);
    auto given = AllOf(sent);
    given.insert(given.begin() + 5, GivenGroup{0x9999, 0x9998, 0x9997, std::nullopt});
    Expect(Compare(sent, given, 0, 10), 40, 40, 3, 10);
}

TEST(BenchScore, AGroupThatIsGivenTwiceIsRightOnce) {
    const auto sent = Sent(10);
    auto given = AllOf(sent);
    given.insert(given.begin() + 5, given[5]);
    const Score score = Compare(sent, given, 0, 10);
    EXPECT_EQ(score.right, 40);
    EXPECT_EQ(score.wrong, 4);
}

TEST(BenchScore, GroupsOutOfTheirOrderAreNotBothRight) {
    const auto sent = Sent(10);
    auto given = AllOf(sent);
    std::swap(given[4], given[5]);
    const Score score = Compare(sent, given, 0, 10);
    EXPECT_EQ(score.wholeGroups, 9);
    EXPECT_GT(score.wrong, 0);
}

TEST(BenchScore, BeginningAndEndAreNotCounted) {
    const auto sent = Sent(10);
    auto given = AllOf(sent);
    given[1][2].reset();
    given[8][2] = 0xFFFF;
    Expect(Compare(sent, given, 3, 7), 16, 16, 0, 4);
    given[3][1].reset();
    given[6][1] = 0xFFFF;
    Expect(Compare(sent, given, 3, 7), 16, 14, 1, 2);
    Expect(Compare(sent, given, 0, 1000), 40, 36, 2, 6);
}

TEST(BenchScore, NothingGivenIsAllErrorsAndNothingSentIsNoSuccess) {
    const Score deaf = Compare(Sent(10), {}, 0, 10);
    Expect(deaf, 40, 0, 0, 0);
    EXPECT_EQ(deaf.ErrorRate(), 1);
    const Score none = Compare({}, {}, 0, 10);
    EXPECT_EQ(none.sent, 0);
    EXPECT_EQ(none.ErrorRate(), 1);
    EXPECT_EQ(none.WholeRate(), 0);
}

}  // namespace
