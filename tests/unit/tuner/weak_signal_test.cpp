// The mute while reception is weak.
#include "tuner/weak_signal.h"

#include "tests/unit/tuner/monitor_test.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class WeakSignal : public MonitorTest {
  protected:
    WeakSignal() {
        settings.Set(kEnableMute, 1);
        device.volume = 70;
    }
    void Level(std::int32_t level) { device.signal = g_app.lLastSignal = level; }
    std::vector<std::string> VolumeCalls() const {
        std::vector<std::string> calls;
        for (const std::string& call : device.Calls()) {
            if (call.find("Volume") != std::string::npos) calls.push_back(call);
        }
        return calls;
    }
};

TEST_F(WeakSignal, ALevelOfExactly15Mutes) {
    Level(15);
    EXPECT_EQ(TraceOfRound(), "FM: === Mute (for low signal)\r\n");
    EXPECT_THAT(VolumeCalls(), ElementsAre("GetVolume", "SetVolume 0"));
    EXPECT_EQ(LastShown(TEXT_LOW_SIGNAL), L"Weak        ");
    EXPECT_EQ(g_app.bLowSignalMute, 1);
    EXPECT_EQ(g_app.dwSavedVolume, 70u);
}

TEST_F(WeakSignal, StayingAt15ForManyRoundsNeitherMutesAgainNorChangesTheSavedVolume) {
    Level(15);
    Round();
    device.ForgetCalls();
    ForgetShown();
    EXPECT_EQ(test::TraceOf([this] { Rounds(20); }), "");
    EXPECT_THAT(VolumeCalls(), IsEmpty());
    EXPECT_EQ(LastShown(TEXT_LOW_SIGNAL), L"Weak        ") << "kept on the screen";
    EXPECT_EQ(g_app.dwSavedVolume, 70u);
}

TEST_F(WeakSignal, ALevelOf16AfterAMuteUnmutesClearsTheNoticeAndRestoresTheVolume) {
    Level(15);
    Round();
    device.ForgetCalls();
    Level(16);
    EXPECT_EQ(TraceOfRound(), "FM: === UN-Mute (for normal signal)\r\n");
    EXPECT_THAT(VolumeCalls(), ElementsAre("SetVolume 70"));
    EXPECT_EQ(LastShown(TEXT_LOW_SIGNAL), L"");
    EXPECT_EQ(g_app.bLowSignalMute, 0);
}

TEST_F(WeakSignal, ANormalSignalWithoutAMuteChangesNothing) {
    Level(16);
    EXPECT_EQ(test::TraceOf([this] { Rounds(3); }), "");
    EXPECT_THAT(VolumeCalls(), IsEmpty());
}

TEST_F(WeakSignal, WithTheSettingOffAWeakSignalDoesNotMute) {
    settings.Set(kEnableMute, 0);
    Level(0);
    EXPECT_EQ(TraceOfRound(), "");
    EXPECT_THAT(VolumeCalls(), IsEmpty());
}

TEST_F(WeakSignal, SwitchedOffWhileMutedTheRadioStaysMutedUntilTheSettingIsOnAgainAndTheSignalNormal) {
    Level(5);
    Round();
    settings.Set(kEnableMute, 0);
    Level(60);
    Rounds(3);
    EXPECT_EQ(device.volume, 0u);
    EXPECT_EQ(g_app.bLowSignalMute, 1);
    settings.Set(kEnableMute, 1);
    Round();
    EXPECT_EQ(device.volume, 70u);
    EXPECT_EQ(g_app.bLowSignalMute, 0);
}

TEST_F(WeakSignal, EachFallAndRiseOfTheSignalIsOneMuteAndOneUnmute) {
    for (int i = 0; i < 3; ++i) {
        Level(14);
        Rounds(2);
        Level(30);
        Rounds(2);
    }
    EXPECT_THAT(VolumeCalls(),
                ElementsAre("GetVolume", "SetVolume 0", "SetVolume 70", "GetVolume", "SetVolume 0",
                            "SetVolume 70", "GetVolume", "SetVolume 0", "SetVolume 70"));
}

}  // namespace
