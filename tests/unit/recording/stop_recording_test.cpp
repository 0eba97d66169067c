// The end of a recording, by whichever way, and the time that runs until then.
#include <windows.h>

#include <tlhelp32.h>

#include <map>

#include "recording/record_screen.h"
#include "skin/skin_access.h"
#include "skin/skin_paint.h"
#include "tests/unit/recording/opened_events.h"
#include "tests/unit/recording/recording_test.h"
#include "tests/unit/recording/tick_count.h"

namespace {

using test::TraceOf;
using test::WaitFor;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class StopRecording : public test::RecordingTest {
  protected:
    std::string Stop(BOOL bByPreRecord) {
        return TraceOf([&] { stop_record(*state, window, bByPreRecord); });
    }
    void ExpectFree() {
        EXPECT_FALSE(state->m_bRecording);
        EXPECT_EQ(g_app.bRecordingActive, 0);
        EXPECT_EQ(state->m_pRecorder, nullptr);
        EXPECT_EQ(RecordButton(), 0);
        for (const int button : {201, 202, 215, 216}) EXPECT_FALSE(IsDisabled(button)) << button;
        EXPECT_TRUE(ListIsShown());
        EXPECT_FALSE(ScanIsGrey());
        EXPECT_EQ(LastShown(TEXT_RECORD_TIME), L"");
    }
};

TEST_F(StopRecording, TheSecondPressStopsAndNamesTheFile) {
    PressRecord();
    graph.ForgetCalls();
    EXPECT_EQ(ReleaseRecord(), "[FM_EnCoder]iIndex : 0\nFM: stop_record: bByPreRecord = 0\n");
    ExpectFree();
    ASSERT_EQ(boxes.Shown().size(), 1u);
    EXPECT_THAT(boxes.Shown()[0].text, HasSubstr(L"\\My Documents\\My Music\\98.5-0000.amr"));
    EXPECT_EQ(boxes.Shown()[0].caption, L"FM");
    EXPECT_EQ(boxes.Shown()[0].style, static_cast<UINT>(MB_OK));
    EXPECT_THAT(graph.Calls(), Contains("control.Stop"));
    EXPECT_THAT(graph.Calls(), Contains("builder.gone"));
}

TEST_F(StopRecording, TheFrequencyAndTheNameAreShownAnew) {
    device.channel = 10110;
    PressRecord();
    StoreChannel(L"Beta", 10110);
    ReleaseRecord(test::kSilent);
    EXPECT_EQ(LastShown(TEXT_FREQUENCY), L"101.1 MHz");
    EXPECT_EQ(LastShown(TEXT_CHANNEL_NAME), L"Beta");
}

TEST_F(StopRecording, TheFileIsClosedBeforeTheBoxIsShown) {
    PressRecord();
    bool closed = false;
    boxes.whileShown = [&] { closed = state->m_pRecorder == nullptr && g_app.bRecordingActive == 1; };
    ReleaseRecord();
    EXPECT_TRUE(closed);
}

TEST_F(StopRecording, Control209StopsWithTheBox) {
    PressRecord();
    const std::string trace = TraceOf([&] { SendMessageW(window, WM_SKIN_CLICK, SKIN_STOP_RECORD, 0); });
    EXPECT_EQ(trace, "FM: stop_record: bByPreRecord = 0\n");
    EXPECT_EQ(boxes.Shown().size(), 1u);
    ExpectFree();
}

TEST_F(StopRecording, ASilentStopShowsNoBox) {
    PressRecord();
    EXPECT_EQ(ReleaseRecord(test::kSilent), "[FM_EnCoder]iIndex : 0\nFM: stop_record: bByPreRecord = 1\n");
    EXPECT_THAT(boxes.Shown(), IsEmpty());
    ExpectFree();
}

TEST_F(StopRecording, WithoutARecorderTheScreenIsSetBackButThereIsNoBoxAndNoEvent) {
    const HANDLE preRecord = CreateEventW(nullptr, FALSE, FALSE, L"Stop_PreRecord");
    // As a start leaves it that got as far as the recorder and could not make one.
    LockScreen(*state);
    SetButtonFrame(state->m_skin, SKIN_RECORD, 2);
    ShowWindow(state->m_hListView, SW_HIDE);
    DrawSkinText(state->m_skin, TEXT_RECORD_TIME, L"Rec 00:00:01");
    g_app.bRecordingActive = 1;
    EXPECT_EQ(Stop(FALSE), "FM: stop_record: bByPreRecord = 0\n");
    ExpectFree();
    EXPECT_THAT(boxes.Shown(), IsEmpty());
    EXPECT_EQ(WaitForSingleObject(preRecord, 0), static_cast<DWORD>(WAIT_TIMEOUT));
    EXPECT_EQ(WaitForSingleObject(state->m_hStopRecordEvent, 0), static_cast<DWORD>(WAIT_TIMEOUT));
    CloseHandle(preRecord);
}

TEST_F(StopRecording, ABookedRecordingsWaitIsEnded) {
    const HANDLE preRecord = CreateEventW(nullptr, FALSE, FALSE, L"Stop_PreRecord");
    PressRecord();
    Stop(FALSE);
    EXPECT_EQ(WaitForSingleObject(preRecord, 0), static_cast<DWORD>(WAIT_OBJECT_0));
    CloseHandle(preRecord);
}

TEST_F(StopRecording, TheHandleOfABookedRecordingsEventStaysOpen) {
    const HANDLE preRecord = CreateEventW(nullptr, FALSE, FALSE, L"Stop_PreRecord");
    PressRecord();
    Stop(TRUE);
    ASSERT_EQ(test::OpenedEvents().size(), 1u);
    EXPECT_TRUE(SetEvent(test::OpenedEvents()[0]));
    CloseHandle(preRecord);
}

TEST_F(StopRecording, TheFallbackOfTheClosingTextIsThePath) {
    PressRecord();
    g_app.hInstance = GetModuleHandleW(L"COREDLL.dll");
    ReleaseRecord();
    ASSERT_EQ(boxes.Shown().size(), 1u);
    EXPECT_EQ(boxes.Shown()[0].text, L"\\My Documents\\My Music\\98.5-0000.amr");
}

TEST_F(StopRecording, ARequestPutsTheButtonOutPostsItsClickAndTakesATenthOfASecond) {
    PressRecord();
    const DWORD start = GetTickCount();
    RequestStopRecording(*state);
    EXPECT_GE(GetTickCount() - start, 95u);
    EXPECT_EQ(RecordButton(), 0);
    EXPECT_NE(state->m_pRecorder, nullptr);
    MSG message = {};
    ASSERT_TRUE(PeekMessageW(&message, window, WM_SKIN_CLICK, WM_SKIN_CLICK, PM_REMOVE));
    EXPECT_EQ(message.wParam, static_cast<WPARAM>(SKIN_RECORD));
    EXPECT_EQ(message.lParam, 0);
    DispatchMessageW(&message);
    ExpectFree();
}

// --- The running time -------------------------------------------------------------------------------------

TEST_F(StopRecording, TheTimeRunsOnTheScreen) {
    PressRecord();
    EXPECT_TRUE(WaitFor([&] { return LastShown(TEXT_RECORD_TIME) == L"Rec 00:00:00"; }));
    EXPECT_TRUE(WaitFor([&] { return LastShown(TEXT_RECORD_TIME) == L"Rec 00:00:03"; }));
}

// Twice in a second, unless the machine is late; more often never.
TEST_F(StopRecording, TheTimeIsShownEveryHalfSecond) {
    PressRecord();
    ASSERT_TRUE(WaitFor([&] { return LastShown(TEXT_RECORD_TIME) >= L"Rec 00:00:12"; }));
    std::map<std::wstring, int> times;
    for (const std::wstring& text : ShownIn(TEXT_RECORD_TIME)) ++times[text];
    int twice = 0;
    for (const auto& [text, count] : times) {
        EXPECT_LE(count, 3) << testing::PrintToString(text);
        twice += count == 2;
    }
    EXPECT_GE(twice, 2);
}

TEST_F(StopRecording, HoursAreNotWrapped) {
    PressRecord();
    EXPECT_TRUE(WaitFor([&] { return LastShown(TEXT_RECORD_TIME) == L"Rec 00:00:01"; }));
    test::g_tickOffset += (123u * 3600 + 59 * 60 + 40) * 1000;
    EXPECT_TRUE(WaitFor([&] { return LastShown(TEXT_RECORD_TIME).rfind(L"Rec 123:59:4", 0) == 0; }));
}

TEST_F(StopRecording, LowSpaceWhileRecordingStopsItWithTheClosingBoxAndThenSaysWhy) {
    PressRecord();
    SetFreeSpace(L"999999");
    ASSERT_TRUE(WaitFor([&] { return boxes.Shown().size() == 2; }));
    EXPECT_THAT(boxes.Shown()[0].text, HasSubstr(L"98.5-0000.amr"));
    EXPECT_EQ(boxes.Shown()[0].owner, window);
    EXPECT_EQ(boxes.Shown()[1].text, L"Not enough free storage space for a recording.");
    EXPECT_EQ(boxes.Shown()[1].owner, window);
    ExpectFree();
}

TEST_F(StopRecording, TheTimeStopsWithTheRecording) {
    PressRecord();
    EXPECT_TRUE(WaitFor([&] { return LastShown(TEXT_RECORD_TIME) != L"(never shown)"; }));
    ReleaseRecord(test::kSilent);
    const DWORD start = GetTickCount();
    bool shown = false;
    WaitFor([&] {
        shown = shown || LastShown(TEXT_RECORD_TIME) != L"";
        return GetTickCount() - start > 3000;
    });
    EXPECT_FALSE(shown);
}

// A new recording takes the stop event's signal back; the thread of the one before must not live on with it.
TEST_F(StopRecording, ManyQuickRecordingsLeaveNoThreadBehind) {
    const auto threads = [] {
        std::size_t count = 0;
        const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
        THREADENTRY32 entry = {};
        entry.dwSize = sizeof entry;
        for (BOOL more = Thread32First(snapshot, &entry); more; more = Thread32Next(snapshot, &entry)) {
            if (entry.th32OwnerProcessID == GetCurrentProcessId()) ++count;
        }
        CloseHandle(snapshot);
        return count;
    };
    PressRecord(test::kSilent);
    ReleaseRecord(test::kSilent);
    WaitFor([start = GetTickCount()] { return GetTickCount() - start > 2000; });
    const std::size_t before = threads();
    for (int recording = 0; recording < 40; ++recording) {
        PressRecord(test::kSilent);
        ReleaseRecord(test::kSilent);
    }
    EXPECT_TRUE(WaitFor([&] { return threads() <= before; }));
}

}  // namespace
