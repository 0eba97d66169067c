// "Add": what is booked, and what is refused with which words.
#include <cstdlib>

#include "tests/support/trace_capture.h"
#include "tests/unit/schedule/open_schedule.h"

namespace {

using test::BoxSeen;
using test::OpenSchedule;
using test::Texts;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using Add = test::ScheduleTest;

TEST_F(Add, BooksADayAsARowAnEntryAndANotification) {
    OpenSchedule schedule;  // on Wednesday the 25th at 12:00
    schedule.SetChannel(L"87.5");
    schedule.SetTimes(10, 0, 11, 30);
    schedule.ChooseDays({1});
    const std::string trace = test::TraceOf([&] { schedule.Add(); });
    EXPECT_EQ(trace, "PreRecord total time is\t90 min\r\n");
    const Texts texts{L"87.5", L"Mon", L"10 : 00", L"11 : 30"};
    EXPECT_THAT(schedule.Rows(), ElementsAre(texts));
    ASSERT_EQ(EntryNames().size(), 1u);
    EXPECT_EQ(Booked(), EntryNames());
    const std::wstring name = EntryNames()[0];
    EXPECT_GE(name.size(), 20u);
    EXPECT_EQ(EntryTexts(name), texts);
    EXPECT_EQ(BookedValue(name, L"Application"), L"\\Windows\\UI.exe");
    EXPECT_EQ(BookedValue(name, L"CommandLine"), L"-Rec -Channel 8750 -Duration 90");
    EXPECT_EQ(BookedValue(name, L"Start"), L"2026-11-30 10:00:00");
}

TEST_F(Add, ThreeDaysYieldThreeNotificationsThreeSubkeysAndThreeRowsEachWithItsOwnDay) {
    WriteEntry(L"RunAppAtTime-9000000000", {L"99.9", L"Sun", L"01 : 00", L"02 : 00"});
    OpenSchedule schedule;
    schedule.SetChannel(L"101.2");
    schedule.SetTimes(20, 15, 21, 0);
    schedule.ChooseDays({0, 4, 6});
    schedule.Add();
    // The new rows stand at the top, in the order of the days.
    EXPECT_THAT(schedule.Rows(), ElementsAre(Texts{L"101.2", L"Sun", L"20 : 15", L"21 : 00"},
                                             Texts{L"101.2", L"Thu", L"20 : 15", L"21 : 00"},
                                             Texts{L"101.2", L"Sat", L"20 : 15", L"21 : 00"},
                                             Texts{L"99.9", L"Sun", L"01 : 00", L"02 : 00"}));
    const auto names = Booked();
    ASSERT_EQ(names.size(), 3u);
    EXPECT_EQ(EntryNames().size(), 4u);
    EXPECT_EQ(EntryTexts(names[0]).week, L"Sun");
    EXPECT_EQ(EntryTexts(names[1]).week, L"Thu");
    EXPECT_EQ(EntryTexts(names[2]).week, L"Sat");
    EXPECT_EQ(BookedValue(names[0], L"Start"), L"2026-11-29 20:15:00");
    EXPECT_EQ(BookedValue(names[1], L"Start"), L"2026-11-26 20:15:00");
    EXPECT_EQ(BookedValue(names[2], L"Start"), L"2026-11-28 20:15:00");
    for (const std::wstring& name : names) {
        EXPECT_EQ(BookedValue(name, L"CommandLine"), L"-Rec -Channel 10120 -Duration 45");
    }
}

TEST_F(Add, TodayStaysTodayEvenWhenItsTimeHasPassed) {
    OpenSchedule schedule;
    schedule.SetTimes(8, 0, 9, 0);
    schedule.ChooseDays({3});
    schedule.Add();
    ASSERT_EQ(Booked().size(), 1u);
    EXPECT_EQ(BookedValue(Booked()[0], L"Start"), L"2026-11-25 08:00:00");
}

TEST_F(Add, TheNotificationOfEveryDayIsOnThatDayWithinAWeek) {
    OpenSchedule schedule;
    schedule.SetTimes(6, 0, 6, 1);
    schedule.ChooseDays({0, 1, 2, 3, 4, 5, 6});
    schedule.Add();
    std::vector<std::wstring> starts;
    for (const std::wstring& name : Booked()) starts.push_back(BookedValue(name, L"Start"));
    EXPECT_THAT(starts, ElementsAre(L"2026-11-29 06:00:00", L"2026-11-30 06:00:00", L"2026-12-01 06:00:00",
                                    L"2026-11-25 06:00:00", L"2026-11-26 06:00:00", L"2026-11-27 06:00:00",
                                    L"2026-11-28 06:00:00"));
}

TEST_F(Add, NoDayIsRefused) {
    OpenSchedule schedule;
    schedule.SetTimes(10, 0, 11, 0);
    schedule.ChooseDays({});
    const BoxSeen box = schedule.AddAndAnswer();
    EXPECT_EQ(box.caption, L"FM");
    EXPECT_EQ(box.text, L"Please choose at least one day.");
    EXPECT_EQ(box.buttons, 1u);
    EXPECT_FALSE(box.icon);
    EXPECT_THAT(schedule.Rows(), IsEmpty());
    EXPECT_THAT(Booked(), IsEmpty());
}

TEST_F(Add, NoDayIsToldBeforeEqualTimesAndAnEarlierEndAre) {
    OpenSchedule schedule;
    schedule.ChooseDays({});
    for (const WORD endHour : {WORD{10}, WORD{9}}) {
        schedule.SetTimes(10, 0, endHour, 0);
        EXPECT_EQ(schedule.AddAndAnswer().text, L"Please choose at least one day.");
    }
}

TEST_F(Add, AnEndEqualToTheStartIsRefused) {
    OpenSchedule schedule;
    schedule.SetTimes(10, 0, 10, 0);
    const BoxSeen box = schedule.AddAndAnswer();
    EXPECT_EQ(box.caption, L"FM");
    EXPECT_EQ(box.text, L"Start and end are the same time.");
    EXPECT_EQ(box.buttons, 1u);
    EXPECT_THAT(Booked(), IsEmpty());
}

TEST_F(Add, AnEndBeforeTheStartIsRefusedInTheHourAsInTheMinute) {
    OpenSchedule schedule;
    for (const WORD endHour : {WORD{9}, WORD{10}}) {
        schedule.SetTimes(10, 30, endHour, 29);
        BoxSeen box;
        const std::string trace = test::TraceOf([&] { box = schedule.AddAndAnswer(); });
        EXPECT_EQ(box.caption, L"WARNING");
        EXPECT_EQ(box.text, L"The end must be later than the start, on the same day.");
        EXPECT_TRUE(box.icon);
        EXPECT_EQ(box.buttons, 1u);
        EXPECT_EQ(trace, "");
    }
    EXPECT_THAT(Booked(), IsEmpty());
    EXPECT_THAT(schedule.Rows(), IsEmpty());
}

TEST_F(Add, TouchingAnExistingBookingIsRefused) {
    WriteEntry(L"RunAppAtTime-0000000001", {L"87.5", L"Mon", L"11 : 00", L"12 : 00"});
    OpenSchedule schedule;
    schedule.SetTimes(10, 0, 11, 0);
    schedule.ChooseDays({1});
    BoxSeen box;
    const std::string trace = test::TraceOf([&] { box = schedule.AddAndAnswer(); });
    EXPECT_EQ(box.caption, L"Warning");
    EXPECT_EQ(box.text,
              L"Mon, 10 : 00 to 11 : 00: another recording is booked in this time or right beside it.");
    EXPECT_EQ(
        trace,
        "PreRecord total time is\t60 min\r\n"
        "Insert_Start  time is 600 ,Insert_End  time is 660, LV_Start time is 660 , LV_End time is 720\r\n");
    EXPECT_EQ(schedule.Rows().size(), 1u);
    EXPECT_THAT(Booked(), IsEmpty());
}

TEST_F(Add, ContainingAnExistingBookingStrictlyIsAccepted) {
    WriteEntry(L"RunAppAtTime-0000000001", {L"87.5", L"Mon", L"10 : 00", L"11 : 00"});
    OpenSchedule schedule;
    schedule.SetTimes(9, 0, 13, 0);
    schedule.ChooseDays({1});
    const std::string trace = test::TraceOf([&] { schedule.Add(); });
    EXPECT_THAT(trace, HasSubstr("Insert_Start  time is 540 ,Insert_End  time is 780, LV_Start time is 600 , "
                                 "LV_End time is 660\r\n"));
    EXPECT_EQ(schedule.Rows().size(), 2u);
    EXPECT_EQ(Booked().size(), 1u);
}

TEST_F(Add, AnotherDayIsNotInTheWay) {
    WriteEntry(L"RunAppAtTime-0000000001", {L"87.5", L"Tue", L"10 : 00", L"11 : 00"});
    OpenSchedule schedule;
    schedule.SetTimes(10, 0, 11, 0);
    schedule.ChooseDays({1});
    schedule.Add();
    EXPECT_EQ(schedule.Rows().size(), 2u);
}

TEST_F(Add, DaysBookedBeforeAConflictStayBooked) {
    WriteEntry(L"RunAppAtTime-9000000000", {L"87.5", L"Wed", L"10 : 30", L"11 : 30"});
    OpenSchedule schedule;
    schedule.SetTimes(10, 0, 11, 0);
    schedule.ChooseDays({1, 3, 5});
    EXPECT_EQ(schedule.AddAndAnswer().text.substr(0, 4), L"Wed,");
    EXPECT_EQ(schedule.Rows().size(), 2u);
    ASSERT_EQ(Booked().size(), 1u);
    EXPECT_EQ(EntryTexts(Booked()[0]).week, L"Mon");
}

TEST_F(Add, TheNextAddStandsAtTheTopAgain) {
    OpenSchedule schedule;
    schedule.SetTimes(10, 0, 10, 30);
    schedule.ChooseDays({1, 2});
    schedule.Add();
    schedule.SetTimes(11, 0, 11, 30);
    schedule.Add();
    const auto rows = schedule.Rows();
    ASSERT_EQ(rows.size(), 4u);
    EXPECT_EQ(rows[0].start, L"11 : 00");
    EXPECT_EQ(rows[1].start, L"11 : 00");
    EXPECT_EQ(rows[2].start, L"10 : 00");
}

TEST_F(Add, TheWholeDayFromMidnightOnCanBeBooked) {
    OpenSchedule schedule;
    schedule.SetTimes(0, 0, 23, 59);
    schedule.ChooseDays({2});
    const std::string trace = test::TraceOf([&] { schedule.Add(); });
    EXPECT_EQ(trace, "PreRecord total time is\t1439 min\r\n");
    ASSERT_EQ(Booked().size(), 1u);
    EXPECT_EQ(BookedValue(Booked()[0], L"Start"), L"2026-12-01 00:00:00");
    EXPECT_EQ(BookedValue(Booked()[0], L"CommandLine"), L"-Rec -Channel 8750 -Duration 1439");
}

TEST_F(Add, AChannelWithoutADecimalIsBookedAsItStands) {
    OpenSchedule schedule;
    schedule.SetChannel(L"98");
    schedule.SetTimes(10, 0, 11, 0);
    schedule.Add();
    ASSERT_EQ(Booked().size(), 1u);
    EXPECT_EQ(BookedValue(Booked()[0], L"CommandLine"), L"-Rec -Channel 980 -Duration 60");
    EXPECT_EQ(EntryTexts(Booked()[0]).channel, L"98");
}

// The rule with its words, the dialog and its pickers together, on pairs made by chance.
TEST_F(Add, AcceptsExactlyWhatTheRuleAccepts) {
    OpenSchedule schedule;
    std::srand(52);
    const auto quarter = [] { return static_cast<WORD>(std::rand() % 96); };
    for (int round = 0; round < 25; ++round) {
        const WORD start = quarter(), end = quarter();
        if (start >= end) continue;
        const auto rows = schedule.Rows();
        bool conflict = false;
        for (const Texts& row : rows) {
            const int from = MinuteOfDay(row.start.c_str()), to = MinuteOfDay(row.end.c_str());
            conflict |= (start * 15 >= from && start * 15 <= to) || (end * 15 >= from && end * 15 <= to);
        }
        schedule.SetTimes(start / 4, static_cast<WORD>(start % 4 * 15), end / 4,
                          static_cast<WORD>(end % 4 * 15));
        if (conflict) {
            EXPECT_EQ(schedule.AddAndAnswer().caption, L"Warning");
        } else {
            schedule.Add();
        }
        ASSERT_EQ(schedule.Rows().size(), rows.size() + (conflict ? 0 : 1)) << start << " " << end;
    }
}

}  // namespace
