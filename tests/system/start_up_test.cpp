// Starting: what the radio asks of the tuner, who may start, and who makes way.
#include "handset/state/own_windows.h"
#include "tests/system/radio_test.h"

namespace {

using test::HandsetUnderTest;
using test::Radio;
using test::WaitFor;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class StartUp : public test::RadioTest {};

// A window of another program that the radio looks for by its class.
class CameraWindow {
  public:
    CameraWindow() {
        handset::JoinHandset();
        WNDCLASSW windowClass = {};
        windowClass.lpfnWndProc = DefWindowProcW;
        windowClass.lpszClassName = L"Digital Camera";
        RegisterClassW(&windowClass);
        m_window = CreateWindowExW(0, L"Digital Camera", L"Camera", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr,
                                   nullptr, nullptr);
    }
    ~CameraWindow() {
        if (IsWindow(m_window)) DestroyWindow(m_window);
    }
    HWND Window() const { return m_window; }

  private:
    HWND m_window = nullptr;
};

TEST_F(StartUp, TheTunerIsInitialisedSilencedAndReadInThisOrder) {
    Radio radio(handset);
    radio.WaitUntilShown();
    ASSERT_TRUE(WaitForCall("GetVolume -> 0: 50"));
    EXPECT_THAT(TunerCommands(),
                ElementsAre("Initialize -> 0", "SetSpeaker 0 -> 0", "SetMute 0 -> 0", "GetVolume -> 0: 50"));
}

TEST_F(StartUp, AScheduledStartTunesBeforeItReadsTheVolume) {
    Radio radio(handset, L"-Rec -Channel 9850");
    radio.WaitUntilShown();
    ASSERT_TRUE(WaitForCall("GetVolume -> 0: 50"));
    EXPECT_THAT(TunerCommands(), ElementsAre("Initialize -> 0", "SetSpeaker 0 -> 0", "SetMute 0 -> 0",
                                             "SetChannel 9850 -> 0", "GetVolume -> 0: 50"));
    EXPECT_THAT(handset.Trace(), HasSubstr("Channel: 9850\r\n"));
}

TEST_F(StartUp, WithoutAHeadsetOnlyTheWarningBoxAppearsAndTheProcessExitsWith0) {
    handset.PlugHeadset(false);
    Radio radio(handset);
    const HWND box = radio.WaitForBox(L"WARNING");
    ASSERT_NE(box, nullptr);
    EXPECT_FALSE(Radio::BoxText(box).empty());
    EXPECT_EQ(radio.Window(), nullptr);
    EXPECT_TRUE(handset.TunerCalls().empty());
    Radio::Answer(box, IDOK);
    ASSERT_TRUE(radio.WaitUntilGone());
    EXPECT_EQ(radio.ExitCode(), 0u);
    EXPECT_TRUE(handset.TunerCalls().empty());
}

TEST_F(StartUp, AMissingHeadsetValueCountsAsNoHeadset) {
    handset.DeleteRegistry(L"HKLM\\System\\State\\Hardware", L"Headset");
    Radio radio(handset);
    const HWND box = radio.WaitForBox(L"WARNING");
    ASSERT_NE(box, nullptr);
    Radio::Answer(box, IDOK);
    ASSERT_TRUE(radio.WaitUntilGone());
    EXPECT_EQ(radio.ExitCode(), 0u);
}

TEST_F(StartUp, TheCameraIsClosedAndTheTraceSaysSo) {
    CameraWindow camera;
    Radio radio(handset);
    radio.WaitUntilShown();
    EXPECT_TRUE(WaitFor([&] { return !IsWindow(camera.Window()); }));
    EXPECT_THAT(handset.Trace(), HasSubstr(" ** FM start to work and to CLOSE Camera **\r\n"));
}

TEST_F(StartUp, ADatabaseCommandLineInAnyLetterCaseCreatesTheDatabaseAndExitsWithoutAWindow) {
    Radio radio(handset, L"kORA.VOL");
    const HWND box = radio.WaitForBox(nullptr);
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(radio.Window(), nullptr);
    Radio::Answer(box, IDOK);
    ASSERT_TRUE(radio.WaitUntilGone());
    EXPECT_EQ(radio.ExitCode(), 0u);
    EXPECT_TRUE(handset.TunerCalls().empty());
    EXPECT_THAT(handset.Trace(), Not(HasSubstr("FM: Program Terminated.\n")));
    EXPECT_NE(GetFileAttributesW(handset.DevicePath(L"\\KORA.vol").c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST_F(StartUp, TheDatabaseWordFollowedByMoreIsAnOrdinaryStart) {
    Radio radio(handset, L"Kora.vol now");
    radio.WaitUntilShown();
    EXPECT_TRUE(radio.Runs());
}

TEST_F(StartUp, ASecondPlainStartBringsTheFirstForwardAndExits) {
    Radio first(handset);
    first.WaitUntilShown();
    const HWND other = CreateWindowExW(0, L"Static", L"other", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr,
                                       nullptr, nullptr, nullptr);
    SetForegroundWindow(other);
    WaitFor([&] { return GetForegroundWindow() == other; });
    Radio second(handset);
    ASSERT_TRUE(second.WaitUntilGone());
    EXPECT_EQ(second.ExitCode(), 0u);
    EXPECT_TRUE(first.Runs());
    EXPECT_TRUE(WaitFor([&] { return GetForegroundWindow() == first.Window(); }));
    EXPECT_THAT(handset.Trace(), HasSubstr("FM is exist.szWindowClass : Kora"));
    EXPECT_EQ(Count(handset.TunerCalls(), "Initialize"), 1);
    DestroyWindow(other);
}

TEST_F(StartUp, AScheduledStartClosesTheRunningInstanceAndTakesItsPlace) {
    Radio first(handset);
    first.WaitUntilShown();
    Radio second(handset, L"-Rec -Channel 10790");
    ASSERT_TRUE(first.WaitUntilGone());
    second.WaitUntilShown();
    EXPECT_THAT(handset.Trace(), HasSubstr("FM is exist.szWindowClass : Kora"));
    // The first has let go of the tuner before the second takes it.
    const auto calls = TunerCommands();
    const auto release = std::find(calls.begin(), calls.end(), "Release -> 0");
    ASSERT_NE(release, calls.end());
    EXPECT_EQ(std::count(release, calls.end(), "Initialize -> 0"), 1);
    EXPECT_EQ(std::count(calls.begin(), release, "Initialize -> 0"), 1);
}

// The first radio keeps the phone awake, so "idle" is for it a second, darker kind of unattended: its power
// thread hears of the change that the second one made.
TEST_F(StartUp, AnUnattendedDeviceIsMadeIdleBeforeTheRunningInstanceIsClosed) {
    const auto unattended = [this] {
        return Count(test::Lines(handset.Trace()), "FM: Power ......unattended...");
    };
    Radio first(handset);
    first.WaitUntilShown();
    ASSERT_TRUE(WaitForCall("GetVolume -> 0: 50"));
    ASSERT_EQ(test::RunProgram(L"handset.exe", L"power unattended"), 0u);
    ASSERT_TRUE(WaitFor([&] { return unattended() == 1; }));
    Radio second(handset, L"-Rec");
    ASSERT_TRUE(first.WaitUntilGone());
    second.WaitUntilShown();
    // The second one in its turn is told of the state that it finds the phone in.
    EXPECT_TRUE(WaitFor([&] { return unattended() == 3; }));
    auto heardByFirst = test::Lines(handset.Trace());
    const auto end = std::find(heardByFirst.begin(), heardByFirst.end(), "FM: ResumeThread: Before...");
    ASSERT_NE(end, heardByFirst.end());
    heardByFirst.erase(end, heardByFirst.end());
    EXPECT_EQ(Count(heardByFirst, "FM: Power ......unattended..."), 2);
}

}  // namespace
