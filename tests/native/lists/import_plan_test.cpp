// What of a file goes into the store.
#include "handset/lists/import_plan.h"

#include <gmock/gmock.h>

#include "tests/native/lists/sample_lists.h"

using lists::ChannelList;
using lists::ImportPlan;
using lists::ListFile;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

// A store that does not tell small letters from capitals.
std::string Key(const std::u16string& name) {
    std::string key;
    for (const char16_t unit : name)
        key += std::to_string(unit >= u'A' && unit <= u'Z' ? unit + 32 : unit) + ",";
    return key;
}

ImportPlan Plan(const std::vector<ChannelList>& stored, std::vector<ChannelList> lists) {
    ListFile file;
    file.lists = std::move(lists);
    return lists::PlanImport(stored, file, Key);
}

std::vector<ChannelList> ListsOf(const ImportPlan& plan) {
    std::vector<ChannelList> planned;
    for (const lists::PlannedList& row : plan.lists) planned.push_back(row.list);
    return planned;
}

std::vector<std::string> Refusals(const ImportPlan& plan) {
    std::vector<std::string> said;
    for (const lists::Refusal& row : plan.refused) said.push_back(std::to_string(row.line) + " " + row.why);
    return said;
}

ChannelList Mine(std::vector<lists::Channel> channels) {
    return {u"Mine", std::move(channels), 1, true};
}

}  // namespace

TEST(ImportPlan, AnEmptyStoreTakesEverythingThatCanBeStored) {
    const ImportPlan plan = Plan({}, AwkwardLists());
    EXPECT_THAT(plan.refused, IsEmpty());
    EXPECT_EQ(plan.newLists, 4u);
    EXPECT_EQ(plan.newChannels, 7u);
    EXPECT_TRUE(SameLists(ListsOf(plan), AwkwardLists()));
}

TEST(ImportPlan, WhatIsStoredAlreadyIsCountedAndNotStoredAgain) {
    const ImportPlan plan = Plan(AwkwardLists(), AwkwardLists());
    EXPECT_THAT(plan.refused, IsEmpty());
    EXPECT_EQ(plan.present, 7u);
    EXPECT_TRUE(plan.Empty());
}

TEST(ImportPlan, AFrequencyThatTheListHasUnderAnotherNameIsRefused) {
    const ImportPlan plan = Plan({Mine({{u"One", 9850, u"", 0}})}, {Mine({{u"Other", 9850, u"", 7}})});
    EXPECT_THAT(Refusals(plan),
                ElementsAre("7 \"Other\": 98.5 MHz is in the list \"Mine\" already, as \"One\""));
}

TEST(ImportPlan, AFrequencyThatTheFileNamesTwiceForOneListIsTakenOnce) {
    const ImportPlan plan = Plan(
        {}, {Mine({{u"One", 9850, u"", 3}, {u"Other", 9850, u"", 4}}), Mine({{u"Third", 9850, u"", 5}})});
    EXPECT_TRUE(SameLists(ListsOf(plan), {Mine({{u"One", 9850, u"", 0}})}));
    EXPECT_THAT(Refusals(plan), ElementsAre(testing::StartsWith("4 "), testing::StartsWith("5 ")));
}

TEST(ImportPlan, OneFrequencyMayBeInSeveralLists) {
    const ImportPlan plan =
        Plan({Mine({{u"One", 9850, u"", 0}})}, {{u"Other", {{u"One", 9850, u"", 2}}, 1, true}});
    EXPECT_THAT(plan.refused, IsEmpty());
    EXPECT_EQ(plan.newLists, 1u);
    EXPECT_EQ(plan.newChannels, 1u);
}

TEST(ImportPlan, TheBandHasTwoEnds) {
    const ImportPlan plan = Plan(
        {},
        {Mine({{u"a", 8749, u"", 2}, {u"b", 8750, u"", 3}, {u"c", 10800, u"", 4}, {u"d", 10801, u"", 5}})});
    EXPECT_EQ(plan.newChannels, 2u);
    EXPECT_THAT(Refusals(plan), ElementsAre("2 \"a\": 87.49 MHz is outside 87.5 to 108 MHz",
                                            "5 \"d\": 108.01 MHz is outside 87.5 to 108 MHz"));
}

TEST(ImportPlan, ATextThatIsTooLongOrHoldsANulIsRefused) {
    const std::u16string tooLong(260, u'x');
    const ImportPlan plan = Plan({}, {Mine({{tooLong, 9000, u"", 2},
                                            {u"b", 9000, tooLong, 3},
                                            {std::u16string(u"c\0d", 3), 9000, u"", 4},
                                            {u"e", 9000, std::u16string(1, u'\0'), 5}}),
                                      {std::u16string(100, u'y'), {{u"f", 9000, u"", 7}}, 6, true}});
    EXPECT_EQ(plan.newChannels, 0u);
    EXPECT_EQ(plan.refused.size(), 5u);
    EXPECT_THAT(plan.refused[1].why, testing::HasSubstr("its guide has 260 characters, more than 259"));
    EXPECT_THAT(plan.refused[4].why, testing::HasSubstr("its name has 100 characters, more than 99"));
}

TEST(ImportPlan, AListThatTheStoreCannotTellFromAnotherIsRefused) {
    const ImportPlan plan = Plan({Mine({})}, {{u"mine", {{u"One", 9850, u"", 3}}, 2, true}});
    EXPECT_TRUE(plan.Empty());
    EXPECT_THAT(Refusals(plan), ElementsAre("2 the list \"mine\": the phone cannot tell it from \"Mine\""));
}

TEST(ImportPlan, AListWhoseChannelsAreStoredWithoutItsNameIsMade) {
    const ImportPlan plan =
        Plan({{u"Mine", {{u"One", 9850, u"", 0}}, 0, false}}, {Mine({{u"One", 9850, u"", 3}})});
    EXPECT_EQ(plan.newLists, 1u);
    EXPECT_EQ(plan.newChannels, 0u);
    EXPECT_EQ(plan.present, 1u);
}

TEST(ImportPlan, RefusalsComeInTheOrderOfTheirLines) {
    ListFile file;
    file.lists = {Mine({{u"a", 1, u"", 9}})};
    file.refused = {{12, "x"}, {3, "y"}};
    const ImportPlan plan = lists::PlanImport({}, file, Key);
    EXPECT_THAT(Refusals(plan), ElementsAre("3 y", testing::StartsWith("9 "), "12 x"));
}
