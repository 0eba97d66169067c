// Window timers on the handset's clock.
#include <gtest/gtest.h>
#include <windows.h>

#include <vector>

#include "handset/coredll/kernel/platform_call.h"
#include "handset_fixture.h"

namespace {

struct Tick {
    HWND window;
    UINT message;
    UINT_PTR id;
    DWORD time;
};
std::vector<Tick> g_ticks;

void CALLBACK OnTick(HWND window, UINT message, UINT_PTR id, DWORD time) {
    g_ticks.push_back({window, message, id, time});
}

void CALLBACK OnOtherTick(HWND window, UINT message, UINT_PTR id, DWORD) {
    g_ticks.push_back({window, message, id, 0});
}

bool TicksReach(std::size_t count) {
    return Eventually([count] {
        HandleMessages();
        return g_ticks.size() >= count;
    });
}

}  // namespace

using TimerTest = HandsetTest;

TEST_F(TimerTest, AProcedureIsGivenItsTimerAndTheHandsetsTicks) {
    g_ticks.clear();
    const HWND window =
        CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    const DWORD before = GetTickCount();
    ASSERT_EQ(SetTimer(window, 666666, 20, OnTick), 666666u);
    ASSERT_TRUE(TicksReach(2));
    const DWORD after = GetTickCount();
    KillTimer(window, 666666);
    DestroyWindow(window);
    EXPECT_EQ(g_ticks[0].window, window);
    EXPECT_EQ(g_ticks[0].message, static_cast<UINT>(WM_TIMER));
    EXPECT_EQ(g_ticks[0].id, 666666u);
    EXPECT_GE(g_ticks[0].time - before, 10u);
    EXPECT_LE(g_ticks[1].time - before, after - before);
    EXPECT_GT(g_ticks[1].time, g_ticks[0].time);
}

TEST_F(TimerTest, ATimerSetAgainRunsItsNewProcedure) {
    g_ticks.clear();
    const HWND window =
        CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    SetTimer(window, 7, 20, OnTick);
    SetTimer(window, 7, 20, OnOtherTick);
    ASSERT_TRUE(TicksReach(1));
    KillTimer(window, 7);
    DestroyWindow(window);
    EXPECT_EQ(g_ticks[0].time, 0u);
}

TEST_F(TimerTest, AKilledTimerIsSilent) {
    g_ticks.clear();
    const UINT_PTR killed = SetTimer(nullptr, 0, 10, OnTick);
    ASSERT_NE(killed, 0u);
    // It is due, and nobody has taken the message yet.
    ASSERT_TRUE(Eventually([] { return (GetQueueStatus(QS_TIMER) >> 16 & QS_TIMER) != 0; }));
    EXPECT_TRUE(KillTimer(nullptr, killed));
    const UINT_PTR alive = SetTimer(nullptr, 0, 50, OnOtherTick);
    ASSERT_TRUE(TicksReach(1));
    KillTimer(nullptr, alive);
    EXPECT_EQ(g_ticks[0].id, alive);
    EXPECT_FALSE(KillTimer(nullptr, killed));
}

TEST_F(TimerTest, ATimerWithoutAProcedureArrivesAsAMessage) {
    const HWND window =
        CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    SetTimer(window, 200, 10, nullptr);
    MSG message{};
    EXPECT_TRUE(
        Eventually([&] { return PeekMessageW(&message, window, WM_TIMER, WM_TIMER, PM_REMOVE) != 0; }));
    EXPECT_EQ(message.wParam, 200u);
    EXPECT_EQ(message.lParam, 0);
    KillTimer(window, 200);
    DestroyWindow(window);
}

// In the suite that is run at every rate: the second tick comes two periods after the timer was set. Not one
// after the first, which a busy host lets come late.
TEST(Clock, TimersKeepTheirPeriodOnTheHandset) {
    g_ticks.clear();
    const DWORD period = 40 * HandsetClockRate();
    const DWORD begun = GetTickCount();
    const UINT_PTR timer = SetTimer(nullptr, 0, period, OnTick);
    ASSERT_TRUE(TicksReach(2));
    KillTimer(nullptr, timer);
    EXPECT_GE(g_ticks[1].time - begun, period * 3 / 2);
}
