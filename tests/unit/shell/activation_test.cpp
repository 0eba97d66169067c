#include "shell/activation.h"

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
