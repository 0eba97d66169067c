#include "shell/shutdown.h"

#include "shell/messages.h"
#include "tests/unit/shell/shell_test.h"

namespace {

using test::ConsoleOf;
using test::TraceOf;
using test::Worker;
using testing::ElementsAre;

class ShutDownTest : public test::ShellTest {
  protected:
    // Leaves the quit request of the shut-down behind for nobody.
    void TearDown() override {
        MSG message;
        PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
    }
    static HANDLE StopEvent() { return CreateEventW(nullptr, FALSE, FALSE, nullptr); }
};

TEST_F(ShutDownTest, ExitWhileAScanRunsReleasesTheMutexAndFinishesTheScanBeforeTheThreadsAreStopped) {
    state->m_hMutex = CreateMutexW(nullptr, TRUE, L"MyMutex");
    state->m_hPowerStopEvent = StopEvent();
    HANDLE stop = state->m_hPowerStopEvent;
    Worker power(stop);
    state->m_hPowerThread = power.Thread();
    const std::string console = ConsoleOf([&] { ShutDown(*state, window); });
    EXPECT_EQ(console, "m_hMutex.........");
    ASSERT_TRUE(HasSeen(WM_AUTOSCAN_FINISHED));
    // Nobody holds the mutex any more: it can be made anew.
    const HANDLE again = CreateMutexW(nullptr, FALSE, L"MyMutex");
    EXPECT_NE(GetLastError(), static_cast<DWORD>(ERROR_ALREADY_EXISTS));
    CloseHandle(again);
}

TEST_F(ShutDownTest, AStaleScanHandleIsHarmless) {
    state->m_hMutex = CreateMutexW(nullptr, TRUE, L"MyMutex");
    ReleaseMutex(state->m_hMutex);
    CloseHandle(state->m_hMutex);
    ShutDown(*state, window);
    EXPECT_TRUE(HasSeen(WM_AUTOSCAN_FINISHED));
    EXPECT_EQ(g_app.pFMDevice, nullptr);
}

TEST_F(ShutDownTest, WithoutAScanNothingIsSaidAboutAMutex) {
    EXPECT_EQ(ConsoleOf([&] { ShutDown(*state, window); }), "");
    EXPECT_FALSE(HasSeen(WM_AUTOSCAN_FINISHED));
}

TEST_F(ShutDownTest, ASuspendedMonitorThreadIsResumedBeforeItIsStopped) {
    state->m_hMonitorStopEvent = StopEvent();
    Worker monitor(state->m_hMonitorStopEvent);
    state->m_hMonitorThread = monitor.Thread();
    SuspendThread(monitor.Thread());
    const std::string trace = TraceOf([&] { ShutDown(*state, window); });
    EXPECT_THAT(trace, testing::StartsWith("FM: ResumeThread: Before...\nFM: ResumeThread: After...\n"));
    EXPECT_EQ(state->m_hMonitorThread, nullptr);
    EXPECT_EQ(state->m_hMonitorStopEvent, nullptr);
}

TEST_F(ShutDownTest, AMonitorThreadThatWasSuspendedMoreThanOnceEndsAsWell) {
    state->m_hMonitorStopEvent = StopEvent();
    Worker monitor(state->m_hMonitorStopEvent);
    state->m_hMonitorThread = monitor.Thread();
    for (int i = 0; i < 3; ++i) SuspendThread(monitor.Thread());
    ShutDown(*state, window);
    EXPECT_EQ(state->m_hMonitorThread, nullptr);
}

// A thread that sends the window a message while the window waits for its end.
TEST_F(ShutDownTest, AThreadThatSendsAMessageWhileItIsJoinedIsAnswered) {
    struct Sender {
        static DWORD WINAPI Run(LPVOID parameter) {
            const auto* test = static_cast<const Sender*>(parameter);
            WaitForSingleObject(test->stop, INFINITE);
            SendMessageW(test->window, WM_SKIN_CLICK, 209, 0);
            return 0;
        }
        HANDLE stop;
        HWND window;
    };
    state->m_hMonitorStopEvent = StopEvent();
    Sender sender = {state->m_hMonitorStopEvent, window};
    state->m_hMonitorThread = CreateThread(nullptr, 0, Sender::Run, &sender, 0, nullptr);
    ShutDown(*state, window);
    EXPECT_TRUE(HasSeen(WM_SKIN_CLICK));
}

TEST_F(ShutDownTest, BothThreadsAreJoinedAndTheirHandlesCleared) {
    state->m_hPowerStopEvent = StopEvent();
    state->m_hMonitorStopEvent = StopEvent();
    Worker power(state->m_hPowerStopEvent);
    Worker monitor(state->m_hMonitorStopEvent);
    state->m_hPowerThread = power.Thread();
    state->m_hMonitorThread = monitor.Thread();
    ShutDown(*state, window);
    EXPECT_FALSE(power.KeepsRunning());
    EXPECT_FALSE(monitor.KeepsRunning());
    EXPECT_EQ(state->m_hPowerThread, nullptr);
    EXPECT_EQ(state->m_hPowerStopEvent, nullptr);
}

TEST_F(ShutDownTest, TheTunerIsSilencedThenTheVolumeRestoredThenItIsClosedAndReleased) {
    g_app.bLowSignalMute = 1;
    g_app.dwSavedVolume = 70;
    ShutDown(*state, window);
    EXPECT_THAT(device.Calls(), ElementsAre("SetSpeaker 0", "SetMute 0", "SetVolume 70", "Close", "Release"));
    EXPECT_EQ(g_app.pFMDevice, nullptr);
}

TEST_F(ShutDownTest, TheVolumeIsLeftAloneWithoutAWeakSignalMute) {
    g_app.dwSavedVolume = 70;
    ShutDown(*state, window);
    EXPECT_THAT(device.Calls(), ElementsAre("SetSpeaker 0", "SetMute 0", "Close", "Release"));
}

TEST_F(ShutDownTest, ItEndsTheMessageLoop) {
    ShutDown(*state, window);
    MSG message = {};
    EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 0u);
}

TEST_F(ShutDownTest, TheListsDrawingObjectsAreDeleted) {
    state->m_hListBackground = CreateBitmap(8, 8, 1, 1, nullptr);
    LOGFONTW font = {};
    state->m_hListFont = CreateFontIndirectW(&font);
    const HBITMAP background = state->m_hListBackground;
    const HFONT listFont = state->m_hListFont;
    ShutDown(*state, window);
    EXPECT_EQ(GetObjectType(background), 0u);
    EXPECT_EQ(GetObjectType(listFont), 0u);
}

}  // namespace
