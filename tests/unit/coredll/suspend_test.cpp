// SuspendThread and ResumeThread: counts, and threads outside the platform's calls.
#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>

#include "handset_fixture.h"
#include "worker.h"

namespace {

constexpr DWORD kFailed = static_cast<DWORD>(-1);

}  // namespace

TEST(SuspendThread, StopsAThreadUntilItIsResumed) {
    Caller caller;
    const Worker worker([&] { caller(); });
    ExpectToStandStillWhileSuspended(caller, worker);
    caller.stop = true;
}

TEST(SuspendThread, CountsAndGivesThePreviousCount) {
    Caller caller;
    const Worker worker([&] { caller(); });
    for (DWORD i = 0; i < 3; ++i) EXPECT_EQ(SuspendThread(worker.get()), i);
    for (DWORD i = 3; i > 1; --i) {
        EXPECT_EQ(ResumeThread(worker.get()), i);
        EXPECT_TRUE(caller.StandsStill());
    }
    EXPECT_EQ(ResumeThread(worker.get()), 1u);
    EXPECT_EQ(ResumeThread(worker.get()), 0u);
    EXPECT_TRUE(caller.Moves());
    caller.stop = true;
}

TEST(SuspendThread, RefusesMoreThan127) {
    Caller caller;
    const Worker worker([&] { caller(); });
    for (DWORD i = 0; i < 127; ++i) ASSERT_EQ(SuspendThread(worker.get()), i);
    EXPECT_EQ(SuspendThread(worker.get()), kFailed);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_SIGNAL_REFUSED));
    for (DWORD i = 127; i > 0; --i) ASSERT_EQ(ResumeThread(worker.get()), i);
    caller.stop = true;
}

class SuspendFault : public HandsetTest {};

TEST_F(SuspendFault, RefusesTheFirstAttemptsAndStopsTheThreadAfterThem) {
    Caller caller;
    const Worker worker([&] { caller(); });
    SetState(L"KORA_FAULT", L"seek suspend:3");
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(SuspendThread(worker.get()), kFailed);
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_SIGNAL_REFUSED));
        EXPECT_TRUE(caller.Moves());
    }
    EXPECT_EQ(SuspendThread(worker.get()), 0u);
    EXPECT_TRUE(caller.StandsStill());
    EXPECT_EQ(ResumeThread(worker.get()), 1u);
    caller.stop = true;
}

TEST_F(SuspendFault, ComesAgainWhenItIsInjectedAgain) {
    Caller caller;
    const Worker worker([&] { caller(); });
    for (int i = 0; i < 2; ++i) {
        SetState(L"KORA_FAULT", L"suspend");
        EXPECT_EQ(SuspendThread(worker.get()), kFailed);
        SetState(L"KORA_FAULT", L"seek");
        EXPECT_EQ(SuspendThread(worker.get()), 0u);
        EXPECT_EQ(ResumeThread(worker.get()), 1u);
    }
    caller.stop = true;
}

TEST(SuspendThread, RefusesWhatIsNoThread) {
    EXPECT_EQ(SuspendThread(nullptr), kFailed);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_HANDLE));
    EXPECT_EQ(ResumeThread(nullptr), kFailed);
}

TEST(SuspendThread, StopsAThreadThatOnlyComputes) {
    std::atomic<unsigned> count{0};
    std::atomic<bool> stop{false};
    const Worker worker([&] {
        while (!stop) ++count;
    });
    ASSERT_TRUE(Eventually([&] { return count > 0; }));
    EXPECT_EQ(SuspendThread(worker.get()), 0u);
    const unsigned before = count;
    OthersHaveRun();
    EXPECT_EQ(count, before);
    EXPECT_EQ(ResumeThread(worker.get()), 1u);
    EXPECT_TRUE(Eventually([&] { return count > before; }));
    stop = true;
}

TEST(SuspendThread, AThreadMaySuspendItself) {
    std::atomic<int> step{0};
    const Worker worker([&] {
        step = 1;
        SuspendThread(GetCurrentThread());
        step = 2;
    });
    ASSERT_TRUE(Eventually([&] { return step == 1; }));
    OthersHaveRun();
    EXPECT_EQ(step, 1);
    EXPECT_TRUE(Eventually([&] { return ResumeThread(worker.get()) == 1; }));
    EXPECT_TRUE(worker.Ended());
    EXPECT_EQ(step, 2);
}

TEST(SuspendThread, KeepsTheLastErrorOfTheThreadThatItStops) {
    std::atomic<DWORD> error{0};
    std::atomic<bool> began{false};
    std::atomic<bool> stop{false};
    const Worker worker([&] {
        began = true;
        do {
            SetLastError(777);
            GetTickCount();
            error = GetLastError();
        } while (!stop && error == 777);
    });
    ASSERT_TRUE(Eventually([&] { return began.load(); }));
    for (int i = 0; i < 20; ++i) {
        SuspendThread(worker.get());
        ResumeThread(worker.get());
    }
    stop = true;
    EXPECT_TRUE(worker.Ended());
    EXPECT_EQ(error, 777u);
}
