// The service: booked programs start at their time, once, whatever happens to the clock and to the service.
#include "handset/service/booking_service.h"

#include <thread>

#include "handset/controls/device_registry.h"
#include "handset/controls/handset_clock.h"
#include "handset/controls/radio_process.h"
#include "handset/controls/switches.h"
#include "handset/state/handset_clock.h"
#include "handset/state/handset_state.h"
#include "tests/unit/handset/booked_handset.h"

namespace panel {
namespace {

using Service = BookedHandset;

std::uint64_t Shown() {
    return handset::ShownAt(*handset::SharedMoment(), handset::RealTime());
}

TEST_F(Service, StartsAProgramWithItsCommandLineWhenItsTimeComes) {
    Book(L"RunAppAtTime-0000000001", L"-Rec -Channel 9850 -Duration 60", ten_);
    SetClock(ten_ - 2);
    const CBackgroundService service(console_);
    EXPECT_EQ(StartsOf("-Rec -Channel 9850 -Duration 60"), 0);
    ASSERT_TRUE(WaitForStart("-Rec -Channel 9850 -Duration 60"));
    EXPECT_GE(LocalNow(), ten_);
    EXPECT_LE(LocalNow(), ten_ + 30);
    EXPECT_EQ(ReadBooking(L"RunAppAtTime-0000000001")->started, ten_);
}

TEST_F(Service, KeepsTimeAtAHighClockRate) {
    ASSERT_TRUE(handset::SetClockRate(600));
    Book(L"RunAppAtTime-0000000001", L"today", ten_);
    Book(L"RunAppAtTime-0000000002", L"later", ten_ + 20 * kMinute_s);
    SetClock(ten_ - 10 * kMinute_s);
    const CBackgroundService service(console_);
    ASSERT_TRUE(WaitForStart("later"));
    EXPECT_EQ(StartsOf("today"), 1);
    EXPECT_EQ(Notes().find("command line [exit 0 today]\n"), 0u) << Notes();
}

TEST_F(Service, SeesABookingThatIsMadeWhileItWaits) {
    const CBackgroundService service(console_);
    ASSERT_TRUE(WaitUntil([] { return ServiceRuns(); }, kDeadline_ms));
    Book(L"RunAppAtTime-0000000001", L"new", LocalNow() + 2);
    EXPECT_TRUE(WaitForStart("new"));
}

TEST_F(Service, SeesAClockThatIsSetWhileItWaits) {
    Book(L"RunAppAtTime-0000000001", L"jump", ten_ + kDay_s);
    const CBackgroundService service(console_);
    ASSERT_TRUE(WaitUntil([] { return ServiceRuns(); }, kDeadline_ms));
    SetClock(ten_ + kDay_s - 1);
    EXPECT_TRUE(WaitForStart("jump"));
}

TEST_F(Service, ManyServicesStartEachOfManyBookingsOnce) {
    constexpr int kBookings = 12;
    for (int i = 0; i < kBookings; ++i) {
        Book(L"RunAppAtTime-00000000" + std::to_wstring(10 + i), std::to_wstring(100 + i), ten_);
    }
    SetClock(ten_ - 1);
    const HandsetProcess process(L"service");
    RecordingConsole second, third;
    {
        const CBackgroundService one(console_), two(second), three(third);
        ASSERT_TRUE(WaitUntil(
            [this] {
                for (int i = 0; i < kBookings; ++i) {
                    if (StartsOf(std::to_string(100 + i)) == 0) return false;
                }
                return true;
            },
            kDeadline_ms));
        // What a service that lost the race would start comes at once: a few rounds of theirs show it.
        const handset::LocalSeconds before = LocalNow();
        WaitUntil([&] { return LocalNow() > before + 3; }, kDeadline_ms);
    }
    for (int i = 0; i < kBookings; ++i) EXPECT_EQ(StartsOf(std::to_string(100 + i)), 1) << i;
}

TEST_F(Service, AServiceThatWasKilledAndComesAgainStartsNothingTwice) {
    Book(L"RunAppAtTime-0000000001", L"once", ten_);
    SetClock(ten_ - 1);
    HandsetProcess service(L"service");
    ASSERT_TRUE(WaitForStart("once"));
    service.Kill();
    LookOnce();
    LookOnce();
    EXPECT_EQ(StartsOf("once"), 1);
}

TEST_F(Service, AServiceThatWasKilledBeforeTheTimeMakesUpForItWhenItComesAgain) {
    Book(L"RunAppAtTime-0000000001", L"late", ten_);
    {
        HandsetProcess service(L"service");
        ASSERT_TRUE(WaitUntil([] { return ServiceRuns(); }, kDeadline_ms));
        service.Kill();
    }
    SetClock(ten_ + 59 * kMinute_s);
    EXPECT_EQ(StartsOf("late"), 0);
    LookOnce();
    EXPECT_TRUE(WaitForStart("late"));
    LookOnce();
    EXPECT_EQ(StartsOf("late"), 1);
}

TEST_F(Service, WhatWasMissedByMoreThanAnHourIsPassedOver) {
    Book(L"RunAppAtTime-0000000001", L"missed", ten_);
    SetClock(ten_ + kHour_s + kMinute_s);
    LookOnce();
    EXPECT_TRUE(console_.lines.empty());
    SetClock(ten_ + kWeek_s);
    LookOnce();
    EXPECT_TRUE(WaitForStart("missed"));
}

TEST_F(Service, ATimeThatWasServedIsNotServedAgainAfterTheClockWasSetBack) {
    Book(L"RunAppAtTime-0000000001", L"back", ten_);
    SetClock(ten_);
    LookOnce();
    ASSERT_TRUE(WaitForStart("back"));
    for (const handset::LocalSeconds back : {kMinute_s, kHour_s, kDay_s}) {
        SetClock(ten_ - back);
        LookOnce();
        SetClock(ten_ + kMinute_s);
        LookOnce();
    }
    EXPECT_TRUE(console_.lines.empty());
    EXPECT_EQ(StartsOf("back"), 1);
}

TEST_F(Service, WakesASleepingHandset) {
    Book(L"RunAppAtTime-0000000001", L"wake", ten_);
    ASSERT_TRUE(SetPowerState(L"suspend"));
    LookOnce();
    EXPECT_EQ(PowerState(), L"suspend");
    SetClock(ten_);
    LookOnce();
    EXPECT_EQ(PowerState(), L"unattended");
    EXPECT_TRUE(WaitForStart("wake"));
}

TEST_F(Service, LeavesThePowerStateOfAHandsetThatIsAwake) {
    for (const wchar_t* state : {L"on", L"idle", L"unattended", L"useridle"}) {
        Book(L"RunAppAtTime-0000000001", state, ten_);
        DeleteDeviceValue(L"HKLM\\System\\Notifications\\RunAppAtTime-0000000001", handset::kBookingStarted);
        SetPowerState(state);
        SetClock(ten_);
        LookOnce();
        EXPECT_EQ(PowerState(), state);
        EXPECT_EQ(console_.lines.size(), 1u);
    }
}

TEST_F(Service, AHandsetThatIsOffStartsNothingUntilItIsOnAgain) {
    Book(L"RunAppAtTime-0000000001", L"off", ten_);
    handset::SetStateString(L"PowerState", L"shutdown");
    SetClock(ten_);
    LookOnce();
    EXPECT_TRUE(console_.lines.empty());
    SetPowerState(L"on");
    SetClock(ten_ + 10 * kMinute_s);
    LookOnce();
    EXPECT_TRUE(WaitForStart("off"));
}

TEST_F(Service, NonsenseInTheStoreStartsNothingAndHoldsNothingUp) {
    const std::wstring key = L"HKLM\\System\\Notifications\\";
    Book(L"A", L"no-start", ten_);
    SetDeviceString(key + L"A", handset::kBookingStart, L"soon");
    Book(L"B", L"no-repeat", ten_);
    SetDeviceDword(key + L"B", handset::kBookingRepeat, 77);
    Book(L"C", L"number", ten_);
    SetDeviceDword(key + L"C", handset::kBookingStart, 12);
    CreateDeviceKey(key + L"D");
    Book(L"E", L"started-is-nonsense", ten_);
    SetDeviceString(key + L"E", handset::kBookingStarted, L"yesterday");
    Book(L"F", L"good", ten_);
    SetClock(ten_);
    LookOnce();
    EXPECT_TRUE(WaitForStart("good"));
    EXPECT_TRUE(WaitForStart("started-is-nonsense"));
    EXPECT_EQ(console_.lines.size(), 2u);
    EXPECT_EQ(ReadBookings().unreadable, (std::vector<std::wstring>{L"A", L"B", L"C", L"D"}));
}

TEST_F(Service, AProgramThatIsNotThereIsNamedAndNotTriedAgain) {
    Book(L"RunAppAtTime-0000000001", L"x", ten_);
    SetDeviceString(L"HKLM\\System\\Notifications\\RunAppAtTime-0000000001", handset::kBookingProgram,
                    L"\\Windows\\Gone.exe");
    SetClock(ten_);
    LookOnce();
    EXPECT_NE(console_.Said().find(L"not started: there is no "), std::wstring::npos);
    LookOnce();
    EXPECT_TRUE(console_.lines.empty());
}

TEST_F(Service, WhatIsNotOfTheDeviceIsNotStarted) {
    // A program that is there on the host, above the device's root and by the host's own names.
    const std::wstring outside = home_ + L"\\programs\\UI.exe";
    ASSERT_NE(GetFileAttributesW(outside.c_str()), INVALID_FILE_ATTRIBUTES);
    for (const std::wstring& program :
         {std::wstring(L"\\..\\programs\\UI.exe"), std::wstring(L"\\Windows\\..\\..\\programs\\UI.exe"),
          outside, L"\\\\?\\" + outside}) {
        DeleteDeviceKey(L"HKLM\\System\\Notifications");
        Book(L"RunAppAtTime-0000000001", L"outside", ten_);
        SetDeviceString(L"HKLM\\System\\Notifications\\RunAppAtTime-0000000001", handset::kBookingProgram,
                        program);
        SetClock(ten_);
        LookOnce();
        EXPECT_NE(console_.Said().find(L"not started: there is no "), std::wstring::npos) << Utf8(program);
    }
    EXPECT_EQ(GetFileAttributesW((outside + L".log").c_str()), INVALID_FILE_ATTRIBUTES);
}

// A program of its own name on a card: the path alone decides.
TEST_F(Service, AProgramOnACardThatIsOutIsNotStarted) {
    CopyFileW(Device(L"\\Windows\\UI.exe").c_str(), Device(L"\\Storage Card\\UI.exe").c_str(), FALSE);
    Book(L"RunAppAtTime-0000000001", L"card", ten_);
    SetDeviceString(L"HKLM\\System\\Notifications\\RunAppAtTime-0000000001", handset::kBookingProgram,
                    L"\\Windows\\..\\Storage Card\\UI.exe");
    InsertCard(false);
    SetClock(ten_);
    LookOnce();
    EXPECT_NE(console_.Said().find(L"not started: there is no "), std::wstring::npos);
    InsertCard(true);
    SetClock(ten_ + kWeek_s);
    LookOnce();
    EXPECT_NE(console_.Said().find(L"started, process "), std::wstring::npos) << Utf8(console_.Said());
}

TEST_F(Service, HearsOfBookingsAfterTheirKeyWasDeletedAndCameAgain) {
    const CBackgroundService service(console_);
    Book(L"RunAppAtTime-0000000001", L"before", LocalNow() + 1);
    ASSERT_TRUE(WaitForStart("before"));
    for (const char* word : {"first", "second"}) {
        ASSERT_TRUE(DeleteDeviceKey(L"HKLM\\System\\Notifications"));
        Book(L"RunAppAtTime-0000000002", Wide(word), LocalNow() + 1);
        ASSERT_TRUE(WaitForStart(word)) << word;
    }
}

TEST_F(Service, ATimeThatWasServedIsNotServedAgainWhenTheClockIsSetBackBetweenTwoOfThem) {
    Book(L"RunAppAtTime-0000000001", L"between", ten_);
    for (const handset::LocalSeconds time : {ten_, ten_ + kWeek_s}) {
        SetClock(time);
        LookOnce();
        ASSERT_EQ(console_.lines.size(), 1u);
    }
    SetClock(ten_ + kMinute_s);
    LookOnce();
    EXPECT_TRUE(console_.lines.empty());
    EXPECT_EQ(ReadBooking(L"RunAppAtTime-0000000001")->started, ten_ + kWeek_s);
}

TEST_F(Service, RadiosThatAreDueTogetherAreStartedOneAfterTheOther) {
    for (int i = 1; i <= 3; ++i)
        BookLine(L"RunAppAtTime-000000000" + std::to_wstring(i), L"slow " + std::to_wstring(i), ten_);
    const HandsetProcess process(L"service");
    SetClock(ten_);
    {
        const CBackgroundService one(console_), two(console_);
        ASSERT_TRUE(WaitForNote("window [slow 3]\n")) << Notes();
    }
    // Each began when the one before had its window, and in the order in which they were booked.
    EXPECT_EQ(Beginnings(),
              "command line [slow 1]\nwindow [slow 1]\ncommand line [slow 2]\nwindow [slow 2]\n"
              "command line [slow 3]\nwindow [slow 3]\n");
    EXPECT_EQ(RadioProcesses().size(), 3u);
    EXPECT_EQ(Run({L"stop"}), kDone);
    EXPECT_TRUE(RadioProcesses().empty());
}

TEST_F(Service, ABookingThatIsDueWhenThePhoneIsOpenedWaitsForThePhonesOwnRadio) {
    Book(L"RunAppAtTime-0000000001", L"booked", ten_);
    SetClock(ten_);
    const RadioStart own = LaunchRadio(L"slow own");
    ASSERT_TRUE(own.process) << Utf8(own.fault);
    const CBackgroundService service(console_);
    ASSERT_TRUE(WaitForStart("booked"));
    EXPECT_EQ(Beginnings(), "command line [slow own]\nwindow [slow own]\ncommand line [exit 0 booked]\n");
}

TEST_F(Service, ABookingThatIsTakenBackIsNotStarted) {
    Book(L"RunAppAtTime-0000000001", L"gone", ten_);
    const CBackgroundService service(console_);
    ASSERT_TRUE(WaitUntil([] { return ServiceRuns(); }, kDeadline_ms));
    ASSERT_TRUE(DeleteDeviceKey(L"HKLM\\System\\Notifications\\RunAppAtTime-0000000001"));
    Book(L"RunAppAtTime-0000000002", L"there", ten_);
    SetClock(ten_);
    EXPECT_TRUE(WaitForStart("there"));
    EXPECT_EQ(StartsOf("gone"), 0);
}

TEST_F(Service, MidnightIsATimeAsAnyOther) {
    const handset::LocalSeconds midnight = ten_ + 14 * kHour_s;
    Book(L"RunAppAtTime-0000000001", L"midnight", midnight);
    Book(L"RunAppAtTime-0000000002", L"before", midnight - kMinute_s);
    ASSERT_TRUE(handset::SetClockRate(60));
    SetClock(midnight - 2 * kMinute_s);
    const CBackgroundService service(console_);
    EXPECT_TRUE(WaitForStart("midnight"));
    EXPECT_EQ(StartsOf("before"), 1);
}

// Central Europe goes from 02:00 to 03:00 in March and from 03:00 back to 02:00 in October.
constexpr wchar_t kCentralEurope[] = L"W. Europe Standard Time";

TEST_F(Service, TheLastSundayOfMarchStartsWhatIsBookedForTheHourThatIsNotThere) {
    handset::SetStateString(L"TimeZone", kCentralEurope);
    Book(L"RunAppAtTime-0000000001", L"gap", *handset::ReadLocalTime(L"2027-03-28 02:30:00"));
    SetClock(*handset::ReadLocalTime(L"2027-03-28 01:59:57"));
    const CBackgroundService service(console_);
    ASSERT_TRUE(WaitForStart("gap"));
    EXPECT_EQ(handset::LocalTimeText(LocalNow()).substr(0, 14), L"2027-03-28 03:");
    EXPECT_EQ(StartsOf("gap"), 1);
}

TEST_F(Service, TheLastSundayOfOctoberStartsWhatIsBookedForTheHourThatComesTwiceOnce) {
    handset::SetStateString(L"TimeZone", kCentralEurope);
    ASSERT_TRUE(handset::SetClockRate(600));
    Book(L"RunAppAtTime-0000000001", L"twice", *handset::ReadLocalTime(L"2026-10-25 02:30:00"));
    Book(L"RunAppAtTime-0000000002", L"after", *handset::ReadLocalTime(L"2026-10-25 03:10:00"));
    SetClock(*handset::ReadLocalTime(L"2026-10-25 01:50:00"));
    const std::uint64_t begun = Shown();
    const CBackgroundService service(console_);
    ASSERT_TRUE(WaitForStart("after"));
    EXPECT_EQ(StartsOf("twice"), 1);
    // From 01:50 to 03:10 it was 140 minutes, not 80.
    constexpr std::uint64_t kMinute_100ns = 600000000;
    EXPECT_GE((Shown() - begun) / kMinute_100ns, 139u);
}

}  // namespace
}  // namespace panel
