// What is booked, as the command line shows it, and the service as it is run and ended there.
#include "handset/controls/device_registry.h"
#include "handset/controls/handset_clock.h"
#include "handset/service/booking_service.h"
#include "tests/unit/handset/booked_handset.h"

namespace panel {
namespace {

using ScheduleVerb = BookedHandset;

constexpr wchar_t kNoService[] = L"no service runs: nothing will be started until one does\n";

TEST_F(ScheduleVerb, SaysThatNothingIsBooked) {
    EXPECT_EQ(Run({L"schedule"}), kDone);
    EXPECT_NE(console_.Said().find(L"nothing is booked\n"), std::wstring::npos);
}

TEST_F(ScheduleVerb, ListsTheNextStartOfEachBookingInTheirOrder) {
    Book(L"RunAppAtTime-0000000001", L"tuesday", ten_ + kDay_s);
    Book(L"RunAppAtTime-0000000002", L"monday", ten_);
    Book(L"RunAppAtTime-0000000003", L"over", ten_ - kDay_s, handset::Repeat::kOnce);
    Book(L"RunAppAtTime-0000000004", L"due", ten_ - kHour_s - 5 * kMinute_s, handset::Repeat::kEveryDay);
    EXPECT_EQ(Run({L"schedule"}), kDone);
    ASSERT_EQ(console_.lines.size(), 6u);
    EXPECT_EQ(console_.lines[0].substr(0, 25), L"now  Mon 2026-11-23 09:00");
    EXPECT_EQ(console_.lines[1],
              L"next Mon 2026-11-23 08:55:00 (due now), every day  \\Windows\\UI.exe exit 0 due  "
              L"RunAppAtTime-0000000004, not started yet");
    EXPECT_EQ(console_.lines[2],
              L"next Mon 2026-11-23 10:00:00, every week  \\Windows\\UI.exe exit 0 monday  "
              L"RunAppAtTime-0000000002, not started yet");
    EXPECT_EQ(console_.lines[3],
              L"next Tue 2026-11-24 10:00:00, every week  \\Windows\\UI.exe exit 0 tuesday  "
              L"RunAppAtTime-0000000001, not started yet");
    EXPECT_EQ(
        console_.lines[4],
        L"next never again, once  \\Windows\\UI.exe exit 0 over  RunAppAtTime-0000000003, not started yet");
    EXPECT_EQ(console_.lines[5] + L"\n", kNoService);
}

TEST_F(ScheduleVerb, AfterAStartItIsAWeekLater) {
    Book(L"RunAppAtTime-0000000001", L"monday", ten_);
    SetClock(ten_);
    LookOnce();
    EXPECT_EQ(Run({L"schedule"}), kDone);
    EXPECT_NE(
        console_.Said().find(L"next Mon 2026-11-30 10:00:00, every week  \\Windows\\UI.exe exit 0 monday  "
                             L"RunAppAtTime-0000000001, last started for Mon 2026-11-23 10:00:00\n"),
        std::wstring::npos)
        << testing::PrintToString(console_.lines);
}

TEST_F(ScheduleVerb, NamesWhatCannotBeRead) {
    CreateDeviceKey(L"HKLM\\System\\Notifications\\nonsense");
    EXPECT_EQ(Run({L"schedule"}), kDone);
    EXPECT_NE(console_.Said().find(L"next never  nonsense cannot be read as a booking\n"),
              std::wstring::npos);
}

TEST_F(ScheduleVerb, ListsHundredsOfBookings) {
    for (int i = 0; i < 300; ++i) {
        Book(handset::BookingName(static_cast<std::uint32_t>(i)), std::to_wstring(i), ten_ + i * kMinute_s);
    }
    EXPECT_EQ(Run({L"schedule"}), kDone);
    EXPECT_EQ(console_.lines.size(), 302u);
    SetClock(ten_);
    LookOnce();
    EXPECT_EQ(console_.lines.size(), 1u);
    EXPECT_TRUE(WaitForStart("0"));
}

TEST_F(ScheduleVerb, WantsNoArguments) {
    EXPECT_EQ(Run({L"schedule", L"now"}), kBadUsage);
}

TEST_F(ScheduleVerb, SeesARunningService) {
    const CBackgroundService service(console_);
    ASSERT_TRUE(WaitUntil([] { return ServiceRuns(); }, kDeadline_ms));
    EXPECT_EQ(Run({L"schedule"}), kDone);
    EXPECT_EQ(console_.Said().find(kNoService), std::wstring::npos);
    EXPECT_EQ(Run({L"status"}), kDone);
    EXPECT_NE(console_.Said().find(L"Service       running\n"), std::wstring::npos);
}

TEST_F(ScheduleVerb, TheServiceRunsUntilItIsToldToStop) {
    HandsetProcess service(L"service");
    ASSERT_TRUE(WaitUntil([] { return ServiceRuns(); }, kDeadline_ms));
    EXPECT_EQ(Run({L"service"}), kDone);
    EXPECT_EQ(console_.Said(), L"the service runs already\n");
    EXPECT_EQ(Run({L"service", L"stop"}), kDone);
    EXPECT_EQ(service.Wait(), kDone);
    EXPECT_FALSE(ServiceRuns());
    EXPECT_EQ(Run({L"service", L"stop"}), kDone);
}

TEST_F(ScheduleVerb, TheServiceMayBeKeptForWhatIsBooked) {
    HandsetProcess service(L"service");
    ASSERT_TRUE(WaitUntil([] { return ServiceRuns(); }, kDeadline_ms));
    Book(L"RunAppAtTime-0000000001", L"x", ten_);
    EXPECT_EQ(Run({L"service", L"stop", L"--unless-booked"}), kDone);
    EXPECT_EQ(console_.Said(), L"programs are booked; the service goes on\n");
    EXPECT_TRUE(ServiceRuns());
    DeleteDeviceKey(L"HKLM\\System\\Notifications\\RunAppAtTime-0000000001");
    EXPECT_EQ(Run({L"service", L"stop", L"--unless-booked"}), kDone);
    EXPECT_EQ(service.Wait(), kDone);
}

TEST_F(ScheduleVerb, TheServiceTakesNoOtherWords) {
    EXPECT_EQ(Run({L"service", L"go"}), kBadUsage);
    EXPECT_EQ(Run({L"service", L"stop", L"now"}), kBadUsage);
}

TEST_F(ScheduleVerb, TheClockCanBeSetToALocalTime) {
    EXPECT_EQ(Run({L"clock", L"2027-01-31", L"23:59"}), kDone);
    EXPECT_EQ(handset::LocalTimeText(LocalNow()).substr(0, 16), L"2027-01-31 23:59");
    EXPECT_EQ(Run({L"clock", L"2027-01-31", L"08:07:06"}), kDone);
    EXPECT_EQ(handset::LocalTimeText(LocalNow()).substr(0, 16), L"2027-01-31 08:07");
    EXPECT_EQ(Run({L"clock", L"2027-02-31", L"08:07"}), kBadUsage);
    EXPECT_NE(console_.Complained().find(L"a date and a time"), std::wstring::npos);
}

}  // namespace
}  // namespace panel
