// The list's context menu: deleting one booking and all of them.
#include <windows.h>

#include <regext.h>

#include "tests/support/window_thread.h"
#include "tests/unit/schedule/open_schedule.h"

namespace {

using test::BoxSeen;
using test::OpenSchedule;
using test::Texts;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

constexpr UINT kDeleteOne = 888;
constexpr UINT kDeleteAll = 889;

class Delete : public test::ScheduleTest {
  protected:
    // Books through the dialog, so that entries and notifications belong together.
    static void Book(const OpenSchedule& schedule, WORD hour, const std::vector<int>& days) {
        schedule.SetTimes(hour, 0, hour, 30);
        schedule.ChooseDays(days);
        schedule.Add();
    }
};

TEST_F(Delete, AnEmptyListHasNoMenuAndGetsTheFocus) {
    OpenSchedule schedule;
    const auto focus = [&schedule] { return test::FocusIn(schedule.Dialog()); };
    SendMessageW(schedule.Dialog(), WM_NEXTDLGCTL,
                 reinterpret_cast<WPARAM>(schedule.Control(IDC_SCHEDULE_CHANNEL)), TRUE);
    ASSERT_EQ(focus(), schedule.Control(IDC_SCHEDULE_CHANNEL));
    // A menu would keep the answer back until somebody leaves it.
    DWORD_PTR result = 0;
    EXPECT_NE(SendMessageTimeoutW(schedule.Dialog(), WM_CONTEXTMENU, 0, MAKELPARAM(60, 200), SMTO_NORMAL,
                                  test::kDeadline_ms, &result),
              0);
    EXPECT_EQ(focus(), schedule.Control(IDC_SCHEDULE_LIST));
}

TEST_F(Delete, BothCommandsAreGreyWithoutASelectedRow) {
    OpenSchedule schedule;
    Book(schedule, 10, {1});
    EXPECT_THAT(schedule.ContextMenu(0), ElementsAre(L"Delete (grey)", L"Delete all (grey)"));
    schedule.SelectRow(0);
    EXPECT_THAT(schedule.ContextMenu(0), ElementsAre(L"Delete", L"Delete all"));
}

// For who has no stylus to hold on the list.
TEST_F(Delete, ASoftKeyOpensTheMenuOfTheSelectedBooking) {
    OpenSchedule schedule;
    Book(schedule, 10, {1, 2});
    EXPECT_THAT(schedule.SoftKeyMenu(0), ElementsAre(L"Delete (grey)", L"Delete all (grey)"));
    schedule.SelectRow(1);
    schedule.SoftKeyMenu(kDeleteOne);
    EXPECT_EQ(schedule.AnswerBox(IDOK).text, L"Delete this recording from the schedule?");
    schedule.WaitForRows(1);
    EXPECT_EQ(schedule.Rows()[0].week, L"Mon");
}

TEST_F(Delete, OneBookingGoesWithItsEntryAndItsNotification) {
    OpenSchedule schedule;
    Book(schedule, 10, {1, 2, 3});
    const auto names = Booked();
    ASSERT_EQ(names.size(), 3u);
    schedule.SelectRow(1);
    schedule.ContextMenu(kDeleteOne);
    const BoxSeen box = schedule.AnswerBox(IDOK);
    EXPECT_EQ(box.caption, L"FM");
    EXPECT_EQ(box.text, L"Delete this recording from the schedule?");
    EXPECT_EQ(box.buttons, 2u);
    EXPECT_TRUE(box.icon);
    schedule.WaitForRows(2);
    EXPECT_EQ(schedule.Rows()[0].week, L"Mon");
    EXPECT_EQ(schedule.Rows()[1].week, L"Wed");
    EXPECT_THAT(Booked(), ElementsAre(names[0], names[2]));
    EXPECT_EQ(EntryNames(), Booked());
}

TEST_F(Delete, NothingHappensWhenTheUserDeclines) {
    OpenSchedule schedule;
    Book(schedule, 10, {1});
    schedule.SelectRow(0);
    schedule.ContextMenu(kDeleteOne);
    schedule.AnswerBox(IDCANCEL);
    schedule.ContextMenu(kDeleteAll);
    schedule.AnswerBox(IDCANCEL);
    EXPECT_EQ(schedule.Rows().size(), 1u);
    EXPECT_EQ(Booked().size(), 1u);
    EXPECT_EQ(EntryNames().size(), 1u);
}

TEST_F(Delete, WithTwoIdenticalRowsOnlyTheFirstMatchingSubkeyGoes) {
    const Texts twin{L"87.5", L"Mon", L"10 : 00", L"11 : 00"};
    WriteEntry(L"RunAppAtTime-0000000001", twin);
    WriteEntry(L"RunAppAtTime-0000000002", twin);
    OpenSchedule schedule;
    schedule.SelectRow(1);
    schedule.ContextMenu(kDeleteOne);
    schedule.AnswerBox(IDOK);
    schedule.WaitForRows(1);
    EXPECT_THAT(EntryNames(), ElementsAre(L"RunAppAtTime-0000000002"));
}

TEST_F(Delete, TheTextsAreComparedWithoutRegardToLetterCase) {
    WriteEntry(L"RunAppAtTime-0000000001", {L"87.5", L"mON", L"10 : 00", L"11 : 00"});
    OpenSchedule schedule;
    WriteEntry(L"RunAppAtTime-0000000001", {L"87.5", L"MON", L"10 : 00", L"11 : 00"});
    schedule.SelectRow(0);
    schedule.ContextMenu(kDeleteOne);
    schedule.AnswerBox(IDOK);
    schedule.WaitForRows(0);
    EXPECT_THAT(EntryNames(), IsEmpty());
}

TEST_F(Delete, EntriesThatDifferInAnyOneOfTheirTextsStay) {
    WriteEntry(L"RunAppAtTime-0000000001", {L"98.5", L"Mon", L"10 : 00", L"11 : 00"});
    WriteEntry(L"RunAppAtTime-0000000002", {L"87.5", L"Tue", L"10 : 00", L"11 : 00"});
    WriteEntry(L"RunAppAtTime-0000000003", {L"87.5", L"Mon", L"10 : 01", L"11 : 00"});
    WriteEntry(L"RunAppAtTime-0000000004", {L"87.5", L"Mon", L"10 : 00", L"11 : 01"});
    WriteEntry(L"RunAppAtTime-0000000005", {L"87.5", L"Mon", L"10 : 00", L"11 : 00"});
    OpenSchedule schedule;
    schedule.SelectRow(4);
    schedule.ContextMenu(kDeleteOne);
    schedule.AnswerBox(IDOK);
    schedule.WaitForRows(4);
    EXPECT_THAT(EntryNames(), ElementsAre(L"RunAppAtTime-0000000001", L"RunAppAtTime-0000000002",
                                          L"RunAppAtTime-0000000003", L"RunAppAtTime-0000000004"));
}

TEST_F(Delete, ARowWhoseEntryIsGoneGoesAllTheSame) {
    WriteEntry(L"RunAppAtTime-0000000001", {L"87.5", L"Mon", L"10 : 00", L"11 : 00"});
    OpenSchedule schedule;
    WriteEntry(L"RunAppAtTime-0000000001", {L"87.5", L"Mon", L"10 : 00", L"11 : 01"});
    schedule.SelectRow(0);
    schedule.ContextMenu(kDeleteOne);
    schedule.AnswerBox(IDOK);
    schedule.WaitForRows(0);
    EXPECT_EQ(EntryNames().size(), 1u);
}

TEST_F(Delete, AllBookingsGoAndSubkeysOfOthersStay) {
    CreateScheduleKey(HKEY_CLASSES_ROOT, kSettingsKey, L"InprocServer32");
    OpenSchedule schedule;
    Book(schedule, 10, {0, 1, 2, 3, 4, 5, 6});
    ASSERT_EQ(Booked().size(), 7u);
    schedule.SelectRow(3);
    schedule.ContextMenu(kDeleteAll);
    const BoxSeen box = schedule.AnswerBox(IDOK);
    EXPECT_EQ(box.caption, L"FM");
    EXPECT_EQ(box.text, L"Delete all recordings from the schedule?");
    EXPECT_TRUE(box.icon);
    EXPECT_EQ(box.buttons, 2u);
    schedule.WaitForRows(0);
    EXPECT_TRUE(test::WaitFor([] { return Booked().empty(); }));
    EXPECT_THAT(EntryNames(), ElementsAre(L"InprocServer32"));
}

TEST_F(Delete, ABookingWhoseNameIsShortIsStoppedButItsSubkeyStays) {
    WriteEntry(L"Short", {L"87.5", L"Mon", L"10 : 00", L"11 : 00"});
    RegistrySetString(HKEY_LOCAL_MACHINE, L"System\\Notifications\\Short", L"Application",
                      L"\\Windows\\UI.exe");
    OpenSchedule schedule;
    schedule.SelectRow(0);
    schedule.ContextMenu(kDeleteAll);
    schedule.AnswerBox(IDOK);
    schedule.WaitForRows(0);
    EXPECT_TRUE(test::WaitFor([] { return Booked().empty(); }));
    EXPECT_THAT(EntryNames(), ElementsAre(L"Short"));
}

TEST_F(Delete, AnEntrysNameHasAtLeastTwentyCharacters) {
    const Texts texts{L"87.5", L"Mon", L"10 : 00", L"11 : 00"};
    const std::wstring shorter(19, L'a'), shortest(20, L'b');
    WriteEntry(shorter, texts);
    WriteEntry(shortest, texts);
    OpenSchedule schedule;
    schedule.SelectRow(0);
    schedule.ContextMenu(kDeleteAll);
    schedule.AnswerBox(IDOK);
    schedule.WaitForRows(0);
    EXPECT_TRUE(test::WaitFor([] { return EntryNames().size() == 1; }));
    EXPECT_THAT(EntryNames(), ElementsAre(shorter));
}

TEST_F(Delete, WhatIsDeletedDoesNotComeBackWhenTheDialogIsOpenedAgain) {
    {
        OpenSchedule schedule;
        Book(schedule, 10, {1, 2});
        schedule.SelectRow(0);
        schedule.ContextMenu(kDeleteOne);
        schedule.AnswerBox(IDOK);
        schedule.WaitForRows(1);
    }
    OpenSchedule again;
    EXPECT_THAT(again.Rows(), ElementsAre(Texts{L"87.5", L"Tue", L"10 : 00", L"10 : 30"}));
}

}  // namespace
