// The power-notification thread: what it asks the platform for, what it traces, what it gives back.
#include "shell/power_thread.h"

#include <cstddef>
#include <cstring>
#include <deque>
#include <mutex>
#include <optional>
#include <string>

#include "shell/owned.h"
#include "tests/support/device_settings.h"
#include "tests/unit/shell/shell_test.h"

// Messages that are read before those of the queue: by their names alone, each without a terminator.
static std::deque<std::wstring> g_fed;
static std::mutex g_feeding;  // guards g_fed

// The linker sends the program's calls of ReadMsgQueue here.
BOOL WINAPI RealReadMsgQueue(HANDLE queue, LPVOID buffer, DWORD size, LPDWORD read, DWORD milliseconds,
                             DWORD* flags) __asm__("__real_ReadMsgQueue");
BOOL WINAPI FedReadMsgQueue(HANDLE queue, LPVOID buffer, DWORD size, LPDWORD read, DWORD milliseconds,
                            DWORD* flags) __asm__("__wrap_ReadMsgQueue");
BOOL WINAPI FedReadMsgQueue(HANDLE queue, LPVOID buffer, DWORD size, LPDWORD read, DWORD milliseconds,
                            DWORD* flags) {
    const std::lock_guard<std::mutex> lock(g_feeding);
    if (g_fed.empty()) return RealReadMsgQueue(queue, buffer, size, read, milliseconds, flags);
    const std::wstring name = g_fed.front();
    g_fed.pop_front();
    auto& message = *static_cast<POWER_BROADCAST*>(buffer);
    message.Message = PBT_TRANSITION;
    message.Flags = 0;
    message.Length = static_cast<DWORD>(name.size() * sizeof(WCHAR));
    // What lies behind the name in the buffer stays.
    std::memcpy(message.SystemPowerState, name.data(), message.Length);
    *read = static_cast<DWORD>(offsetof(POWER_BROADCAST, SystemPowerState) + message.Length);
    *flags = 0;
    return TRUE;
}

namespace {

using test::StreamCapture;
using test::TraceOf;
using test::WaitFor;
using testing::HasSubstr;

class PowerThread : public test::ShellTest {
  protected:
    PowerThread() {
        state->m_hPowerStopEvent = CreateEventW(nullptr, FALSE, FALSE, nullptr);
        OwnedKey key;
        RegCreateKeyExW(HKEY_LOCAL_MACHINE, kScreenOffKey, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, key.put(),
                        nullptr);
    }
    ~PowerThread() override {
        Stop();
        SetEnvironmentVariableW(L"KORA_FAULT", nullptr);
        SetSystemPowerState(nullptr, POWER_STATE_ON, 0);
        CloseHandle(state->m_hPowerStopEvent);
    }
    void Start() { m_thread = CreateThread(nullptr, 0, PowerNotifyProc, state, 0, nullptr); }
    bool HasEnded() const { return WaitForSingleObject(m_thread, 0) == WAIT_OBJECT_0; }
    void Stop() {
        if (m_thread == nullptr) return;
        EventModify(state->m_hPowerStopEvent, EVENT_SET);
        EXPECT_EQ(WaitForSingleObject(m_thread, test::kDeadline_ms), WAIT_OBJECT_0);
        DWORD code = 99;
        GetExitCodeThread(m_thread, &code);
        EXPECT_EQ(code, 0u);
        CloseHandle(m_thread);
        m_thread = nullptr;
    }
    static std::optional<DWORD> DeviceLevel() {
        DWORD level = 0;
        const HRESULT result = RegistryGetDWORD(HKEY_LOCAL_MACHINE, kScreenOffKey, L"att1:", &level);
        return SUCCEEDED(result) ? std::optional<DWORD>(level) : std::nullopt;
    }
    static DWORD State(const WCHAR* name) { return StateDword(name); }
    bool WaitUntilRunning() const {
        return WaitFor([] { return DeviceLevel().has_value(); });
    }
    // What the thread writes while it runs with a fault, to its own end.
    std::string TraceWithFault(const WCHAR* fault) {
        SetEnvironmentVariableW(L"KORA_FAULT", fault);
        bool ended = false;
        const std::string trace = TraceOf([&] {
            Start();
            ended = WaitFor([&] { return HasEnded(); });
        });
        EXPECT_TRUE(ended);
        return trace;
    }

    static constexpr WCHAR kScreenOffKey[] = L"System\\CurrentControlSet\\Control\\Power\\State\\ScreenOff";
    test::DeviceSettings settings;

