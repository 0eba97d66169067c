// Channel lists as CSV, and as receivers in software keep their bookmarks.
#include "handset/lists/csv_lists.h"

#include <gmock/gmock.h>

#include "tests/native/lists/sample_lists.h"

using lists::ListFile;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

std::vector<std::string> Refusals(const ListFile& file) {
    std::vector<std::string> said;
    for (const lists::Refusal& row : file.refused) said.push_back(std::to_string(row.line) + " " + row.why);
    return said;
}

}  // namespace

TEST(CsvLists, AnyTextComesBackAsItWent) {
    const auto lists = AwkwardLists();
    const ListFile file = lists::ReadCsvLists(lists::WriteCsvLists(lists));
    EXPECT_EQ(file.fault, "");
    EXPECT_THAT(file.refused, IsEmpty());
    EXPECT_TRUE(SameLists(file.lists, lists));
}

TEST(CsvLists, ColumnsStandInAnyOrderUnderAnySeparatorAndLineEnd) {
    const lists::ChannelList wanted{u"Mine", {{u"One", 9850, u"news", 0}, {u"Two", 10100, u"", 0}}, 0, true};
    for (const char* bytes : {
             "Name;Frequency;Group;Comment\r\nOne;98500000;Mine;news\r\nTwo;101000000;Mine;\r\n",
             "\xEF\xBB\xBF"
             "guide,LIST,freq,title\nnews,Mine,98.5,One\n\n,Mine,101,Two",
             "Name\tFrequency "
             "(Hz)\tTags\tColour\tGuide\rOne\t98503999\tMine\tred\tnews\rTwo\t101e0\tMine\t\t\r"
             "Two\t101000000\tMine\t\t\r",
         }) {
        const ListFile file = lists::ReadCsvLists(bytes);
        EXPECT_EQ(file.fault, "") << bytes;
        EXPECT_TRUE(SameLists(file.lists, {wanted})) << bytes;
    }
}

TEST(CsvLists, ABrokenFileSaysWhere) {
    struct Row {
        const char* bytes;
        const char* why;
    };
    const Row kRows[] = {
        {"", "it is empty"},
        {"\r\n\r\n", "it is empty"},
        {"98500000,One\r\n", "first row"},
        {"Frequency,Name\r\n98500000,One\r\n98500000,\"Two\r\n", "line 3: a quote is opened"},
        {"Frequency,Name\r\n98500000,\"On\r\ne\"x\r\n", "line 3: something stands between"},
        {"Frequency,Name\r\n98500000,\xE4\r\n", "not UTF-8"},
    };
    for (const Row& row : kRows)
        EXPECT_THAT(lists::ReadCsvLists(row.bytes).fault, HasSubstr(row.why)) << row.bytes;
}

TEST(CsvLists, WhatIsWrongInOneRowIsRefusedWithItsLineAndTheOthersAreTaken) {
    const ListFile file = lists::ReadCsvLists(
        "Frequency,Name,List,Guide\r\n"
        "98500000,\"two\r\nlines\",Mine,\r\n"
        "98500000,short\r\n"
        "soon,words,Mine,\r\n"
        ",none,Mine,\r\n"
        "101000000,good,Mine,\r\n");
    EXPECT_THAT(Refusals(file),
                ElementsAre("4 2 fields where the first row has 4", "5 \"words\": its frequency is no number",
                            "6 \"none\": its frequency is no number"));
    EXPECT_TRUE(SameLists(file.lists,
                          {{u"Mine", {{u"two\r\nlines", 9850, u"", 0}, {u"good", 10100, u"", 0}}, 0, true}}));
}

TEST(Bookmarks, AreReadAsReceiversWriteThem) {
    const ListFile file = lists::ReadCsvLists(
        "# Tag name          ;  color\n"
        "Untagged            ; #c0c0c0\n"
        "Talk                ; #ff0000\n"
        "\n"
        "# Frequency ; Name                     ; Modulation          ;  Bandwidth; Tags\n"
        "    98500000; Kora \"One\"               ; WFM (stereo)        ;     200000; Talk,News\n"
        "   101000000; Z\xC3\xBCri                     ; WFM                 ;     160000; \n"
        "   102000000; without tags             ; WFM\n"
        "      ninety; nine                     ; WFM (stereo)        ;     200000; Talk\r\n");
    EXPECT_EQ(file.fault, "");
    EXPECT_TRUE(SameLists(file.lists, {{u"Talk", {{u"Kora \"One\"", 9850, u"", 0}}, 0, true},
                                       {u"News", {{u"Kora \"One\"", 9850, u"", 0}}, 0, true},
                                       {u"Untagged", {{u"Z\u00FCri", 10100, u"", 0}}, 0, true}}));
    EXPECT_THAT(Refusals(file),
                ElementsAre("8 3 fields where a bookmark has 5", "9 \"nine\": its frequency is no number"));
}

TEST(Bookmarks, ComeBackWithoutWhatTheyCannotHoldAndSayWhatThatIs) {
    std::vector<std::string> lost;
    const std::vector<lists::ChannelList> lists = {
        {u"Mine", {{u"a;b", 9850, u"news", 0}, {u"plain", 10100, u"", 0}}, 0, true}, {u"empty", {}, 0, true}};
    const ListFile file = lists::ReadCsvLists(lists::WriteBookmarks(lists, &lost));
    EXPECT_TRUE(
        SameLists(file.lists, {{u"Mine", {{u"a b", 9850, u"", 0}, {u"plain", 10100, u"", 0}}, 0, true}}));
    EXPECT_THAT(lost, ElementsAre(HasSubstr("1 programme guides"), HasSubstr("1 lists without channels"),
                                  HasSubstr("1 names")));
}

TEST(Bookmarks, OfPlainListsLoseNothing) {
    std::vector<std::string> lost;
    const std::vector<lists::ChannelList> lists = {{u"Mine", {{u"Z\u00FCri", 9850, u"", 0}}, 0, true}};
    EXPECT_TRUE(SameLists(lists::ReadCsvLists(lists::WriteBookmarks(lists, &lost)).lists, lists));
    EXPECT_THAT(lost, IsEmpty());
}
