// What the user sees and can do while the radio records, and how a recording ends with the radio.
#include <set>

#include "tests/system/recording_test.h"

namespace {

using test::kBookedMinute_ms;
using test::Lines;
using test::Radio;
using test::WaitFor;
using testing::HasSubstr;
using testing::Not;

class RecordingScreen : public test::RecordingTest {
  protected:
    void StartRecording(Radio& radio) {
        radio.WaitUntilShown();
        TapRecord(radio);
        ASSERT_TRUE(WaitForTrace("[FM_EnCoder]iIndex : 2\n"));
        ASSERT_TRUE(WaitFor([&] { return !IsWindowVisible(radio.ListView()); }));
    }
    // Red in the field of the record time.
    static bool TimeIsShown(const Radio& radio) {
        for (int y = 170; y < 200; ++y) {
            for (int x = 5; x < 185; ++x) {
                if (radio.Pixel(x, y) == RGB(255, 0, 0)) return true;
            }
        }
        return false;
    }
    // What there is to say of a time that is not seen: who stands in its place, and what the radio said.
    std::string InsteadOfTheTime(const Radio& radio) const {
        POINT place = {95, 185};
        ClientToScreen(radio.Window(), &place);
        const HWND there = WindowFromPoint(place);
        char className[80] = "", title[80] = "";
        GetClassNameA(there, className, sizeof className);
        GetWindowTextA(there, title, sizeof title);
        std::string said = there == radio.Window() ? "the radio's window" : "another window";
        said += ": " + std::string(className) + ", \"" + std::string(title) + "\", its colours:";
        std::set<COLORREF> colours;
        for (int x = 5; x < 185; ++x) colours.insert(radio.Pixel(x, 185));
        for (const COLORREF colour : colours) said += " " + std::to_string(colour);
        return said + "\n" + handset.Trace();
    }
};

TEST_F(RecordingScreen, TheListGivesWayAndTheTimeIsShownInRedUntilTheStop) {
    Radio radio(handset);
    StartRecording(radio);
    EXPECT_TRUE(WaitFor([&] { return TimeIsShown(radio); })) << InsteadOfTheTime(radio);
    StopAndAnswer(radio);
    EXPECT_TRUE(WaitFor([&] { return IsWindowVisible(radio.ListView()); }));
    EXPECT_TRUE(WaitFor([&] { return !TimeIsShown(radio); }));
    EXPECT_THAT(handset.Trace(), HasSubstr("[FM_EnCoder]iIndex : 0\nFM: stop_record: bByPreRecord = 0\n"));
}

TEST_F(RecordingScreen, EveryKeyIsIgnoredReturnIncluded) {
    Radio radio(handset);
    StartRecording(radio);
    const int keysBefore = Count(Lines(handset.Trace()), "FM: ui.cpp: WndProc: WM_KEYDOWN");
    radio.Type("1012");
    radio.Key(VK_RETURN);
    radio.Key(VK_LEFT);
    ASSERT_TRUE(WaitFor(
        [&] { return Count(Lines(handset.Trace()), "FM: ui.cpp: WndProc: WM_KEYDOWN") == keysBefore + 6; }));
    EXPECT_EQ(handset.Console(), "");
    EXPECT_EQ(Count(handset.TunerCalls(), "SetChannel"), 0);
    EXPECT_EQ(Count(handset.TunerCalls(), "SetVolume"), 0);
    StopAndAnswer(radio);
    radio.Key(VK_RETURN);
    EXPECT_TRUE(WaitForConsole("********3.Screen OFF**********\n"));
}

TEST_F(RecordingScreen, SeekAndStepDoNothing) {
    Radio radio(handset);
    StartRecording(radio);
    for (const int x : {60, 100, 130, 170}) {
        radio.Press(x, 250);
        radio.Lift(x, 250);
    }
    radio.Tap(210, 250);  // the output selector still works
    ASSERT_TRUE(WaitForCall("SetSpeaker 1 -> 0"));
    for (const char* call : {"SeekNext", "SeekPrev", "SetChannel"})
        EXPECT_EQ(Count(handset.TunerCalls(), call), 0);
}

TEST_F(RecordingScreen, ExitStopsTheRecordingFirstAndWaitsASecond) {
    Radio radio(handset);
    StartRecording(radio);
    radio.Command(static_cast<WORD>(IDC_EXIT));
    const HWND box = radio.WaitForBox(L"FM");
    ASSERT_NE(box, nullptr);
    const ULONGLONG answered = GetTickCount64();
    Radio::Answer(box, IDOK);
    ASSERT_TRUE(radio.WaitUntilGone());
    EXPECT_GE(GetTickCount64() - answered, 950u);
    EXPECT_EQ(radio.ExitCode(), 0u);
    const std::string trace = handset.Trace();
    const std::size_t stop = trace.find("FM: stop_record: bByPreRecord = 0\n");
    const std::size_t close = trace.find("== CLOSE FM ==\r\n");
    ASSERT_NE(stop, std::string::npos);
    ASSERT_NE(close, std::string::npos);
    EXPECT_LT(stop, close);
}

TEST_F(RecordingScreen, ClosedByTheHeadsetTheRadioEndsItsRecordingSilently) {
    Hurry(4);
    Radio radio(handset);
    StartRecording(radio);
    handset.PlugHeadset(false);
    ASSERT_TRUE(radio.WaitUntilGone(40000));
    EXPECT_EQ(radio.ExitCode(), 0u);
    EXPECT_THAT(handset.Trace(), HasSubstr("FM: stop_record: bByPreRecord = 1\n"));
}

TEST_F(RecordingScreen, WithTooLittleSpaceTheBoxComesAndNothingStarts) {
    SetEnvironmentVariableW(L"KORA_OBJECTSTOREFREE", L"999999");
    Radio radio(handset);
    SetEnvironmentVariableW(L"KORA_OBJECTSTOREFREE", nullptr);
    radio.WaitUntilShown();
    TapRecord(radio);
    const HWND box = radio.WaitForBox(L"FM");
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(Radio::BoxText(box), L"Not enough free storage space for a recording.");
    Radio::Answer(box, IDOK);
    EXPECT_TRUE(WaitFor([&] { return radio.Box(nullptr) == nullptr; }));
    EXPECT_TRUE(IsWindowVisible(radio.ListView()));
    EXPECT_FALSE(Exists(L"\\My Documents\\My Music\\87.5-0000.amr"));
}

TEST_F(RecordingScreen, AnIncomingCallEndsTheRecordingAndItIsNotTakenUpAgain) {
    Hurry(4);
    Radio radio(handset);
    StartRecording(radio);
    handset.SetRegistry(L"HKLM\\System\\State\\Phone", L"Status", 0x00010000u);
    const HWND box = radio.WaitForBox(L"FM");
    ASSERT_NE(box, nullptr);
    EXPECT_THAT(handset.Trace(), HasSubstr("[FM_EnCoder]iIndex : 0\nFM: stop_record: bByPreRecord = 0\n"));
    Radio::Answer(box, IDOK);
    handset.SetRegistry(L"HKLM\\System\\State\\Phone", L"Status", 0u);
    ASSERT_TRUE(WaitForTrace("FM: UnMute Sound"));
    EXPECT_TRUE(WaitFor([&] { return IsWindowVisible(radio.ListView()); }));
    EXPECT_EQ(Count(Lines(handset.Trace()), "[FM_EnCoder]iIndex : 2"), 1);
}

// --- Booked starts ----------------------------------------------------------------------------------------

TEST_F(RecordingScreen, ABookedRecordingStartsRunsItsMinuteAndClosesTheRadioWithoutABox) {
    const int rate = Hurry(20);
    Radio radio(handset, L"-Rec -Channel 9850 -Duration 1");
    radio.WaitUntilShown();
    const ULONGLONG shown = GetTickCount64();
    ASSERT_TRUE(radio.WaitUntilGone(kBookedMinute_ms));
    // 5 s and a minute of the handset's clock.
    EXPECT_GE((GetTickCount64() - shown) * rate, 60000u);
    EXPECT_EQ(radio.ExitCode(), 0u);
    const std::string trace = handset.Trace();
    EXPECT_THAT(trace, HasSubstr("[FM_EnCoder]iIndex : 2\n"));
    EXPECT_THAT(trace, HasSubstr("** Pre-Record Time Out **\n"));
    EXPECT_THAT(trace, HasSubstr("[FM_EnCoder]iIndex : 0\nFM: stop_record: bByPreRecord = 1\n"));
    EXPECT_THAT(trace, HasSubstr("FM: Program Terminated.\n"));
}

TEST_F(RecordingScreen, ABookedRecordingThatIsStoppedByHandLeavesTheRadioOpen) {
    // The minute lasts four seconds: the stop comes well before its end, also on a machine that has much to
    // do.
    const int rate = Hurry(15);
    Radio radio(handset, L"-Rec -Channel 9850 -Duration 1");
    radio.WaitUntilShown();
    ASSERT_TRUE(WaitForTrace("[FM_EnCoder]iIndex : 2\n"));
    // The wait begins after the start.
    ASSERT_TRUE(WaitFor([&] { return Count(Lines(handset.Trace()), "FM: disk space") >= 6; }));
    StopAndAnswer(radio);
    const ULONGLONG stopped = GetTickCount64();
    ASSERT_TRUE(WaitFor([&] { return (GetTickCount64() - stopped) * rate > 80000; }, kBookedMinute_ms));
    EXPECT_TRUE(radio.Runs());
    EXPECT_THAT(handset.Trace(), Not(HasSubstr("** Pre-Record Time Out **")));
}

TEST_F(RecordingScreen, WithoutADurationNothingIsRecorded) {
    const int rate = Hurry(20);
    Radio radio(handset, L"-Rec -Channel 9850 -Duration 0");
    radio.WaitUntilShown();
    const ULONGLONG shown = GetTickCount64();
    ASSERT_TRUE(WaitFor([&] { return (GetTickCount64() - shown) * rate > 20000; }, kBookedMinute_ms));
    EXPECT_THAT(handset.Trace(), Not(HasSubstr("[FM_EnCoder]")));
    EXPECT_TRUE(radio.Runs());
}

TEST_F(RecordingScreen, AStopInTheFirstFiveSecondsOfABookedStartStopsNothing) {
    Hurry(2);
    Radio radio(handset, L"-Rec -Channel 9850 -Duration 1");
    radio.WaitUntilShown();
    radio.Send(0x8003, SKIN_STOP_RECORD, 0);
    EXPECT_EQ(radio.Box(L"FM"), nullptr);
    EXPECT_TRUE(WaitForTrace("[FM_EnCoder]iIndex : 2\n"));
    EXPECT_TRUE(WaitFor([&] { return !IsWindowVisible(radio.ListView()); }));
}

TEST_F(RecordingScreen, ABookedRecordingThatCannotStartStillClosesTheRadioAfterItsMinute) {
    const int rate = Hurry(40);
    SetEnvironmentVariableW(L"KORA_OBJECTSTOREFREE", L"10");
    Radio radio(handset, L"-Rec -Channel 9850 -Duration 1");
    SetEnvironmentVariableW(L"KORA_OBJECTSTOREFREE", nullptr);
    radio.WaitUntilShown();
    const HWND box = radio.WaitForBox(L"FM");
    ASSERT_NE(box, nullptr);
    const ULONGLONG answered = GetTickCount64();
    Radio::Answer(box, IDOK);
    ASSERT_TRUE(radio.WaitUntilGone(kBookedMinute_ms));
    EXPECT_GE((GetTickCount64() - answered) * rate, 58000u) << "the minute begins when the start was refused";
    EXPECT_THAT(handset.Trace(), HasSubstr("** Pre-Record Time Out **\n"));
}

}  // namespace
