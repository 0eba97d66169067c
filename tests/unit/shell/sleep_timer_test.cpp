#include "shell/sleep_timer.h"

#include "resources/resource_ids.h"
#include "shell/commands.h"
#include "tests/unit/shell/shell_test.h"

namespace {

using test::TraceOf;
using test::WaitFor;

class SleepTimer : public test::ShellTest {
  protected:
    SleepTimer() {
        m_menu = CreatePopupMenu();
        const HMENU items = CreatePopupMenu();
        for (const UINT id : kItems) AppendMenuW(items, MF_STRING, id, L"item");
        AppendMenuW(m_menu, MF_POPUP, reinterpret_cast<UINT_PTR>(items), L"Sleep timer");
        g_app.hRightSoftKeyMenu = m_menu;
    }
    ~SleepTimer() override {
        KillTimer(window, TIMER_SLEEP);
        DestroyMenu(m_menu);
    }
    // The ids of the items that are marked.
    std::vector<UINT> Marked() const {
        std::vector<UINT> marked;
        for (const UINT id : kItems) {
            MENUITEMINFOW item = {};
            item.cbSize = sizeof item;
            item.fMask = MIIM_STATE;
            GetMenuItemInfoW(m_menu, id, FALSE, &item);
            if (item.fState & MFS_CHECKED) marked.push_back(id);
        }
        return marked;
    }
    bool TimerRuns() const { return KillTimer(window, TIMER_SLEEP) != FALSE; }
    bool TakeClose() const {
        MSG message;
        return PeekMessageW(&message, window, WM_CLOSE, WM_CLOSE, PM_REMOVE) != FALSE;
    }
    static constexpr UINT kItems[] = {IDC_SLEEP_OFF, IDC_SLEEP_15, IDC_SLEEP_30, IDC_SLEEP_60};

  private:
    HMENU m_menu;
};

TEST_F(SleepTimer, EachCommandSetsItsLengthAndMarksItsItemAlone) {
    struct Row {
        WORD command;
        DWORD length_s;
    };
    for (const Row& row : {Row{0x8014, 900}, Row{0x8015, 1800}, Row{0x8016, 3600}}) {
        RunCommand(*state, window, row.command);
        EXPECT_EQ(g_app.dwSleepLength_s, row.length_s);
        EXPECT_EQ(g_app.dwSleepStart_s, GetTickCount() / 1000);
        EXPECT_THAT(Marked(), testing::ElementsAre(row.command));
        EXPECT_TRUE(TimerRuns());
    }
}

TEST_F(SleepTimer, Choosing30MinutesWhileTheTimerFor15RunsCountsFromNow) {
    SetSleepTimer(900, IDC_SLEEP_15, window);
    g_app.dwSleepStart_s -= 600;  // ten minutes ago
    SetSleepTimer(1800, IDC_SLEEP_30, window);
    EXPECT_EQ(g_app.dwSleepStart_s, GetTickCount() / 1000);
    EXPECT_EQ(g_app.dwSleepLength_s, 1800u);
    EXPECT_THAT(Marked(), testing::ElementsAre(static_cast<UINT>(IDC_SLEEP_30)));
}

TEST_F(SleepTimer, OffStopsTheTimerMarksOffAloneAndKeepsTheLength) {
    SetSleepTimer(900, IDC_SLEEP_15, window);
    RunCommand(*state, window, IDC_SLEEP_OFF);
    EXPECT_FALSE(TimerRuns());
    EXPECT_EQ(g_app.dwSleepLength_s, 900u);
    EXPECT_THAT(Marked(), testing::ElementsAre(static_cast<UINT>(IDC_SLEEP_OFF)));
}

TEST_F(SleepTimer, OffWithoutATimerStartsNone) {
    SetSleepTimer(0, IDC_SLEEP_OFF, window);
    EXPECT_FALSE(TimerRuns());
    EXPECT_EQ(g_app.dwSleepLength_s, 0u);
}

TEST_F(SleepTimer, ATickTracesHowFarItIsAndGoesOn) {
    SetSleepTimer(900, IDC_SLEEP_15, window);
    const DWORD start_s = g_app.dwSleepStart_s;
    EXPECT_EQ(TraceOf([&] { SleepTimerProc(window, WM_TIMER, TIMER_SLEEP, (start_s + 899) * 1000 + 999); }),
              "FM: SleepTimer: 899 / 900 s\n");
    EXPECT_EQ(g_app.dwSleepLastTick_s, start_s + 899);
    EXPECT_FALSE(TakeClose());
    EXPECT_TRUE(TimerRuns());
}

TEST_F(SleepTimer, AtTheEndItSaysSoStopsAndClosesTwoSecondsLater) {
    SetSleepTimer(900, IDC_SLEEP_15, window);
    const DWORD end = (g_app.dwSleepStart_s + 900) * 1000;
    const DWORD before = GetTickCount();
    EXPECT_EQ(TraceOf([&] { SleepTimerProc(window, WM_TIMER, TIMER_SLEEP, end); }),
              "FM: SleepTimer: 900 / 900 s\n\nClose FM -- SleepTimer Time out:900 s\n");
    EXPECT_GE(GetTickCount() - before, 1980u);
    EXPECT_TRUE(TakeClose());
    EXPECT_FALSE(TimerRuns());
}

TEST_F(SleepTimer, TheTimerTicksOnceASecond) {
    constexpr int kTicks = 4;
    std::vector<ULONGLONG> ticks;
    const std::string trace = TraceOf([&] {
        SetSleepTimer(900, IDC_SLEEP_15, window);
        ticks.push_back(GetTickCount64());
        DWORD last = g_app.dwSleepLastTick_s;
        WaitFor([&] {
            if (g_app.dwSleepLastTick_s == last) return false;
            last = g_app.dwSleepLastTick_s;
            ticks.push_back(GetTickCount64());
            return ticks.size() > kTicks;
        });
    });
    ASSERT_EQ(ticks.size(), kTicks + 1u) << trace;
    // Of all together: a loaded machine may bring one of them late, and the next one sooner for it.
    const ULONGLONG all = ticks.back() - ticks.front();
    EXPECT_GE(all, kTicks * 1000u - 100);
    EXPECT_LT(all, kTicks * 1500u);
    EXPECT_THAT(trace, testing::StartsWith("FM: SleepTimer: 1 / 900 s\n"));
}

TEST_F(SleepTimer, AFaultInATickIsTracedAndTheTimerRunsOn) {
    SetSleepTimer(900, IDC_SLEEP_15, window);
    // The application block cannot be written for the length of a tick.
    DWORD protection = 0;
    std::string trace;
    {
        const test::StreamCapture capture(STD_ERROR_HANDLE);
        VirtualProtect(&g_app, sizeof g_app, PAGE_READONLY, &protection);
        SleepTimerProc(window, WM_TIMER, TIMER_SLEEP, GetTickCount());
        VirtualProtect(&g_app, sizeof g_app, protection, &protection);
        trace = capture.Text();
    }
    EXPECT_EQ(trace, "FM: *** SleepTimerProc Crash");
    EXPECT_TRUE(TimerRuns());
}

}  // namespace
