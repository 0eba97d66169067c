// The thread of a booked recording, on a window of the test's own.
#include "recording/pre_record.h"

#include <thread>

#include "shell/owned.h"
#include "tests/unit/recording/opened_events.h"
#include "tests/unit/recording/recording_test.h"
#include "tests/unit/shell/asked_times.h"

namespace {

using test::TraceOf;
using testing::IsEmpty;
using testing::Not;

constexpr WCHAR kStopEvent[] = L"Stop_PreRecord";

bool StopEventIsThere() {
    const HANDLE stop = test::OpenForTest(kStopEvent);
    if (stop != nullptr) CloseHandle(stop);
    return stop != nullptr;
}

class PreRecord : public test::RecordingTest {
  protected:
    PreRecord() { s_windowProc = reinterpret_cast<WNDPROC>(SetWindowLongW(window, GWL_WNDPROC, Noting())); }

    static LONG_PTR Noting() { return reinterpret_cast<LONG_PTR>(&NoteClick); }
    static LRESULT CALLBACK NoteClick(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_SKIN_CLICK) s_thereAtTheStart = StopEventIsThere();
        return CallWindowProcW(s_windowProc, window, message, wParam, lParam);
    }
    // Ends the wait as soon as there is one.
    static void EndTheWait() {
        test::WaitFor(StopEventIsThere);
        const HANDLE stop = test::OpenForTest(kStopEvent);
        SetEvent(stop);
        CloseHandle(stop);
    }
    static WNDPROC s_windowProc;
    static bool s_thereAtTheStart;
};

WNDPROC PreRecord::s_windowProc = nullptr;
bool PreRecord::s_thereAtTheStart = false;

TEST_F(PreRecord, TheEventIsMadeOnlyAfterTheStart) {
    ASSERT_FALSE(StopEventIsThere()) << "an earlier test has left it open";
    state->m_request.uDuration_min = 1;
    s_thereAtTheStart = true;
    const DWORD start = GetTickCount();
    std::thread hand(EndTheWait);
    const test::AskedTimes asked;
    const std::string trace = TraceOf([this] { EXPECT_EQ(PreRecordThread(window), 1u); });
    hand.join();
    EXPECT_GE(GetTickCount() - start, 5000u);
    EXPECT_THAT(asked.sleeps_ms, testing::ElementsAre(5000u, 100u));
    EXPECT_FALSE(s_thereAtTheStart);
    EXPECT_FALSE(StopEventIsThere());
    // The wait was ended, so nothing is stopped or closed.
    EXPECT_THAT(trace, Not(testing::HasSubstr("Time Out")));
    EXPECT_TRUE(state->m_bRecording);
    MSG message = {};
    EXPECT_FALSE(PeekMessageW(&message, window, WM_CLOSE, WM_CLOSE, PM_NOREMOVE));
    EXPECT_THAT(boxes.Shown(), IsEmpty());
}

// Another object has the event's name.
TEST_F(PreRecord, WithoutItsEventTheThreadEndsAtOnceAndStopsAndClosesNothing) {
    ASSERT_FALSE(StopEventIsThere()) << "an earlier test has left it open";
    const OwnedHandle other(CreateMutexW(nullptr, FALSE, kStopEvent));
    ASSERT_TRUE(other);
    ASSERT_EQ(CreateEventW(nullptr, FALSE, FALSE, kStopEvent), nullptr);
    state->m_request.uDuration_min = 1;
    const DWORD start = GetTickCount();
    const std::string trace = TraceOf([this] { EXPECT_EQ(PreRecordThread(window), 1u); });
    EXPECT_LT(GetTickCount() - start, 60000u) << "it waited for the duration";
    EXPECT_THAT(trace, Not(testing::HasSubstr("Time Out")));
    EXPECT_TRUE(state->m_bRecording);
    MSG message = {};
    EXPECT_FALSE(PeekMessageW(&message, window, WM_CLOSE, WM_CLOSE, PM_NOREMOVE));
    EXPECT_FALSE(PeekMessageW(&message, window, WM_SKIN_CLICK, WM_SKIN_CLICK, PM_NOREMOVE));
    EXPECT_THAT(boxes.Shown(), IsEmpty());
}

TEST_F(PreRecord, AWindowWithoutAMainStateIsNoneToRecordFor) {
    SetWindowLongW(window, GWL_USERDATA, 0);
    EXPECT_EQ(PreRecordThread(window), 1u);
    EXPECT_FALSE(state->m_bRecording);
}

}  // namespace
