// The stylus on the main screen: buttons, the slider and the toggles reach the tuner.
#include "resources/resource_ids.h"
#include "tests/system/radio_test.h"

namespace {

using test::Radio;
using test::WaitFor;
using testing::ElementsAre;
using testing::HasSubstr;

class Stylus : public test::RadioTest {};

TEST_F(Stylus, HoldingSeekUpSeeksOnEveryTickAndSlidingOffEndsIt) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Press(130, 250);
    const auto found = [this] {
        const auto calls = handset.TunerCalls();
        return std::count(calls.begin(), calls.end(), "SeekNext -> 0");
    };
    EXPECT_TRUE(WaitFor([&] { return found() >= 3; }));
    radio.Lift(130, 250);
    EXPECT_TRUE(WaitForCall("GetChannel -> 0: 10790"));
}

TEST_F(Stylus, SeekDownGoesTheOtherWay) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Press(100, 250);
    EXPECT_TRUE(WaitForCall("SeekPrev -> 0"));
    radio.Lift(100, 250);
}

TEST_F(Stylus, SteppingDownFrom8750AsksTheDeviceFor8740) {
    Radio radio(handset, L"-Rec -Channel 8750");
    radio.WaitUntilShown();
    radio.Press(60, 250);
    EXPECT_TRUE(WaitFor([&] { return Count(handset.TunerCalls(), "SetChannel 8740 -> ") >= 1; }));
    radio.Lift(60, 250);
}

TEST_F(Stylus, SteppingUpTunes100kHzHigher) {
    Radio radio(handset, L"-Rec -Channel 9850");
    radio.WaitUntilShown();
    radio.Press(170, 250);
    EXPECT_TRUE(WaitForCall("SetChannel 9860 -> 0"));
    radio.Lift(170, 250);
}

TEST_F(Stylus, TheOutputSelectorSwitchesToTheLoudspeakerAndBack) {
    Radio radio(handset);
    radio.WaitUntilShown();
    const std::size_t before = handset.TunerCalls().size();
    radio.Tap(210, 250);
    ASSERT_TRUE(WaitForCall("SetSpeaker 1 -> 0"));
    EXPECT_THAT(TunerCommands(before), ElementsAre("SetBTAudio 0 -> 0", "SetSpeaker 1 -> 0"));
    radio.Tap(210, 250);
    ASSERT_TRUE(WaitFor([&] { return TunerCommands(before).size() == 4; }));
    EXPECT_THAT(TunerCommands(before), ElementsAre("SetBTAudio 0 -> 0", "SetSpeaker 1 -> 0",
                                                   "SetBTAudio 0 -> 0", "SetSpeaker 0 -> 0"));
    EXPECT_THAT(handset.Trace(), HasSubstr("FM: SpeakerOn = 1\n"));
}

TEST_F(Stylus, MutingWhileTheLoudspeakerIsOnSwitchesItOffBeforeAndOnAgainAfter) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Tap(210, 250);
    ASSERT_TRUE(WaitForCall("SetSpeaker 1 -> 0"));
    const std::size_t before = handset.TunerCalls().size();
    radio.Tap(24, 222);
    ASSERT_TRUE(WaitFor([&] { return TunerCommands(before).size() >= 3; }));
    EXPECT_THAT(TunerCommands(before),
                ElementsAre("SetSpeaker 0 -> 0", "SetMute 1 -> 0", "SetSpeaker 1 -> 0"));
}

TEST_F(Stylus, DraggingTheThumbSetsTheVolumeUpToItsEnds) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Press(50, 220);
    radio.MoveTo(150, 220);
    ASSERT_TRUE(WaitForCall("SetVolume 100 -> 0"));
    EXPECT_THAT(handset.Trace(), HasSubstr("FM: User SetVolume to 100\n"));
    radio.MoveTo(0, 220);
    EXPECT_TRUE(WaitForCall("SetVolume 0 -> 0"));
    radio.Lift(0, 220);
    EXPECT_EQ(radio.Send(0x8005, SKIN_VOLUME), 0);
}

TEST_F(Stylus, TappingAPlainButtonReturnsItsIdOnRelease) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Send(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(170, 222));
    EXPECT_EQ(radio.Send(WM_LBUTTONUP, 0, MAKELPARAM(170, 222)), 0x200E0);
}

}  // namespace
