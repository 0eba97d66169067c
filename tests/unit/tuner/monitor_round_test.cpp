// One round of the monitor: its order, the signal, the stereo mark and the look at the card.
#include "tests/unit/tuner/monitor_test.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MonitorRound : public MonitorTest {};

TEST_F(MonitorRound, WithEverySettingOffItAsksForTheSignalAndTheStereoPilotAlone) {
    Round();
    EXPECT_THAT(device.Calls(), ElementsAre("GetSignal", "GetStereo"));
    EXPECT_THAT(Shown(), ElementsAre(ShownText{TEXT_STEREO, L"Stereo"}));
}

TEST_F(MonitorRound, WithEverySettingOnAndAWeakSignalItGoesThroughItsStepsInOrder) {
    for (const WCHAR* setting : {kEnableMute, kEnableRDSPSPTY, kEnableAFAutoSwitch}) settings.Set(setting, 1);
    device.signal = 10;
    device.volume = 40;
    device.alternatives = {L"98.5"};
    Round();
    EXPECT_THAT(device.Calls(), ElementsAre("GetSignal", "GetVolume", "SetVolume 0", "GetStereo",
                                            "GetRDSData", "GetAFCount", "SetMute 1", "GetAFItem 0",
                                            "SetChannel 9850", "GetSignal", "SetChannel 9850", "SetMute 0"));
}

TEST_F(MonitorRound, WithoutADeviceNothingIsDone) {
    g_app.pFMDevice = nullptr;
    EXPECT_EQ(TraceOfRound(), "");
    EXPECT_THAT(Shown(), IsEmpty());
}

TEST_F(MonitorRound, ASignalThatDiffersFromTheLastOneIsTracedOnce) {
    g_app.lLastSignal = 0;
    device.signal = 45;
    EXPECT_EQ(TraceOfRound(), "FM: Signal = 45 \n");
    EXPECT_EQ(g_app.lLastSignal, 45);
    EXPECT_EQ(TraceOfRound(), "");
    device.signal = -3;
    EXPECT_EQ(TraceOfRound(), "FM: Signal = -3 \n");
}

TEST_F(MonitorRound, AFailingSignalQueryCountsAsLevel0) {
    device.results["GetSignal"] = E_FAIL;
    EXPECT_EQ(TraceOfRound(), "FM: Signal = 0 \n");
}

TEST_F(MonitorRound, StereoIsShownForAnswer0AndClearedForAnyOther) {
    device.stereo = true;
    Round();
    EXPECT_EQ(LastShown(TEXT_STEREO), L"Stereo");
    device.stereo = false;
    Round();
    EXPECT_EQ(LastShown(TEXT_STEREO), L"");
    device.results["GetStereo"] = E_FAIL;
    ForgetShown();
    Round();
    EXPECT_EQ(LastShown(TEXT_STEREO), L"");
}

TEST_F(MonitorRound, WithEverySettingOnItReadsTheRegistryFourTimes) {
    for (const WCHAR* setting : {kEnableMute, kEnableRDSPSPTY, kEnableAFAutoSwitch, kSaveFileType}) {
        settings.Set(setting, 1);
    }
    g_app.bRecordingActive = 1;
    const int before = RegistryReads();
    Round();
    EXPECT_EQ(RegistryReads() - before, 4);
}

TEST_F(MonitorRound, ASettingThatIsChangedTakesEffectInTheNextRound) {
    Round();
    EXPECT_THAT(device.Calls(), ElementsAre("GetSignal", "GetStereo"));
    settings.Set(kEnableRDSPSPTY, 1);
    device.ForgetCalls();
    Round();
    EXPECT_THAT(device.Calls(), ElementsAre("GetSignal", "GetStereo", "GetRDSData"));
}

class MonitorCard : public MonitorTest {
  protected:
    MonitorCard() {
        settings.Set(kSaveFileType, 1);
        g_app.bRecordingActive = 1;
        g_stops.clear();
        m_previous = reinterpret_cast<WNDPROC>(
            SetWindowLongW(window, GWL_WNDPROC, reinterpret_cast<LONG_PTR>(NoteStops)));
    }
    ~MonitorCard() override { SetWindowLongW(window, GWL_WNDPROC, reinterpret_cast<LONG_PTR>(m_previous)); }
    // lParam of each request to stop the recording, sent and handled.
    static std::vector<LPARAM> g_stops;

  private:
    static LRESULT CALLBACK NoteStops(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message != WM_SKIN_CLICK || wParam != SKIN_STOP_RECORD) {
            return DefWindowProcW(window, message, wParam, lParam);
        }
        g_stops.push_back(lParam);
        return 0;
    }
    WNDPROC m_previous;
};
std::vector<LPARAM> MonitorCard::g_stops;

TEST_F(MonitorCard, ACardThatIsRemovedWhileRecordingToItStopsTheRecordingWithinARound) {
    settings.PutCardIn(false);
    EXPECT_EQ(TraceOfRound(), "FM: *** SD Card Removed while Recording, Stop Recording!\n");
    EXPECT_THAT(g_stops, ElementsAre(0));
}

TEST_F(MonitorCard, ACardThatIsInStopsNothing) {
    EXPECT_EQ(TraceOfRound(), "");
    EXPECT_THAT(g_stops, IsEmpty());
}

TEST_F(MonitorCard, WithoutARecordingTheCardIsNotLookedAt) {
    g_app.bRecordingActive = 0;
    settings.PutCardIn(false);
    EXPECT_EQ(TraceOfRound(), "");
    EXPECT_THAT(g_stops, IsEmpty());
}

TEST_F(MonitorCard, ARecordingInTheMusicFolderDoesNotNeedTheCard) {
    settings.Set(kSaveFileType, 0);
    settings.PutCardIn(false);
    EXPECT_EQ(TraceOfRound(), "");
    EXPECT_THAT(g_stops, IsEmpty());
}

TEST_F(MonitorCard, AWeakSignalWithSwitchingOnAndAnEmptyListSkipsTheLookAtTheCardInThatRound) {
    settings.PutCardIn(false);
    settings.Set(kEnableAFAutoSwitch, 1);
    device.signal = g_app.lLastSignal = 15;
    EXPECT_EQ(TraceOfRound(), "");
    EXPECT_THAT(g_stops, IsEmpty());
    device.signal = g_app.lLastSignal = 16;
    Round();
    EXPECT_THAT(g_stops, ElementsAre(0));
}

TEST_F(MonitorCard, AfterASwitchToAnotherFrequencyTheCardIsLookedAtInTheSameRound) {
    settings.PutCardIn(false);
    settings.Set(kEnableAFAutoSwitch, 1);
    device.signal = g_app.lLastSignal = 15;
    device.alternatives = {L"98.5"};
    Round();
    EXPECT_THAT(g_stops, ElementsAre(0));
}

}  // namespace
