// A recording that is booked by hand, when a radio is in its way or the service is not there.
#include "tests/system/booked_radio.h"

namespace {

using test::Handset;
using test::Radio;
using test::ServiceProcess;
using test::WaitFor;
using testing::HasSubstr;

// One minute, from 09:58, today's day of the week.
test::HandBooking OneMinute(const char* channel) {
    return {channel, {}, 1, 2};
}

using ScheduledRecording = test::BookedRadioTest;

TEST_F(ScheduledRecording, TakesThePlaceOfARadioThatIsRunningWithItsDialogOpen) {
    const ServiceProcess service(handset);
    Radio radio(handset);
    radio.WaitUntilShown();
    BookByHand(OpenSchedule(radio), OneMinute("107.9"));
    Handset(L"clock 2026-11-23 09:57:58");
    ASSERT_TRUE(radio.WaitUntilGone());
    EXPECT_TRUE(WaitForCall("SetChannel 10790 -> 0"));
    EXPECT_THAT(handset.Trace(), HasSubstr("FM is exist.szWindowClass : Kora"));
    EXPECT_EQ(Count(handset.TunerCalls(), "Initialize"), 2);
}

TEST_F(ScheduledRecording, StartsOnceThoughTheServiceIsKilledBeforeAndAfter) {
    {
        ServiceProcess service(handset);
        Radio radio(handset);
        radio.WaitUntilShown();
        BookByHand(OpenSchedule(radio), OneMinute("98.5"));
        CloseRadio(radio);
        service.Kill();
    }
    {
        ServiceProcess service(handset);
        Handset(L"clock 2026-11-23 09:57:58");
        ASSERT_TRUE(WaitForTrace("Channel: 9850\r\n"));
        service.Kill();
    }
    const ServiceProcess service(handset);
    ASSERT_TRUE(
        WaitFor([] { return Handset(L"status").find("Service       running") != std::string::npos; }));
    // One that came later shows that the service has looked.
    Handset(L"clock 2026-11-30 09:57:59");
    ASSERT_TRUE(WaitForTraces("Channel: 9850\r\n", 2));
    EXPECT_EQ(Traced("Channel: 9850\r\n"), 2);
}

}  // namespace
