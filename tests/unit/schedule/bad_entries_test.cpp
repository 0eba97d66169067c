// A settings key that somebody has edited by hand, and one that is very full.
#include <windows.h>

#include <regext.h>

#include "tests/unit/schedule/open_schedule.h"

namespace {

using test::OpenSchedule;
using test::Texts;
using testing::ElementsAre;
using testing::IsEmpty;

std::wstring KeyOf(const std::wstring& name) {
    return kSettingsKey + (L"\\" + name);
}

// The name of the entry whose key the registry refuses to delete.
std::wstring g_undeletable;

using BadEntries = test::ScheduleTest;

TEST_F(BadEntries, NonsenseIsListedAsFarAsItIsATextAndHurtsNobody) {
    WriteEntry(L"RunAppAtTime-0000000001", {L"loud", L"Someday", L"noon", L"x"});
    WriteEntry(L"RunAppAtTime-0000000002", {L"", L"Mon", L"10 : 00", L"11 : 00"});
    WriteEntry(L"RunAppAtTime-0000000003", {std::wstring(400, L'9'), L"Mon", L"10 : 00", L"11 : 00"});
    WriteEntry(L"RunAppAtTime-0000000004", {L"98.5", L"Mon", L"999999999999999", L"-99999999999999"});
    RegistrySetDWORD(HKEY_CLASSES_ROOT, KeyOf(L"RunAppAtTime-0000000005").c_str(), L"Channel", 9850);
    CreateScheduleKey(HKEY_CLASSES_ROOT, kSettingsKey, L"RunAppAtTime-0000000006");
    OpenSchedule schedule;
    EXPECT_THAT(schedule.Rows(), ElementsAre(Texts{L"loud", L"Someday", L"noon", L"x"},
                                             Texts{L"98.5", L"Mon", L"999999999999999", L"-99999999999999"}));
    schedule.SetTimes(10, 0, 11, 0);
    schedule.ChooseDays({1});
    schedule.Add();
    EXPECT_EQ(schedule.Rows().size(), 3u);
}

TEST_F(BadEntries, ANonsenseRowCanBeDeleted) {
    WriteEntry(L"RunAppAtTime-0000000001", {L"loud", L"Someday", L"noon", L"x"});
    OpenSchedule schedule;
    schedule.SelectRow(0);
    schedule.ContextMenu(888);
    schedule.AnswerBox(IDOK);
    schedule.WaitForRows(0);
    EXPECT_THAT(EntryNames(), IsEmpty());
}

TEST_F(BadEntries, ASubkeyThatCannotBeDeletedIsWalkedPast) {
    for (int i = 1; i <= 5; ++i) {
        WriteEntry(L"RunAppAtTime-000000000" + std::to_wstring(i), {L"87.5", L"Mon", L"10 : 00", L"11 : 00"});
    }
    g_undeletable = L"RunAppAtTime-0000000002";
    OpenSchedule schedule;
    schedule.SelectRow(0);
    schedule.ContextMenu(889);
    schedule.AnswerBox(IDOK);
    schedule.WaitForRows(0);
    EXPECT_TRUE(test::WaitFor([] { return EntryNames().size() == 1; }));
    EXPECT_THAT(EntryNames(), ElementsAre(L"RunAppAtTime-0000000002"));
    g_undeletable.clear();
}

TEST_F(BadEntries, HundredsOfBookingsAreListedComparedAndDeleted) {
    constexpr int kMany = 400;
    for (int i = 0; i < kMany; ++i) {
        wchar_t name[40];
        std::swprintf(name, 40, L"RunAppAtTime-%010d", i);
        WriteEntry(name, {L"87.5", L"Mon", L"10 : 00", L"11 : 00"});
    }
    OpenSchedule schedule;
    EXPECT_EQ(schedule.Rows().size(), static_cast<std::size_t>(kMany));
    schedule.SetTimes(12, 0, 13, 0);
    schedule.ChooseDays({1});
    schedule.Add();
    EXPECT_EQ(Booked().size(), 1u);
    schedule.SelectRow(0);
    schedule.ContextMenu(889);
    schedule.AnswerBox(IDOK);
    schedule.WaitForRows(0);
    EXPECT_TRUE(test::WaitFor([] { return EntryNames().empty() && Booked().empty(); }));
}

}  // namespace

// The program's own call goes through here.
extern "C" bool __real__Z17DeleteScheduleKeyP6HKEY__PKwS2_(HKEY root, const WCHAR* path, const WCHAR* name);
extern "C" bool __wrap__Z17DeleteScheduleKeyP6HKEY__PKwS2_(HKEY root, const WCHAR* path, const WCHAR* name) {
    return name != g_undeletable && __real__Z17DeleteScheduleKeyP6HKEY__PKwS2_(root, path, name);
}
