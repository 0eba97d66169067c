#include "shell/activation.h"

#include "shell/messages.h"
#include "tests/support/device_settings.h"
#include "tests/unit/shell/shell_test.h"

namespace {

using test::TraceOf;
using test::Worker;

class ActivationTest : public test::ShellTest {
  protected:
    const test::DeviceSettings settings;
    ActivationTest() : stop(CreateEventW(nullptr, FALSE, FALSE, nullptr)), monitor(stop) {
        state->m_hMonitorThread = monitor.Thread();
        g_app.activateInfo.cbSize = sizeof g_app.activateInfo;
    }
    ~ActivationTest() override {
        SetEnvironmentVariableW(L"KORA_FAULT", nullptr);
        while (ResumeThread(monitor.Thread()) > 1) {
        }
        EventModify(stop, EVENT_SET);
        WaitForSingleObject(monitor.Thread(), INFINITE);
        CloseHandle(monitor.Thread());
        CloseHandle(stop);
    }
    HANDLE stop;
    Worker monitor;
};

TEST_F(ActivationTest, AWindowThatGoesToTheBackStopsTheMonitorAndSaysSo) {
    ASSERT_TRUE(monitor.KeepsRunning());
    EXPECT_EQ(TraceOf([&] { HandleActivation(*state, window, WA_INACTIVE, 0); }), "***WA_INACTIVE***\n");
    EXPECT_FALSE(monitor.KeepsRunning());
}

TEST_F(ActivationTest, AMonitorThatThePlatformRefusesToSuspendIsSuspendedByALaterAttempt) {
    SetEnvironmentVariableW(L"KORA_FAULT", L"suspend:20");
    HandleActivation(*state, window, WA_INACTIVE, 0);
    EXPECT_FALSE(monitor.KeepsRunning());
    HandleActivation(*state, window, WA_ACTIVE, 0);
    EXPECT_TRUE(monitor.KeepsRunning());
}

TEST_F(ActivationTest, AMonitorThatCannotBeSuspendedAtAllHoldsNobodyUpForLong) {
    SetEnvironmentVariableW(L"KORA_FAULT", L"suspend:100000");
    const ULONGLONG before = GetTickCount();
    HandleActivation(*state, window, WA_INACTIVE, 0);
    EXPECT_LT(GetTickCount() - before, 10000u);
    EXPECT_TRUE(monitor.KeepsRunning());
}

// A worker in a call to this very window is refused to be suspended until the call is answered.
TEST_F(ActivationTest, AMonitorThatSendsTheWindowAMessageIsAnsweredBetweenTheAttempts) {
    SetEnvironmentVariableW(L"KORA_FAULT", L"suspend:50");
    const HANDLE sender = CreateThread(
        nullptr, 0,
        [](LPVOID target) -> DWORD {
            return SendMessageW(static_cast<HWND>(target), WM_SKIN_CLICK, 209, 0) == 0;
        },
        window, 0, nullptr);
    HandleActivation(*state, window, WA_INACTIVE, 0);
    EXPECT_TRUE(test::WaitFor([this] { return HasSeen(WM_SKIN_CLICK); }, 0));
    EXPECT_EQ(WaitForSingleObject(sender, test::kDeadline_ms), WAIT_OBJECT_0);
    CloseHandle(sender);
}

TEST_F(ActivationTest, AWindowThatComesToTheFrontRunsItAgainAndSaysHow) {
    HandleActivation(*state, window, WA_INACTIVE, 0);
    EXPECT_EQ(TraceOf([&] { HandleActivation(*state, window, WA_ACTIVE, 0); }), "===WA_ACTIVE : 1===\n");
    EXPECT_TRUE(monitor.KeepsRunning());
    HandleActivation(*state, window, WA_INACTIVE, 0);
    EXPECT_EQ(TraceOf([&] { HandleActivation(*state, window, WA_CLICKACTIVE, 0); }), "===WA_ACTIVE : 2===\n");
    EXPECT_TRUE(monitor.KeepsRunning());
}

TEST_F(ActivationTest, AWindowThatGoesToTheBackGivesTheHardwareKeysBack) {
    AllKeys(TRUE);
    ASSERT_EQ(KeysWanted(), 1u);
    HandleActivation(*state, window, WA_INACTIVE, 0);
    EXPECT_EQ(KeysWanted(), 0u);
}

TEST_F(ActivationTest, AWindowThatComesToTheFrontAsksForNoKeysAndGivesTheFocusToTheList) {
    ShowWithList();
    HandleActivation(*state, window, WA_INACTIVE, 0);
    EXPECT_NE(GetFocus(), state->m_hListView);
    for (const WPARAM how : {WA_ACTIVE, WA_CLICKACTIVE}) {
        SetFocus(window);
        HandleActivation(*state, window, how, 0);
        EXPECT_EQ(GetFocus(), state->m_hListView) << how;
        EXPECT_EQ(KeysWanted(), 0u);
    }
}

TEST_F(ActivationTest, SuspensionsAreNotBalanced) {
    HandleActivation(*state, window, WA_INACTIVE, 0);
    HandleActivation(*state, window, WA_INACTIVE, 0);
    HandleActivation(*state, window, WA_ACTIVE, 0);
    EXPECT_FALSE(monitor.KeepsRunning());
    HandleActivation(*state, window, WA_ACTIVE, 0);
    EXPECT_TRUE(monitor.KeepsRunning());
}

TEST_F(ActivationTest, AnyOtherValueChangesNothing) {
    EXPECT_EQ(TraceOf([&] { HandleActivation(*state, window, 7, 0); }), "");
    EXPECT_TRUE(monitor.KeepsRunning());
}

}  // namespace