  private:
    HANDLE m_thread = nullptr;
};

TEST_F(PowerThread, WhileItRunsUnattendedModeIsHeldAndTheDevicesLevelIs4) {
    Start();
    ASSERT_TRUE(WaitUntilRunning());
    EXPECT_EQ(DeviceLevel(), 4u);
    EXPECT_EQ(State(L"UnattendedRequests"), 1u);
    Stop();
    EXPECT_EQ(DeviceLevel(), std::nullopt);
    EXPECT_EQ(State(L"UnattendedRequests"), 0u);
}

TEST_F(PowerThread, GoingUnattendedAndOnAgainIsTracedAndResetsTheIdleTimerAtOnce) {
    std::string trace;
    bool running = false, resets = false, on = false;
    {
        const StreamCapture capture(STD_ERROR_HANDLE);
        Start();
        running = WaitUntilRunning();
        const DWORD before = State(L"IdleTimerResets");
        SetSystemPowerState(nullptr, POWER_STATE_IDLE, 0);
        resets = WaitFor([&] { return State(L"IdleTimerResets") > before; });
        SetSystemPowerState(nullptr, POWER_STATE_ON, 0);
        on = WaitFor([&] { return capture.Text().find("ON.....\n") != std::string::npos; });
        Stop();
        trace = capture.Text();
    }
    EXPECT_TRUE(running && resets && on);
    EXPECT_EQ(trace,
              "FM: Power Notification Message: PBT_TRANSITION\n"
              "FM: SystemPowerState: unattended\n"
              "FM: Power ......unattended...\n"
              "FM: Power Notification Message: PBT_TRANSITION\n"
              "FM: SystemPowerState: on\n"
              "FM: Power ......ON.....\n");
}

TEST_F(PowerThread, AnotherStateIsTracedByNameAndChangesNothing) {
    std::string trace;
    bool told = false;
    {
        const StreamCapture capture(STD_ERROR_HANDLE);
        Start();
        WaitUntilRunning();
        SetSystemPowerState(L"backlightoff", 0, 0);
        told = WaitFor([&] { return capture.Text().find("backlightoff\n") != std::string::npos; });
        Stop();
        trace = capture.Text();
    }
    EXPECT_TRUE(told);
    EXPECT_EQ(trace, "FM: Power Notification Message: PBT_TRANSITION\nFM: SystemPowerState: backlightoff\n");
}

TEST_F(PowerThread, AMessageWithoutANameChangesNothingWhateverTheOneBeforeItSaid) {
    {
        const std::lock_guard<std::mutex> lock(g_feeding);
        g_fed = {L"unattended", L"", L"on"};
    }
    std::string trace;
    bool on = false;
    {
        const StreamCapture capture(STD_ERROR_HANDLE);
        Start();
        WaitUntilRunning();
        SetSystemPowerState(L"backlightoff", 0, 0);
        on = WaitFor([&] { return capture.Text().find("backlightoff\n") != std::string::npos; });
        Stop();
        trace = capture.Text();
    }
    EXPECT_TRUE(on);
    EXPECT_EQ(trace,
              "FM: Power Notification Message: PBT_TRANSITION\n"
              "FM: SystemPowerState: unattended\n"
              "FM: Power ......unattended...\n"
              "FM: Power Notification Message: PBT_TRANSITION\n"
              "FM: Power Notification Message: PBT_TRANSITION\n"
              "FM: SystemPowerState: on\n"
              "FM: Power ......ON.....\n"
              "FM: Power Notification Message: PBT_TRANSITION\n"
              "FM: SystemPowerState: backlightoff\n");
}

TEST_F(PowerThread, AQueueThatCannotBeMadeIsTracedAndEndsTheThreadWithNothingHeld) {
    EXPECT_EQ(TraceWithFault(L"msgqueue"), "FM: CreateMsgQueue failed: e\n");
    EXPECT_EQ(DeviceLevel(), std::nullopt);
    EXPECT_EQ(State(L"UnattendedRequests"), 0u);
}

TEST_F(PowerThread, NotificationsThatAreRefusedAreTracedAndEndTheThreadWithNothingHeld) {
    EXPECT_EQ(TraceWithFault(L"power-notify"), "FM: RequestPowerNotifications failed: 5\n");
    EXPECT_EQ(DeviceLevel(), std::nullopt);
    EXPECT_EQ(State(L"UnattendedRequests"), 0u);
}

TEST_F(PowerThread, AKeyWithoutRightsKeepsItFromNothingElse) {
    SetEnvironmentVariableW(L"KORA_FAULT", L"registry-rights");
    Start();
    EXPECT_TRUE(WaitFor([] { return State(L"UnattendedRequests") == 1; }));
    EXPECT_FALSE(HasEnded());
    EXPECT_EQ(DeviceLevel(), std::nullopt);
    Stop();
    EXPECT_EQ(State(L"UnattendedRequests"), 0u);
}

TEST_F(PowerThread, ItEndsAtOnceAtItsStopEvent) {
    Start();
    ASSERT_TRUE(WaitUntilRunning());
    const ULONGLONG before = GetTickCount();
    Stop();
    EXPECT_LT(GetTickCount() - before, 2000u);
}

}  // namespace
