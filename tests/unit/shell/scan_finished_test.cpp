#include "shell/scan_finished.h"

#include "tests/unit/shell/shell_test.h"

namespace {

using test::ConsoleOf;
using test::Worker;
using testing::ElementsAre;

class ScanFinished : public test::ShellTest {};

TEST_F(ScanFinished, TheWindowTheSoundTheListAndTheMonitorComeBack) {
    const HANDLE stop = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    Worker monitor(stop);
    state->m_hMonitorThread = monitor.Thread();
    SuspendThread(monitor.Thread());
    EnableWindow(window, FALSE);
    ShowWindow(state->m_hListView, SW_HIDE);

    EXPECT_EQ(ConsoleOf([&] { FinishScan(*state, window); }),
              "WM_AUTOSCAN_FINISHED 1\nWM_AUTOSCAN_FINISHED 2\n");
    EXPECT_TRUE(IsWindowEnabled(window));
    EXPECT_THAT(device.Calls(), ElementsAre("SetMute 0"));
    EXPECT_TRUE(GetWindowLongW(state->m_hListView, GWL_STYLE) & WS_VISIBLE);
    EXPECT_TRUE(monitor.KeepsRunning());

    EventModify(stop, EVENT_SET);
    WaitForSingleObject(monitor.Thread(), INFINITE);
    CloseHandle(monitor.Thread());
    CloseHandle(stop);
}

}  // namespace
