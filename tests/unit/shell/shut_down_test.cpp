#include "shell/shutdown.h"

#include <atomic>
#include <vector>

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

// Whether somebody else could take the mutex; the calling thread may own it.
bool IsFree(HANDLE mutex) {
    const HANDLE other = CreateThread(
        nullptr, 0,
        [](LPVOID asked) -> DWORD {
            const bool free = WaitForSingleObject(asked, 0) == WAIT_OBJECT_0;
            if (free) ReleaseMutex(asked);
            return free;
        },
        mutex, 0, nullptr);
    WaitForSingleObject(other, INFINITE);
    DWORD free = FALSE;
    GetExitCodeThread(other, &free);
    CloseHandle(other);
    return free != FALSE;
}

TEST_F(ShutDownTest, ExitWhileAScanRunsReleasesTheMutexAndFinishesTheScanBeforeTheThreadsAreStopped) {
    state->m_hMutex = CreateMutexW(nullptr, TRUE, L"MyMutex");
    state->m_scan.bMutexOpen = true;
    const HANDLE same = CreateMutexW(nullptr, FALSE, L"MyMutex");
    ASSERT_FALSE(IsFree(same));
    state->m_hPowerStopEvent = StopEvent();
    state->m_hMonitorStopEvent = StopEvent();
    Worker power(state->m_hPowerStopEvent);
    Worker monitor(state->m_hMonitorStopEvent);
    state->m_hPowerThread = power.Thread();
    state->m_hMonitorThread = monitor.Thread();
    bool free = false, powerRan = false, monitorRan = false;
    onMessage = [&](UINT message) {
        if (message != WM_AUTOSCAN_FINISHED) return;
        free = IsFree(same);
        powerRan = power.KeepsRunning();
        monitorRan = monitor.KeepsRunning();
    };
    const std::string console = ConsoleOf([&] { ShutDown(*state, window); });
    EXPECT_EQ(console, "m_hMutex.........");
    ASSERT_TRUE(HasSeen(WM_AUTOSCAN_FINISHED));
    EXPECT_TRUE(free);
    EXPECT_TRUE(powerRan);
    EXPECT_TRUE(monitorRan);
    // Nobody has it open any more: it can be made anew.
    CloseHandle(same);
    const HANDLE again = CreateMutexW(nullptr, FALSE, L"MyMutex");
    EXPECT_NE(GetLastError(), static_cast<DWORD>(ERROR_ALREADY_EXISTS));
    CloseHandle(again);
}

TEST_F(ShutDownTest, AStaleScanHandleIsHarmlessToWhateverHasItsNumberNow) {
    state->m_hMutex = CreateMutexW(nullptr, FALSE, L"MyMutex");
    CloseHandle(state->m_hMutex);
    std::vector<HANDLE> events;
    do {
        events.push_back(CreateEventW(nullptr, TRUE, TRUE, nullptr));
    } while (events.back() != state->m_hMutex && events.size() < 1000);
    ASSERT_EQ(events.back(), state->m_hMutex);
    EXPECT_EQ(ConsoleOf([&] { ShutDown(*state, window); }), "m_hMutex.........");
    EXPECT_TRUE(HasSeen(WM_AUTOSCAN_FINISHED));
    EXPECT_EQ(g_app.pFMDevice, nullptr);
    EXPECT_EQ(WaitForSingleObject(events.back(), 0), WAIT_OBJECT_0);
    for (const HANDLE event : events) EXPECT_TRUE(CloseHandle(event));
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
    EXPECT_EQ(state->m_hMonitorThread, nullptr);
    EXPECT_EQ(state->m_hMonitorStopEvent, nullptr);
}

// A monitor that takes its time to end.
TEST_F(ShutDownTest, TheMonitorHasEndedBeforeTheTunerIsClosed) {
    struct Monitor {
        static DWORD WINAPI Run(LPVOID parameter) {
            auto& monitor = *static_cast<Monitor*>(parameter);
            WaitForSingleObject(monitor.stop, INFINITE);
            Sleep(100);
            monitor.ended = true;
            return 0;
        }
        HANDLE stop = StopEvent();
        std::atomic<bool> ended{false};
    } monitor;
    state->m_hMonitorStopEvent = monitor.stop;
    state->m_hMonitorThread = CreateThread(nullptr, 0, Monitor::Run, &monitor, 0, nullptr);
    bool endedByThen = false;
    device.onCall = [&](const std::string& call) {
        if (call == "Close") endedByThen = monitor.ended;
    };
    ShutDown(*state, window);
    EXPECT_TRUE(endedByThen);
    // One that nobody waited for still uses what is about to go.
    test::WaitFor([&] { return monitor.ended.load(); });
}

// A power thread that takes its time to end, and a monitor that looks whether it has.
TEST_F(ShutDownTest, ThePowerThreadHasEndedBeforeTheMonitorIsStopped) {
    struct Pair {
        static DWORD WINAPI Power(LPVOID parameter) {
            auto& pair = *static_cast<Pair*>(parameter);
            WaitForSingleObject(pair.powerStop, INFINITE);
            Sleep(100);
            pair.powerEnded = true;
            return 0;
        }
        static DWORD WINAPI Monitor(LPVOID parameter) {
            auto& pair = *static_cast<Pair*>(parameter);
            WaitForSingleObject(pair.monitorStop, INFINITE);
            pair.sawPowerEnded = pair.powerEnded.load();
            return 0;
        }
        HANDLE powerStop = StopEvent(), monitorStop = StopEvent();
        std::atomic<bool> powerEnded{false}, sawPowerEnded{false};
    } pair;
    state->m_hPowerStopEvent = pair.powerStop;
    state->m_hMonitorStopEvent = pair.monitorStop;
    state->m_hPowerThread = CreateThread(nullptr, 0, Pair::Power, &pair, 0, nullptr);
    state->m_hMonitorThread = CreateThread(nullptr, 0, Pair::Monitor, &pair, 0, nullptr);
    ShutDown(*state, window);
    EXPECT_TRUE(pair.powerEnded);
    EXPECT_TRUE(pair.sawPowerEnded);
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
