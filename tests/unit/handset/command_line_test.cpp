// The command line: its verbs, its help and what it says to what it does not understand.
#include <set>

#include "tests/unit/handset/handset_fixture.h"

namespace panel {
namespace {

using CommandLine = HandsetTest;

std::vector<const Command*> AllCommands() {
    std::vector<const Command*> commands;
    for (const CommandGroup& group : CommandGroups()) {
        for (std::size_t i = 0; i < group.count; ++i) commands.push_back(&group.commands[i]);
    }
    return commands;
}

TEST(CommandTable, EveryVerbHasAHandlerASummaryAndHelpInWholeLines) {
    for (const Command* command : AllCommands()) {
        EXPECT_NE(command->handler, nullptr) << command->verb;
        EXPECT_FALSE(std::wstring(command->summary).empty()) << command->verb;
        const std::wstring help = command->help;
        ASSERT_FALSE(help.empty()) << command->verb;
        EXPECT_EQ(help.back(), L'\n') << command->verb;
        EXPECT_EQ(std::wstring(command->example).rfind(L"handset " + std::wstring(command->verb), 0), 0u)
            << command->verb;
    }
}

TEST(CommandTable, NoVerbStandsTwice) {
    std::set<std::wstring> verbs;
    for (const Command* command : AllCommands()) {
        EXPECT_TRUE(verbs.insert(command->verb).second) << command->verb;
    }
}

TEST_F(CommandLine, TheHelpListsEveryVerbWithItsSummary) {
    for (const wchar_t* word : {L"help", L"--help", L"-h"}) {
        EXPECT_EQ(Run({word}), kDone);
        for (const Command* command : AllCommands()) {
            EXPECT_NE(console_.Said().find(std::wstring(L"  ") + command->verb + L" "), std::wstring::npos)
                << command->verb;
            EXPECT_NE(console_.Said().find(command->summary), std::wstring::npos) << command->verb;
            EXPECT_NE(console_.Said().find(command->example), std::wstring::npos) << command->verb;
        }
    }
}

TEST_F(CommandLine, HelpWithAVerbExplainsThatVerb) {
    for (const Command* command : AllCommands()) {
        EXPECT_EQ(Run({L"help", command->verb}), kDone);
        EXPECT_NE(console_.Said().find(std::wstring(L"usage: handset ") + command->verb), std::wstring::npos);
        EXPECT_NE(console_.Said().find(command->help), std::wstring::npos) << command->verb;
    }
    EXPECT_EQ(Run({L"clock", L"--help"}), kDone);
    EXPECT_NE(console_.Said().find(L"usage: handset clock"), std::wstring::npos);
}

TEST_F(CommandLine, AnUnknownVerbIsNamedAndAnsweredWithTheCodeForNotUnderstood) {
    EXPECT_EQ(Run({L"hedset", L"on"}), kBadUsage);
    EXPECT_EQ(console_.Complained(),
              L"handset: there is no verb \"hedset\"; \"handset help\" lists them all\n");
    EXPECT_TRUE(console_.lines.empty());
    EXPECT_EQ(Run({L"help", L"hedset"}), kBadUsage);
}

TEST_F(CommandLine, BadArgumentsAreNamedTogetherWithTheUsage) {
    struct Row {
        Arguments words;
        const wchar_t* complaint;
    };
    const Row kRows[] = {
        {{L"headset"}, L"nothing was given"},
        {{L"headset", L"in"}, L"\"in\" was given"},
        {{L"headset", L"on", L"off"}, L"\"on off\" was given"},
        {{L"card", L"on"}, L"\"on\" was given"},
        {{L"power", L"dim"}, L"\"dim\" was given"},
        {{L"orientation", L"up"}, L"\"up\" was given"},
        {{L"orientation", L"100x320"}, L"\"100x320\" was given"},
        {{L"orientation", L"240x"}, L"\"240x\" was given"},
        {{L"bluetooth", L"0x20"}, L"\"0x20\" was given"},
        {{L"bluetooth", L"on"}, L"\"on\" was given"},
        {{L"signal", L"101"}, L"\"101\" was given"},
        {{L"signal", L"-1"}, L"\"-1\" was given"},
        {{L"signal", L"12", L"109.0"}, L"\"12 109.0\" was given"},
        {{L"signal", L"normal", L"98.5"}, L"\"normal 98.5\" was given"},
        {{L"band", L"9"}, L"\"9\" is no station"},
        {{L"band", L"98.5"}, L"a KEY=VALUE is wanted"},
        {{L"band", L"98.5", L"level"}, L"\"level\" is no KEY=VALUE"},
        {{L"band", L"98.5", L"level=101"}, L"\"level\" wants a number from 0 to 100"},
        {{L"band", L"98.5", L"lewel=1"}, L"\"lewel\" is no key of a station"},
        {{L"clock", L"0"}, L"\"0\" is no rate"},
        {{L"clock", L"3601"}, L"\"3601\" is no rate"},
        {{L"clock", L"2", L"3"}, L"one rate at most"},
        {{L"fault"}, L"nothing was given"},
        {{L"fault", L"seek", L"hiccup"}, L"there is no fault \"hiccup\""},
        {{L"call"}, L"nothing was given"},
        {{L"call", L"waiting"}, L"\"waiting\" was given"},
        {{L"call", L"talk", L"112"}, L"\"112\" is one argument too many"},
        {{L"reg"}, L"nothing was given"},
        {{L"reg", L"list"}, L"\"list\" was given"},
        {{L"reg", L"get"}, L"\"get\" was given 0 arguments"},
        {{L"reg", L"get", L"HKXX\\A", L"B"}, L"\"HKXX\\A\" is no key"},
        {{L"reg", L"set", L"HKLM\\A", L"B", L"byte", L"1"}, L"there is no type \"byte\""},
        {{L"reg", L"set", L"HKLM\\A", L"B", L"dword", L"one"}, L"not \"one\""},
        {{L"reg", L"set", L"HKLM\\A", L"B", L"dword", L"4294967296"}, L"not \"4294967296\""},
        {{L"reg", L"delete", L"HKLM"}, L"HKLM is a whole root"},
        {{L"key"}, L"the name of a key is wanted"},
        {{L"key", L"1", L"menu"}, L"there is no key \"menu\""},
        {{L"softkey", L"middle"}, L"\"left\" or \"right\" is wanted"},
        {{L"tap", L"10"}, L"a place on the display is wanted"},
        {{L"tap", L"240", L"10"}, L"240, 10 is not on the display of 240x320"},
        {{L"tap", L"1", L"1", L"long"}, L"\"long\" is no time"},
        {{L"stop", L"now"}, L"\"now\" is not understood"},
        {{L"status", L"all"}, L"no arguments are wanted"},
        {{L"install", L"a", L"b"}, L"one folder at most"},
        {{L"tour"}, L"a folder for the pictures is wanted"},
        {{L"panel", L"big"}, L"\"big\" is not understood"},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(Run(row.words), kBadUsage) << row.complaint;
        ASSERT_EQ(console_.errors.size(), 2u) << row.complaint;
        EXPECT_NE(console_.errors[0].find(row.complaint), std::wstring::npos)
            << testing::PrintToString(console_.errors[0]);
        EXPECT_EQ(console_.errors[0].find(L"handset " + row.words[0] + L": "), 0u);
        EXPECT_EQ(console_.errors[1].find(L"usage: handset " + row.words[0]), 0u);
    }
}

}  // namespace
}  // namespace panel
