// Channel lists as JSON.
#include "handset/lists/json_lists.h"

#include <gmock/gmock.h>

#include "tests/native/lists/sample_lists.h"

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

std::string Document(const std::string& lists) {
    return "{\"format\": \"kora-channel-lists\", \"version\": 1, \"lists\": " + lists + "}";
}

}  // namespace

TEST(JsonLists, AnyTextComesBackAsItWent) {
    const auto lists = AwkwardLists();
    const lists::ListFile file = lists::ReadJson(lists::WriteJson(lists));
    EXPECT_EQ(file.fault, "");
    EXPECT_THAT(file.refused, IsEmpty());
    EXPECT_TRUE(SameLists(file.lists, lists));
}

TEST(JsonLists, EveryFrequencyOfTheBandComesBackAsItWent) {
    lists::ChannelList list{u"all", {}, 0, true};
    for (std::uint32_t value = 8750; value <= 10800; ++value) list.channels.push_back({u"", value, u"", 0});
    const lists::ListFile file = lists::ReadJson(lists::WriteJson({list}));
    EXPECT_TRUE(SameLists(file.lists, {list}));
}

TEST(JsonLists, HalfACharacterBecomesTheCharacterForWhatCannotBeShown) {
    const lists::ListFile file = lists::ReadJson(lists::WriteJson({{{u'a', 0xD800, u'b'}, {}, 0, true}}));
    ASSERT_THAT(file.lists, SizeIs(1));
    EXPECT_EQ(file.lists[0].name, u"a\uFFFDb");
}

TEST(JsonLists, AFileThatIsNoJsonIsBrokenAndSaysWhere) {
    const lists::ListFile file = lists::ReadJson("{\"format\": \"kora-channel-lists\",\n \"lists\": [}");
    EXPECT_THAT(file.fault, HasSubstr("line 2"));
    EXPECT_THAT(file.lists, IsEmpty());
}

TEST(JsonLists, WhatIsNotAListFileIsBroken) {
    struct Row {
        std::string bytes;
        const char* why;
    };
    const Row kRows[] = {
        {"", "parse error"},
        {"[]", "no JSON object"},
        {"{}", "\"format\""},
        {"{\"format\": \"other\", \"version\": 1, \"lists\": []}", "\"format\""},
        {"{\"format\": \"kora-channel-lists\", \"version\": 2, \"lists\": []}", "\"version\""},
        {"{\"format\": \"kora-channel-lists\", \"version\": 1}", "\"lists\""},
        {Document("{}"), "\"lists\""},
        {Document("[]") + "x", "parse error"},
        {Document("[{\"name\": \"\xFF\"}]"), "UTF-8"},
        {Document("[{\"name\": \"\\ud800\"}]"), "surrogate"},
        {Document("[{\"name\": \"a\", \"name\": \"b\"}]"), "stands twice"},
        {Document("[{\"name\": \"a\", \"channels\": [{\"name\": \"b\", \"frequency\": 1e999}]}]"),
         "number overflow"},
    };
    for (const Row& row : kRows) {
        EXPECT_THAT(lists::ReadJson(row.bytes).fault, HasSubstr(row.why)) << row.bytes;
    }
}

TEST(JsonLists, WhatIsWrongInOneChannelIsRefusedWithItsLineAndTheOthersAreTaken) {
    const lists::ListFile file = lists::ReadJson(Document(R"([
        {"name": "One", "channels": [
            {"name": "good", "frequency": 98.5, "colour": {"red": 1}},
            {"name": "no frequency"},
            {"name": "frequency in words", "frequency": "98.5"},
            {"frequency": 98.5},
            {"name": "guide", "frequency": 98.5, "guide": 5},
            17,
            {"name": "good too", "frequency": 101}
        ]},
        {"channels": []},
        {"name": "Two", "channels": {}},
        "three"])"));
    EXPECT_EQ(file.fault, "");
    ASSERT_THAT(file.lists, SizeIs(1));
    EXPECT_TRUE(
        SameLists(file.lists, {{u"One", {{u"good", 9850, u"", 0}, {u"good too", 10100, u"", 0}}, 0, true}}));
    std::vector<std::size_t> lines;
    for (const lists::Refusal& refusal : file.refused) lines.push_back(refusal.line);
    // What is no object has no line of its own: that of what is around it.
    EXPECT_EQ(lines, (std::vector<std::size_t>{4, 5, 6, 7, 2, 11, 12, 1}));
    EXPECT_EQ(file.refused[0].why, "\"no frequency\": no \"frequency\" in MHz");
}

TEST(JsonLists, AFrequencyIsTheNearestOfTenKilohertz) {
    const lists::ListFile file = lists::ReadJson(Document(
        R"([{"name": "", "channels": [{"name": "", "frequency": 98.504}, {"name": "", "frequency": -1},
            {"name": "", "frequency": 1e300}]}])"));
    ASSERT_THAT(file.lists, SizeIs(1));
    EXPECT_EQ(file.lists[0].channels[0].frequency_10kHz, 9850u);
    EXPECT_EQ(file.lists[0].channels[1].frequency_10kHz, 0u);
    EXPECT_EQ(file.lists[0].channels[2].frequency_10kHz, 0u);
}

TEST(JsonLists, AHundredThousandOpenBracketsAreBrokenAndNothingWorse) {
    EXPECT_NE(lists::ReadJson(std::string(100'000, '[')).fault, "");
}
