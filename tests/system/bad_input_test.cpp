// Faults from outside: what the radio says, and that it goes on or ends as it should.
#include "tests/system/radio_test.h"

namespace {

using test::Radio;
using test::WaitFor;
using testing::HasSubstr;

class BadInput : public test::RadioTest {};

TEST_F(BadInput, ADeviceWhoseInitializeFailsStillLetsTheWindowOpenAfterOneErrorBox) {
    handset.SetState(L"Fault", L"initialize");
    Radio radio(handset);
    const HWND box = radio.WaitForBox(L"Error");
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(Radio::BoxText(box), L"FM Device Initial Error");
    Radio::Answer(box, IDOK);
    radio.WaitUntilShown();
    EXPECT_EQ(radio.Box(nullptr), nullptr);
    EXPECT_EQ(Count(handset.TunerCalls(), "Initialize -> 0x80004005"), 1);
}

TEST_F(BadInput, ADeviceThatCannotBeCreatedEndsTheRadioWithoutAMessage) {
    handset.SetState(L"Fault", L"create");
    Radio radio(handset);
    ASSERT_TRUE(radio.WaitUntilGone());
    EXPECT_EQ(radio.ExitCode(), 0u);
    EXPECT_EQ(Count(handset.TunerCalls(), "Initialize"), 0);
}

TEST_F(BadInput, AMissingBandFileIsNamedAndTheRadioPlaysNoise) {
    NEEDS_THE_SIMULATED_BAND("on the ether the radio reads no band file");
    DeleteFileW(handset.DevicePath(L"\\Windows\\band.ini").c_str());
    Radio radio(handset);
    radio.WaitUntilShown();
    EXPECT_TRUE(WaitForTrace("band.ini"));
    EXPECT_TRUE(radio.Runs());
}

TEST_F(BadInput, ABrokenBandLineIsNamedWithFileLineAndFaultAndTheRestOfTheBandWorks) {
    NEEDS_THE_SIMULATED_BAND("on the ether the radio reads no band file");
    handset.WriteBand("[band]\nwrap=1\n[9850]\nlevel=abc\n[10100]\nlevel=50\nps=FINE\n");
    Radio radio(handset);
    radio.WaitUntilShown();
    EXPECT_TRUE(WaitForTrace("band.ini:4: "));
    // The station of the broken line stays, at the level of one that says none.
    radio.Press(130, 250);  // seek up, again and again while it is held
    EXPECT_TRUE(WaitForCall("GetChannel -> 0: 9850"));
    EXPECT_TRUE(WaitForCall("GetChannel -> 0: 10100"));
    radio.Lift(130, 250);
}

TEST_F(BadInput, AnUnknownControlIdIsIgnored) {
    Radio radio(handset);
    radio.WaitUntilShown();
    const std::size_t before = handset.TunerCalls().size();
    EXPECT_EQ(radio.Send(0x8003, 999, 0), 0);
    EXPECT_EQ(radio.Send(0x8002, 999, 0), 0);
    EXPECT_EQ(radio.Send(0x8005, 999, 0), 0);
    EXPECT_TRUE(TunerCommands(before).empty());
    EXPECT_TRUE(radio.Runs());
}

TEST_F(BadInput, AnOutOfBandEntryNeverReachesTheTuner) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Type("1085");
    ASSERT_TRUE(WaitForTrace("FM: 3:5--"));
    EXPECT_EQ(Count(handset.TunerCalls(), "SetChannel"), 0);
}

}  // namespace
