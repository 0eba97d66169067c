#include "shell/keys.h"

#include "tests/support/device_settings.h"
#include "tests/unit/shell/shell_test.h"

namespace {

using test::ConsoleOf;
using test::TraceOf;

class KeysTest : public test::ShellTest {
  protected:
    const test::DeviceSettings settings;
    ~KeysTest() override { SetSystemPowerState(nullptr, POWER_STATE_ON, 0); }
    static DWORD PowerFlags() {
        WCHAR name[100] = L"";
        DWORD flags = 0;
        GetSystemPowerState(name, 100, &flags);
        return flags;
    }
};

TEST_F(KeysTest, AnyKeyWhileARecordingRunsDoesNothingIncludingReturn) {
    state->m_bRecording = TRUE;
    for (const WPARAM key :
         {static_cast<WPARAM>('8'), static_cast<WPARAM>(VK_LEFT), static_cast<WPARAM>(VK_RETURN)}) {
        std::string console;
        const std::string trace =
            TraceOf([&] { console = ConsoleOf([&] { HandleKeyDown(*state, window, key); }); });
        EXPECT_EQ(trace, "FM: ui.cpp: WndProc: WM_KEYDOWN\n");
        EXPECT_EQ(console, "");
    }
    EXPECT_TRUE(Seen().empty());
    EXPECT_TRUE(device.Calls().empty());
    EXPECT_TRUE(PowerFlags() & POWER_STATE_ON);
    EXPECT_EQ(g_app.digitEntry.uCount, 0u);
}

TEST_F(KeysTest, ReturnDarkensTheDisplayAndLightsItAgain) {
    ASSERT_TRUE(PowerFlags() & POWER_STATE_ON);
    EXPECT_EQ(ConsoleOf([&] { HandleKeyDown(*state, window, VK_RETURN); }),
              "********3.Screen OFF**********\n");
    EXPECT_TRUE(PowerFlags() & POWER_STATE_IDLE);
    EXPECT_EQ(ConsoleOf([&] { HandleKeyDown(*state, window, VK_RETURN); }),
              "********1.Screen ON**********\n");
    EXPECT_TRUE(PowerFlags() & POWER_STATE_ON);
}

TEST_F(KeysTest, WhileTheDisplayIsDarkEveryHardwareKeyIsAskedForAndWithTheLightTheListHasTheFocus) {
    ShowWithList();
    HandleKeyDown(*state, window, VK_RETURN);
    EXPECT_EQ(KeysWanted(), 1u);
    EXPECT_EQ(GetFocus(), window);
    HandleKeyDown(*state, window, VK_RETURN);
    EXPECT_EQ(KeysWanted(), 0u);
    EXPECT_EQ(GetFocus(), state->m_hListView);
}

TEST_F(KeysTest, WithTheDisplayDarkOtherKeysAreIgnored) {
    SetSystemPowerState(nullptr, POWER_STATE_IDLE, 0);
    EXPECT_EQ(ConsoleOf([&] { HandleKeyDown(*state, window, '8'); }), "********2.Screen OFF**********\n");
    EXPECT_EQ(g_app.digitEntry.uCount, 0u);
}

TEST_F(KeysTest, WithTheDisplayOnADigitStartsAnEntry) {
    EXPECT_EQ(ConsoleOf([&] { HandleKeyDown(*state, window, '8'); }), "********4.Screen ON**********\n");
    EXPECT_EQ(g_app.digitEntry.uCount, 1u);
}

}  // namespace
