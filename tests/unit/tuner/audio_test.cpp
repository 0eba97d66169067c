// The wrappers of the loudspeaker, the mute and the mute by volume.
#include "tuner/audio.h"

#include "tests/unit/tuner/tuner_test.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Audio : public TunerTest {};

TEST_F(Audio, TheSpeakerWrapperTracesTheOldStateAndRemembersTheNewOne) {
    EXPECT_EQ(test::TraceOf([] { SpeakerOnOff(TRUE); }), "FM: SpeakerOn = 0\n");
    EXPECT_EQ(g_app.SpeakerOn, 1);
    EXPECT_EQ(test::TraceOf([] { SpeakerOnOff(FALSE); }), "FM: SpeakerOn = 1\n");
    EXPECT_EQ(g_app.SpeakerOn, 0);
    EXPECT_THAT(device.Calls(), ElementsAre("SetSpeaker 1", "SetSpeaker 0"));
}

TEST_F(Audio, MutingWithTheLoudspeakerOffChangesTheMuteAlone) {
    EXPECT_EQ(test::TraceOf([] { MuteOnOff(TRUE); }), "");
    MuteOnOff(FALSE);
    EXPECT_THAT(device.Calls(), ElementsAre("SetMute 1", "SetMute 0"));
}

TEST_F(Audio, MutingWhileTheLoudspeakerIsOnSwitchesTheLoudspeakerOffBeforeAndOnAgainAfterWithPausesOf10ms) {
    g_app.SpeakerOn = 1;
    const auto start = std::chrono::steady_clock::now();
    const std::string trace = test::TraceOf([] { MuteOnOff(TRUE); });
    EXPECT_EQ(trace, "FM: SpeakerOn = 1\nFM: SpeakerOn = 0\n");
    EXPECT_THAT(device.Calls(), ElementsAre("SetSpeaker 0", "SetMute 1", "SetSpeaker 1"));
    EXPECT_EQ(g_app.SpeakerOn, 1);

    const std::vector<test::FakeFMDevice::Call> calls = device.TimedCalls();
    constexpr std::chrono::milliseconds kLeast(9);  // 10 less the clocks' grain
    EXPECT_GE(calls[0].at - start, kLeast);
    EXPECT_GE(calls[1].at - calls[0].at, kLeast);
    EXPECT_GE(calls[2].at - calls[1].at, kLeast);
}

TEST_F(Audio, TheMuteByVolumeRemembersTheVolumeAndGoesBackToIt) {
    device.volume = 37;
    MuteByVolume(TRUE);
    EXPECT_EQ(device.volume, 0U);
    EXPECT_EQ(g_app.dwSavedVolume, 37U);
    MuteByVolume(FALSE);
    EXPECT_EQ(device.volume, 37U);
    EXPECT_THAT(device.Calls(), ElementsAre("GetVolume", "SetVolume 0", "SetVolume 37"));
}

TEST_F(Audio, TheMuteByVolumeGoesBackToNothingWhenItRememberedNothing) {
    MuteByVolume(FALSE);
    EXPECT_THAT(device.Calls(), ElementsAre("SetVolume 0"));
}

TEST_F(Audio, TheWrappersLookAtNoResultOfTheDevice) {
    device.results = {{"SetSpeaker", E_FAIL}, {"SetMute", E_FAIL}, {"SetVolume", E_FAIL}};
    SpeakerOnOff(TRUE);
    MuteOnOff(TRUE);
    MuteByVolume(TRUE);
    EXPECT_EQ(g_app.SpeakerOn, 1);
    EXPECT_THAT(device.Calls(), ElementsAre("SetSpeaker 1", "SetSpeaker 0", "SetMute 1", "SetSpeaker 1",
                                            "GetVolume", "SetVolume 0"));
}

TEST_F(Audio, WithoutADeviceTheWrappersDoAndTraceNothing) {
    g_app.pFMDevice = nullptr;
    g_app.SpeakerOn = 1;
    const std::string trace = test::TraceOf([] {
        SpeakerOnOff(FALSE);
        MuteOnOff(TRUE);
        MuteByVolume(TRUE);
        MuteByVolume(FALSE);
    });
    EXPECT_EQ(trace, "");
    EXPECT_EQ(g_app.SpeakerOn, 1);
    EXPECT_THAT(device.Calls(), IsEmpty());
}

}  // namespace
