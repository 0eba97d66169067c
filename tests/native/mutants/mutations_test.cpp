#include "tests/mutants/mutations.h"

#include <gmock/gmock.h>

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

// The whole source with each mutation in turn.
std::vector<std::string> Changed(const std::string& source) {
    std::vector<std::string> all;
    for (const auto& mutation : mutants::MutationsOf(source)) all.push_back(mutants::Apply(source, mutation));
    return all;
}

TEST(Mutations, AComparisonLosesOrGetsItsBound) {
    EXPECT_THAT(Changed("a < b"), ElementsAre("a <= b"));
    EXPECT_THAT(Changed("a >= b"), ElementsAre("a > b"));
    EXPECT_THAT(Changed("a == b"), ElementsAre("a != b"));
}

TEST(Mutations, AnOperatorBecomesItsOpposite) {
    EXPECT_THAT(Changed("a && b"), ElementsAre("a || b"));
    EXPECT_THAT(Changed("a + b"), ElementsAre("a - b"));
    EXPECT_THAT(Changed("a -= b"), ElementsAre("a += b"));
}

TEST(Mutations, TruthIsTurnedRound) {
    EXPECT_THAT(Changed("x = true;"), ElementsAre("x = false;"));
    EXPECT_THAT(Changed("if (!ready) FALSE"), UnorderedElementsAre("if (ready) FALSE", "if (!ready) TRUE"));
}

TEST(Mutations, AWholeNumberGetsOneMore) {
    EXPECT_THAT(Changed("x = 41;"), ElementsAre("x = 42;"));
    EXPECT_THAT(Changed("x = 0xFFu;"), ElementsAre("x = 256u;"));
    EXPECT_THAT(Changed("x = 1'000;"), ElementsAre("x = 1001;"));
    EXPECT_THAT(Changed("x = 1.5;"), IsEmpty());
    EXPECT_THAT(Changed("name2 = c8;"), IsEmpty());
}

TEST(Mutations, AZeroThatStandsForNothingStays) {
    EXPECT_THAT(Changed("x = Send(list, 0, 0)"), IsEmpty());
    EXPECT_THAT(Changed("x = Send(list, 0, 7)"), ElementsAre("x = Send(list, 0, 8)"));
}

TEST(Mutations, ACallThatIsAStatementIsLeftOut) {
    EXPECT_THAT(Changed("{\n    Close(handle);\n}"), ElementsAre("{\n    ;\n}"));
    EXPECT_THAT(Changed("{\n    state.list->Close(handle);  // why\n}"), ElementsAre("{\n    ;  // why\n}"));
}

TEST(Mutations, ADeclarationAResultAndTheRestOfACallAreNoCalls) {
    EXPECT_THAT(Changed("{\n    const Guard guard(lock);\n}"), IsEmpty());
    EXPECT_THAT(Changed("{\n    return Close(handle);\n}"), IsEmpty());
    EXPECT_THAT(Changed("    x = Call(first,\n         Second(third));"), IsEmpty());
}

TEST(Mutations, WhatIsNoCodeStays) {
    EXPECT_THAT(Changed("// a < b\n/* 7\n 8 */\n#if X == 1\n#define Y \\\n  2\n"), IsEmpty());
    EXPECT_THAT(Changed("x = \"a < \\\" 7\";"), IsEmpty());
    EXPECT_THAT(Changed("x = '7';"), IsEmpty());
    EXPECT_THAT(Changed("static_assert(sizeof(x) == 8);"), IsEmpty());
}

TEST(Mutations, ATemplatesBracketsAreNoComparison) {
    EXPECT_THAT(Changed("std::vector<std::pair<A, B>> x;"), IsEmpty());
}

TEST(Mutations, EachSaysItsLine) {
    const auto all = mutants::MutationsOf("\n\nx = 7;\ny = true;\n");
    ASSERT_EQ(all.size(), 2u);
    EXPECT_EQ(all[0].line, 3);
    EXPECT_EQ(all[1].line, 4);
    EXPECT_EQ(all[0].before, "7");
    EXPECT_EQ(all[0].after, "8");
}

}  // namespace
