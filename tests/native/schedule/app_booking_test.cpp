// When a booked program is started, on a clock that runs, jumps, turns back and changes for daylight saving.
#include "handset/state/app_booking.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace handset {
namespace {

constexpr LocalSeconds kMinute = 60, kHour = 3600, kDay = 24 * kHour, kWeek = 7 * kDay;

LocalSeconds At(const wchar_t* text) {
    const auto time = ReadLocalTime(text);
    EXPECT_TRUE(time.has_value());
    return time.value_or(0);
}

// A service that is asked now and then, and does what the store lets it do.
struct Service {
    AppBooking booking;
    std::vector<LocalSeconds> starts;

    bool LookAt(LocalSeconds now) {
        const auto due = DueTime(booking, now);
        if (!due) return false;
        booking.started = *due;
        starts.push_back(*due);
        return true;
    }
    // Looks every ten seconds.
    void Run(LocalSeconds from, LocalSeconds to) {
        for (LocalSeconds now = from; now <= to; now += 10) LookAt(now);
    }
};

Service Weekly(const wchar_t* start) {
    Service service;
    service.booking.start = At(start);
    service.booking.repeat = Repeat::kEveryWeek;
    return service;
}

TEST(BookedPrograms, AreStartedAtTheirTimeAndEveryWeekAgain) {
    Service service = Weekly(L"2026-11-23 10:00:00");
    service.Run(At(L"2026-11-21 00:00:00"), At(L"2026-12-08 00:00:00"));
    EXPECT_EQ(service.starts,
              (std::vector<LocalSeconds>{At(L"2026-11-23 10:00:00"), At(L"2026-11-30 10:00:00"),
                                         At(L"2026-12-07 10:00:00")}));
}

TEST(BookedPrograms, AreStartedOnceOrEveryDayWhenSoBooked) {
    Service service = Weekly(L"2026-11-23 10:00:00");
    service.booking.repeat = Repeat::kOnce;
    service.Run(At(L"2026-11-21 00:00:00"), At(L"2026-11-26 00:00:00"));
    EXPECT_EQ(service.starts.size(), 1U);
    EXPECT_FALSE(NextTime(service.booking, At(L"2026-11-26 00:00:00")).has_value());
    service = Weekly(L"2026-11-23 10:00:00");
    service.booking.repeat = Repeat::kEveryDay;
    service.Run(At(L"2026-11-21 00:00:00"), At(L"2026-11-26 00:00:00"));
    EXPECT_EQ(service.starts.size(), 3U);
}

TEST(BookedPrograms, AreNotStartedBeforeTheirTime) {
    Service service = Weekly(L"2026-11-23 10:00:00");
    EXPECT_FALSE(service.LookAt(At(L"2026-11-23 09:59:59")));
    EXPECT_TRUE(service.LookAt(At(L"2026-11-23 10:00:00")));
    EXPECT_FALSE(service.LookAt(At(L"2026-11-23 10:00:00")));
}

TEST(BookedPrograms, AreMadeUpForWithinSixtyMinutesAndPassedOverLater) {
    Service service = Weekly(L"2026-11-23 10:00:00");
    EXPECT_TRUE(service.LookAt(At(L"2026-11-23 11:00:59")));
    service = Weekly(L"2026-11-23 10:00:00");
    EXPECT_FALSE(service.LookAt(At(L"2026-11-23 11:01:00")));
    EXPECT_EQ(NextTime(service.booking, At(L"2026-11-23 11:01:00")), At(L"2026-11-30 10:00:00"));
    EXPECT_TRUE(service.LookAt(At(L"2026-11-30 10:00:00")));
}

TEST(BookedPrograms, OfSeveralTimesThatWereMissedOnlyTheLastIsMadeUpFor) {
    Service service = Weekly(L"2026-11-02 10:00:00");
    service.LookAt(At(L"2026-11-23 10:30:00"));
    service.LookAt(At(L"2026-11-23 10:31:00"));
    EXPECT_EQ(service.starts, std::vector<LocalSeconds>{At(L"2026-11-23 10:00:00")});
}

TEST(BookedPrograms, ATimeThatWasServedIsNotServedAgainWhenTheClockIsSetBack) {
    for (const LocalSeconds back : {kMinute, kHour, kDay, 6 * kDay}) {
        Service service = Weekly(L"2026-11-23 10:00:00");
        const LocalSeconds served = At(L"2026-11-23 10:00:00");
        service.Run(served - kHour, served + kMinute);
        service.Run(served + kMinute - back, served + 2 * kHour);
        EXPECT_EQ(service.starts.size(), 1U) << back;
        EXPECT_EQ(NextTime(service.booking, served - back), served + kWeek) << back;
    }
}

TEST(BookedPrograms, ATimeBeforeTheOneThatWasServedLastIsNotServedAgainEither) {
    const LocalSeconds first = At(L"2026-11-23 10:00:00");
    for (const LocalSeconds after : {LocalSeconds{1}, kMinute, kHour, kDay}) {
        Service service = Weekly(L"2026-11-23 10:00:00");
        service.Run(first, first + kMinute);
        service.Run(first + kWeek, first + kWeek + kMinute);
        ASSERT_EQ(service.starts.size(), 2U);
        // Back between the two, and on to the third.
        EXPECT_EQ(NextTime(service.booking, first + after), first + 2 * kWeek) << after;
        service.Run(first + after, first + 2 * kWeek - 10);
        EXPECT_EQ(service.starts.size(), 2U) << after;
        service.Run(first + 2 * kWeek, first + 2 * kWeek);
        EXPECT_EQ(service.starts.size(), 3U) << after;
    }
}

TEST(BookedPrograms, AClockThatWasFarAheadDoesNotBlockThem) {
    Service service = Weekly(L"2026-11-23 10:00:00");
    service.Run(At(L"2036-11-24 09:00:00"), At(L"2036-11-24 11:00:00"));
    ASSERT_EQ(service.starts.size(), 1U);
    EXPECT_EQ(NextTime(service.booking, At(L"2026-11-22 00:00:00")), At(L"2026-11-23 10:00:00"));
    service.Run(At(L"2026-11-22 00:00:00"), At(L"2026-11-24 00:00:00"));
    EXPECT_EQ(service.starts.back(), At(L"2026-11-23 10:00:00"));
}

TEST(BookedPrograms, AClockSetForwardAcrossATimeStartsItUpToAnHourLate) {
    Service service = Weekly(L"2026-11-23 10:00:00");
    service.Run(At(L"2026-11-23 09:00:00"), At(L"2026-11-23 09:50:00"));
    EXPECT_TRUE(service.LookAt(At(L"2026-11-23 10:40:00")));
    Service late = Weekly(L"2026-11-23 10:00:00");
    late.Run(At(L"2026-11-23 09:00:00"), At(L"2026-11-23 09:50:00"));
    EXPECT_FALSE(late.LookAt(At(L"2026-11-23 12:00:00")));
    // Set right again, the time is still to come.
    EXPECT_TRUE(late.LookAt(At(L"2026-11-23 10:00:05")));
}

TEST(BookedPrograms, TheHourThatDaylightSavingLeavesOutIsServedWhenItWouldHaveEnded) {
    for (const wchar_t* start : {L"2027-03-28 02:00:00", L"2027-03-28 02:30:00", L"2027-03-28 02:59:00"}) {
        Service service = Weekly(start);
        service.Run(At(L"2027-03-28 01:00:00"), At(L"2027-03-28 01:59:59"));
        EXPECT_TRUE(service.starts.empty());
        EXPECT_TRUE(service.LookAt(At(L"2027-03-28 03:00:00")));
        service.Run(At(L"2027-03-28 03:00:10"), At(L"2027-03-29 03:00:00"));
        EXPECT_EQ(service.starts.size(), 1U);
    }
}

TEST(BookedPrograms, TheHourThatComesTwiceIsServedOnce) {
    Service service = Weekly(L"2026-10-25 02:30:00");
    service.Run(At(L"2026-10-25 01:00:00"), At(L"2026-10-25 02:59:59"));
    service.Run(At(L"2026-10-25 02:00:00"), At(L"2026-10-25 05:00:00"));
    EXPECT_EQ(service.starts.size(), 1U);
}

TEST(BookedPrograms, NoWayOfSettingTheClockStartsOneTimeTwiceWithinAWeek) {
    std::mt19937 random(51);
    for (int round = 0; round < 2000; ++round) {
        Service service = Weekly(L"2026-11-23 10:00:00");
        const LocalSeconds middle = service.booking.start;
        // The clock is set anywhere in the days around the time, less than a week apart.
        for (int step = 0; step < 200; ++step) {
            service.LookAt(middle - 3 * kDay + static_cast<LocalSeconds>(random() % (6 * kDay)));
            if (random() % 4 == 0) service.LookAt(middle + static_cast<LocalSeconds>(random() % (2 * kHour)));
        }
        ASSERT_LE(service.starts.size(), 1U);
    }
}

TEST(BookedPrograms, TheNextTimeIsTheOneThatASecondBySecondWalkMeetsFirst) {
    std::mt19937 random(52);
    for (int round = 0; round < 300; ++round) {
        Service service = Weekly(L"2026-11-23 10:00:00");
        if (random() % 2 == 0) service.booking.repeat = Repeat::kEveryDay;
        if (random() % 2 == 0) service.booking.started = service.booking.start + (random() % 3) * kWeek;
        const LocalSeconds now =
            service.booking.start - kDay + static_cast<LocalSeconds>(random() % (3 * kWeek));
        const auto next = NextTime(service.booking, now);
        ASSERT_TRUE(next.has_value());
        const auto before = service.booking;
        LocalSeconds walk = now;
        while (!DueTime(before, walk)) ++walk;
        ASSERT_EQ(*DueTime(before, walk), *next);
    }
}

TEST(LocalTimes, AreReadBackAsTheyWereWritten) {
    for (const wchar_t* text : {L"1601-01-01 00:00:00", L"2000-02-29 23:59:59", L"2026-11-21 05:42:00",
                                L"2100-03-01 00:00:00", L"9999-12-31 23:59:59"}) {
        EXPECT_EQ(LocalTimeText(At(text)), text);
    }
    std::mt19937_64 random(53);
    for (int round = 0; round < 100000; ++round) {
        const auto time = static_cast<LocalSeconds>(random() % (8000ULL * 365 * kDay));
        ASSERT_EQ(ReadLocalTime(LocalTimeText(time)), time);
    }
}

TEST(LocalTimes, NothingElseIsRead) {
    for (const wchar_t* text :
         {L"", L"soon", L"2026-02-29 00:00:00", L"2026-13-01 00:00:00", L"2026-00-10 00:00:00",
          L"2026-11-31 00:00:00", L"2026-11-21 24:00:00", L"2026-11-21 05:60:00", L"2026-11-21 05:42",
          L"2026-11-21 05:42:00 ", L"26-11-21 05:42:00", L"1600-12-31 00:00:00", L"2026-11-00 00:00:00"}) {
        EXPECT_FALSE(ReadLocalTime(text).has_value()) << testing::PrintToString(std::wstring(text));
    }
    EXPECT_FALSE(ReadLocalTime(std::wstring(L"2026-11-21 05:42:00\0x", 21)).has_value());
}

TEST(LocalTimes, KnowTheirDayOfTheWeek) {
    EXPECT_EQ(DayOfWeek(At(L"2026-11-21 00:00:00")), 6);
    EXPECT_EQ(DayOfWeek(At(L"2026-11-22 23:59:59")), 0);
    EXPECT_EQ(DayOfWeek(At(L"1601-01-01 00:00:00")), 1);
}

TEST(BookingNames, AreLongEnoughAndSortAsTheyWereGiven) {
    EXPECT_GE(BookingName(0).size(), 20U);
    EXPECT_LT(BookingName(4294967295U).size(), 50U);
    EXPECT_LT(BookingName(9), BookingName(10));
    EXPECT_LT(BookingName(99999), BookingName(100000));
}

TEST(Repetitions, AreTheThreeThatThereAre) {
    EXPECT_EQ(RepeatOf(0), Repeat::kOnce);
    EXPECT_EQ(RepeatOf(1), Repeat::kEveryDay);
    EXPECT_EQ(RepeatOf(2), Repeat::kEveryWeek);
    EXPECT_FALSE(RepeatOf(3).has_value());
    EXPECT_FALSE(RepeatOf(0xFFFFFFFF).has_value());
}

}  // namespace
}  // namespace handset
