// The monitor thread's loop: its period, its end, and that no fault in a round ends it.
#include "shell/monitor_thread.h"

#include <stdexcept>

#include "tests/support/device_settings.h"
#include "tests/unit/shell/shell_test.h"

namespace {

using test::TraceOf;
using test::WaitFor;

constexpr DWORD kPeriod_ms = 700;

class MonitorThread : public test::ShellTest {
  protected:
    MonitorThread() {
        SetWindowLongW(window, GWL_USERDATA, reinterpret_cast<LONG_PTR>(state));
        state->m_hMonitorStopEvent = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    }
    ~MonitorThread() override {
        Stop();
        CloseHandle(state->m_hMonitorStopEvent);
    }
    void Start() { m_thread = CreateThread(nullptr, 0, Main_threadProc, window, 0, nullptr); }
    // True when the thread ended.
    bool Stop() {
        if (m_thread == nullptr) return true;
        EventModify(state->m_hMonitorStopEvent, EVENT_SET);
        const bool ended = WaitForSingleObject(m_thread, test::kDeadline_ms) == WAIT_OBJECT_0;
        DWORD code = 99;
        GetExitCodeThread(m_thread, &code);
        EXPECT_EQ(code, 0u);
        CloseHandle(m_thread);
        m_thread = nullptr;
        return ended;
    }
    std::vector<test::FakeFMDevice::Call> Rounds() const {
        std::vector<test::FakeFMDevice::Call> rounds;
        for (const auto& call : device.TimedCalls()) {
            if (call.text == "GetSignal") rounds.push_back(call);
        }
        return rounds;
    }
    bool WaitForRounds(std::size_t count) const {
        return WaitFor([&] { return Rounds().size() >= count; });
    }

    test::DeviceSettings settings;

  private:
    HANDLE m_thread = nullptr;
};

TEST_F(MonitorThread, WithoutAMainStateItEndsAtOnce) {
    SetWindowLongW(window, GWL_USERDATA, 0);
    Start();
    EXPECT_TRUE(Stop());
    EXPECT_TRUE(device.Calls().empty());
}

TEST_F(MonitorThread, RoundsAreAPeriodOf700msApartAndTheFirstComesAfterOne) {
    const auto start = std::chrono::steady_clock::now();
    Start();
    ASSERT_TRUE(WaitForRounds(3));
    EXPECT_TRUE(Stop());
    const auto rounds = Rounds();
    constexpr std::chrono::milliseconds kLeast(kPeriod_ms - 20);  // the clocks' grain
    constexpr std::chrono::milliseconds kMost(2 * kPeriod_ms);    // a machine under load
    EXPECT_GE(rounds[0].at - start, kLeast);
    EXPECT_GE(rounds[1].at - rounds[0].at, kLeast);
    EXPECT_GE(rounds[2].at - rounds[1].at, kLeast);
    EXPECT_LT(rounds[2].at - rounds[1].at, kMost);
}

TEST_F(MonitorThread, TheStopEventEndsItWithoutAnotherRound) {
    Start();
    ASSERT_TRUE(WaitForRounds(1));
    const std::size_t before = Rounds().size();
    EXPECT_TRUE(Stop());
    EXPECT_LE(Rounds().size(), before + 1);
    const std::size_t after = Rounds().size();
    EXPECT_FALSE(WaitFor([&] { return Rounds().size() > after; }, kPeriod_ms + 200));
}

// A mutex whose owner is gone gives the wait a result of its own, and after it an ordinary one.
TEST_F(MonitorThread, AWaitWithAnyOtherResultRunsNoRound) {
    const HANDLE event = state->m_hMonitorStopEvent;
    const HANDLE abandoned = CreateMutexW(nullptr, FALSE, nullptr);
    const HANDLE owner = CreateThread(
        nullptr, 0, [](LPVOID mutex) -> DWORD { return WaitForSingleObject(mutex, INFINITE); }, abandoned, 0,
        nullptr);
    WaitForSingleObject(owner, INFINITE);
    CloseHandle(owner);
    state->m_hMonitorStopEvent = abandoned;
    Start();
    EXPECT_TRUE(Stop());
    EXPECT_TRUE(device.Calls().empty());
    state->m_hMonitorStopEvent = event;
    CloseHandle(abandoned);
}

// Each kind of fault once; the rounds go on after it.
class MonitorThreadFaults : public MonitorThread {
  protected:
    void RunWithFault(void (*fault)()) {
        int left = 1;
        device.onCall = [&](const std::string& call) {
            if (call == "GetStereo" && left-- > 0) fault();
        };
        bool goesOn = false, ended = false;
        const std::string trace = TraceOf([&] {
            Start();
            goesOn = WaitForRounds(3);
            ended = Stop();
        });
        EXPECT_TRUE(goesOn);
        EXPECT_TRUE(ended);
        EXPECT_EQ(trace, "FM: Signal = 45 \nFM: *** Exception at Main_threadProc\n");
    }
};

TEST_F(MonitorThreadFaults, AnAccessViolationInsideARoundIsTracedOnceAndPollingGoesOn) {
    RunWithFault([] {
        static int* volatile nowhere = reinterpret_cast<int*>(16);  // where nothing ever is
        *nowhere = 1;
    });
}

TEST_F(MonitorThreadFaults, ARaisedExceptionInsideARoundIsTracedOnceAndPollingGoesOn) {
    RunWithFault([] { RaiseException(0xE0000042, 0, 0, nullptr); });
}

TEST_F(MonitorThreadFaults, ACppExceptionInsideARoundIsTracedOnceAndPollingGoesOn) {
    RunWithFault([] { throw std::runtime_error("driver"); });
}

TEST_F(MonitorThreadFaults, ARoundThatFaultsEveryTimeNeitherEndsTheThreadNorShortensThePeriod) {
    device.onCall = [](const std::string& call) {
        if (call == "GetStereo") RaiseException(0xE0000042, 0, 0, nullptr);
    };
    Start();
    ASSERT_TRUE(WaitForRounds(3));
    EXPECT_TRUE(Stop());
    const auto rounds = Rounds();
    EXPECT_GE(rounds[2].at - rounds[1].at, std::chrono::milliseconds(kPeriod_ms - 20));
}

}  // namespace
