// The program's end while a scan runs, and what the scan does to the monitor and to its mutex.
#include <atomic>

#include "shell/shutdown.h"
#include "tests/unit/tuner/scan_on_screen.h"
#include "tuner/auto_scan.h"

namespace {

using test::WaitFor;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

class AutoScanEnd : public ScanOnScreen {
  protected:
    AutoScanEnd() { ThreeShortWalks(); }
    ~AutoScanEnd() override {
        device.onCall = nullptr;
        SetEnvironmentVariableW(L"KORA_FAULT", nullptr);
        MSG message;
        PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
    }
    // The scan's calls from its first seek to the end, and those of the shut-down.
    std::vector<std::string> LastCalls(std::size_t count) const {
        const auto calls = device.Calls();
        return {calls.end() - static_cast<std::ptrdiff_t>(std::min(count, calls.size())), calls.end()};
    }
    // Runs when the scan makes that call for the nth time, on its thread.
    void At(const std::string& call, int nth, std::function<void()> action) {
        device.onCall = [call, nth, action, count = 0](const std::string& made) mutable {
            if (made == call && ++count == nth) action();
        };
    }
};

// The seek goes on for a while after the window was closed.
TEST_F(AutoScanEnd, TheDeviceIsClosedAfterTheScansLastCall) {
    std::atomic<bool> seeks{false};
    At("SeekNext", 2, [&] {
        seeks = true;
        Sleep(300);
    });
    Begin();
    ASSERT_TRUE(WaitFor([&] { return seeks.load(); }));
    ShutDown(*state, window);
    EXPECT_EQ(Asked("SeekNext"), 2);
    EXPECT_THAT(LastCalls(5), ElementsAre("GetChannel", "SetSpeaker 0", "SetMute 0", "Close", "Release"));
    // The thread has made its last call: nothing comes any more.
    const std::size_t calls = device.Calls().size();
    Sleep(300);
    EXPECT_EQ(device.Calls().size(), calls);
}

TEST_F(AutoScanEnd, NoRunBeginsAnewAndTheStationsOfTheLastOneStay) {
    std::atomic<bool> last{false};
    At("SeekNext", 4, [&] {
        last = true;
        Sleep(300);
    });
    Begin();
    ASSERT_TRUE(WaitFor([&] { return last.load(); }));
    const std::string trace = test::TraceOf([this] { ShutDown(*state, window); });
    EXPECT_EQ(Asked("SetChannel 8750"), 1);
    EXPECT_EQ(StoredName(8760), L"FM  1");
    EXPECT_EQ(StoredName(9850), L"FM  2");
    EXPECT_EQ(StoredName(10790), L"FM  3");
    EXPECT_THAT(trace, HasSubstr("FM: End Auto Scan Channels.\n"));
}

// The list answers the scan's message that empties it only after the end was asked for.
TEST_F(AutoScanEnd, AGroupThatIsNotEmptiedByThenKeepsItsStations) {
    const PropRecord record = {0, L"Mine", L"Old", 9130, L""};
    ASSERT_NE(state->m_ChannelDB.CEDB_InsertRecord(record), 0);
    static WNDPROC listProcedure = nullptr;
    static CMainState* closing = nullptr;
    closing = state.get();
    state->m_hListView = CreateWindowExW(0, L"STATIC", L"", WS_CHILD, 0, 0, 10, 10, window, nullptr,
                                         GetModuleHandleW(nullptr), nullptr);
    constexpr UINT kDeleteAllItems = 0x1009;
    const WNDPROC endOnEmptying = [](HWND list, UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT {
        if (message == kDeleteAllItems) closing->m_scan.bEndNow = true;
        return CallWindowProcW(listProcedure, list, message, wParam, lParam);
    };
    listProcedure = reinterpret_cast<WNDPROC>(
        SetWindowLongW(state->m_hListView, GWL_WNDPROC, reinterpret_cast<LONG_PTR>(endOnEmptying)));
    Begin();
    ASSERT_TRUE(WaitFor([] { return Finished(); }));
    EXPECT_EQ(StoredName(9130), L"Old");
    EXPECT_EQ(Asked("SetChannel 8750"), 0);
}

TEST_F(AutoScanEnd, ItsQuestionDoesNotHoldUpTheEnd) {
    const PropRecord record = {0, L"Mine", L"Old", 9130, L""};
    ASSERT_NE(state->m_ChannelDB.CEDB_InsertRecord(record), 0);
    StartAutoScan(*state, window);
    ASSERT_TRUE(WaitFor([] { return Box(L"Stored channels") != nullptr; }));
    ShutDown(*state, window);
    EXPECT_EQ(Box(L"Stored channels"), nullptr);
    EXPECT_EQ(Asked("SeekNext"), 0);
    EXPECT_EQ(StoredName(9130), L"Old");
    EXPECT_THAT(LastCalls(2), ElementsAre("Close", "Release"));
}

TEST_F(AutoScanEnd, ItsLastBoxDoesNotHoldUpTheEnd) {
    Begin();
    ASSERT_TRUE(WaitFor([] { return Box(L"FM") != nullptr; }));
    ShutDown(*state, window);
    EXPECT_EQ(Box(L"FM"), nullptr);
    EXPECT_EQ(StoredName(8760), L"FM  1");
    EXPECT_THAT(LastCalls(2), ElementsAre("Close", "Release"));
}

TEST_F(AutoScanEnd, AScanThatHasOnlyJustBegunAsksNothingAnyMore) {
    state->m_scan.bEndNow = true;
    StartAutoScan(*state, window);
    ShutDown(*state, window);
    EXPECT_THAT(device.Calls(), Not(Contains("SetMute 1")));
    EXPECT_EQ(Asked("SeekNext"), 0);
}

// Handles get the numbers of those that were closed.
TEST_F(AutoScanEnd, TheStaleMutexIsHarmlessToWhateverHasItsNumberNow) {
    Scan();
    ASSERT_NE(state->m_hMutex, nullptr);
    const HANDLE another = CreateEventW(nullptr, TRUE, TRUE, nullptr);
    state->m_hMutex = another;
    EXPECT_EQ(test::ConsoleOf([this] { ShutDown(*state, window); }), "m_hMutex.........");
    EXPECT_TRUE(Finished());
    EXPECT_EQ(WaitForSingleObject(another, 0), WAIT_OBJECT_0);
    CloseHandle(another);
}

// A monitor that calls the platform all the time, while the scan makes its first seek.
class AutoScanMonitor : public AutoScanEnd {
  protected:
    AutoScanMonitor() { state->m_hMonitorThread = CreateThread(nullptr, 0, Run, this, 0, nullptr); }
    ~AutoScanMonitor() override {
        stop = true;
        while (ResumeThread(state->m_hMonitorThread) > 1) {
        }
        WaitForSingleObject(state->m_hMonitorThread, INFINITE);
        CloseHandle(state->m_hMonitorThread);
    }
    static DWORD WINAPI Run(LPVOID test) {
        auto& self = *static_cast<AutoScanMonitor*>(test);
        while (!self.stop) {
            Sleep(1);
            ++self.rounds;
        }
        return 0;
    }
    // Rounds that the monitor made within 100 ms of the scan's first seek.
    long RoundsDuringTheScan() {
        long made = -1;
        At("SeekNext", 1, [&] {
            const long before = rounds;
            Sleep(100);
            made = rounds - before;
        });
        Scan();
        return made;
    }
    std::atomic<bool> stop{false};
    std::atomic<long> rounds{0};
};

TEST_F(AutoScanMonitor, TheMonitorIsSuspendedWhileTheScanRuns) {
    ASSERT_TRUE(WaitFor([this] { return rounds > 2; }));
    EXPECT_EQ(RoundsDuringTheScan(), 0);
}

TEST_F(AutoScanMonitor, TheMonitorIsSuspendedAlsoWhenThePlatformRefusesAtFirst) {
    ASSERT_TRUE(WaitFor([this] { return rounds > 2; }));
    SetEnvironmentVariableW(L"KORA_FAULT", L"suspend:20");
    EXPECT_EQ(RoundsDuringTheScan(), 0);
}

}  // namespace
