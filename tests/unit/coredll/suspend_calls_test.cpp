// SuspendThread against a thread that is in a platform call: it stops when the call is over.
#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>

#include "handset/coredll/kernel/platform_call.h"
#include "handset_fixture.h"
#include "worker.h"

TEST(SuspendThread, HoldsAThreadThatIsInAWait) {
    const HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    std::atomic<bool> waiting{false};
    std::atomic<bool> passed{false};
    const Worker worker([&] {
        waiting = true;
        WaitForSingleObject(event, INFINITE);
        passed = true;
    });
    ASSERT_TRUE(Eventually([&] { return waiting.load(); }));
    OthersHaveRun();
    EXPECT_EQ(SuspendThread(worker.get()), 0u);
    SetEvent(event);
    OthersHaveRun();
    EXPECT_FALSE(passed);
    EXPECT_EQ(ResumeThread(worker.get()), 1u);
    EXPECT_TRUE(worker.Ended());
    EXPECT_TRUE(passed);
    CloseHandle(event);
}

TEST(SuspendThread, DoesNotWaitForAThreadThatSendsAMessageToTheCaller) {
    const HWND window = MessageWindow();
    std::atomic<bool> answered{false};
    const Worker worker([&] {
        SendMessageW(window, WM_NULL, 0, 0);
        answered = true;
    });
    // The message is in this thread's queue, unanswered.
    ASSERT_TRUE(Eventually([] { return (GetQueueStatus(QS_SENDMESSAGE) >> 16 & QS_SENDMESSAGE) != 0; }));
    EXPECT_EQ(SuspendThread(worker.get()), 0u);
    HandleMessages();
    OthersHaveRun();
    EXPECT_FALSE(answered);
    EXPECT_EQ(ResumeThread(worker.get()), 1u);
    EXPECT_TRUE(worker.Ended());
    EXPECT_TRUE(answered);
    DestroyWindow(window);
}

TEST(SuspendThread, AnswersAMessageThatAThreadSendsPastTheDevice) {
    const HWND window = MessageWindow();
    const auto send = HostFunction<LRESULT WINAPI(HWND, UINT, WPARAM, LPARAM)>("user32.dll", "SendMessageW");
    std::atomic<bool> answered{false};
    std::atomic<bool> went{false};
    const Worker worker([&] {
        send(window, WM_NULL, 0, 0);
        answered = true;
        GetTickCount();
        went = true;
    });
    ASSERT_TRUE(Eventually([] { return (GetQueueStatus(QS_SENDMESSAGE) >> 16 & QS_SENDMESSAGE) != 0; }));
    EXPECT_EQ(SuspendThread(worker.get()), 0u);
    EXPECT_TRUE(answered);
    EXPECT_FALSE(went);
    EXPECT_EQ(ResumeThread(worker.get()), 1u);
    EXPECT_TRUE(worker.Ended());
    DestroyWindow(window);
}

TEST(SuspendThread, WaitsUntilAPlainCallOfTheHandsetIsOver) {
    std::atomic<int> step{0};
    const Worker worker([&] {
        HandsetEnterCall(FALSE);
        step = 1;
        RealPause(200);
        step = 2;
        HandsetLeaveCall();
        step = 3;
    });
    ASSERT_TRUE(Eventually([&] { return step == 1; }));
    EXPECT_EQ(SuspendThread(worker.get()), 0u);
    EXPECT_EQ(step, 2);
    OthersHaveRun();
    EXPECT_EQ(step, 2);
    ResumeThread(worker.get());
}

TEST(SuspendThread, DoesNotWaitForACallOfTheHandsetThatMayTakeLong) {
    std::atomic<int> step{0};
    std::atomic<bool> goOn{false};
    const Worker worker([&] {
        HandsetEnterCall(TRUE);
        step = 1;
        while (!goOn) RealPause(1);
        HandsetLeaveCall();
        step = 2;
    });
    ASSERT_TRUE(Eventually([&] { return step == 1; }));
    EXPECT_EQ(SuspendThread(worker.get()), 0u);
    goOn = true;
    OthersHaveRun();
    EXPECT_EQ(step, 1);
    ResumeThread(worker.get());
}

TEST(SuspendThread, ACallInsideAnotherDoesNotStop) {
    std::atomic<int> step{0};
    const Worker worker([&] {
        HandsetEnterCall(FALSE);
        step = 1;
        RealPause(100);
        GetTickCount();
        step = 2;
        HandsetLeaveCall();
        step = 3;
    });
    ASSERT_TRUE(Eventually([&] { return step == 1; }));
    EXPECT_EQ(SuspendThread(worker.get()), 0u);
    EXPECT_EQ(step, 2);
    ResumeThread(worker.get());
}

namespace {

// Leaves a platform call as an exception that is caught outside it does: without a word.
__attribute__((noinline)) void EnterAndJumpOut() {
    volatile int stackFrame = 1;
    HandsetEnterCall(FALSE);
    stackFrame = 2;
    static_cast<void>(stackFrame);
}

}  // namespace

TEST(SuspendThread, ForgetsACallThatAnExceptionJumpedOutOf) {
    Caller caller;
    const Worker worker([&] {
        EnterAndJumpOut();
        caller();
    });
    ExpectToStandStillWhileSuspended(caller, worker);
    caller.stop = true;
}

namespace {

std::atomic<int> g_handled{0};

LRESULT CALLBACK CountingProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_APP) return DefWindowProcW(window, message, wParam, lParam);
    GetTickCount();
    ++g_handled;
    return 0;
}

}  // namespace

// The program's own window procedure runs inside a call; there it is as free to be stopped as anywhere.
TEST(SuspendThread, HoldsAThreadInItsWindowProcedure) {
    g_handled = 0;
    std::atomic<HWND> window{nullptr};
    const Worker worker([&] {
        const HWND own = MessageWindow();
        SetWindowLongPtrW(own, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(CountingProc));
        window = own;
        MSG message;
        while (GetMessageW(&message, nullptr, 0, 0)) DispatchMessageW(&message);
        DestroyWindow(own);
    });
    ASSERT_TRUE(Eventually([&] { return window != nullptr; }));
    SendMessageW(window, WM_APP, 0, 0);
    EXPECT_EQ(g_handled, 1);
    EXPECT_EQ(SuspendThread(worker.get()), 0u);
    const auto notify =
        HostFunction<BOOL WINAPI(HWND, UINT, WPARAM, LPARAM)>("user32.dll", "SendNotifyMessageW");
    notify(window, WM_APP, 0, 0);
    OthersHaveRun();
    EXPECT_EQ(g_handled, 1);
    EXPECT_EQ(ResumeThread(worker.get()), 1u);
    EXPECT_TRUE(Eventually([] { return g_handled == 2; }));
    PostMessageW(window, WM_QUIT, 0, 0);
}

TEST(SuspendThread, AThreadThatWaitsForACriticalSectionDoesNotComeToOwnItMeanwhile) {
    CRITICAL_SECTION section;
    InitializeCriticalSection(&section);
    EnterCriticalSection(&section);
    std::atomic<int> step{0};
    {
        const Worker worker([&] {
            step = 1;
            EnterCriticalSection(&section);
            step = 2;
            LeaveCriticalSection(&section);
        });
        ASSERT_TRUE(Eventually([&] { return step == 1; }));
        OthersHaveRun();
        EXPECT_EQ(SuspendThread(worker.get()), 0u);
        LeaveCriticalSection(&section);
        OthersHaveRun();
        EXPECT_TRUE(Eventually([&] { return TryEnterCriticalSection(&section) != FALSE; }));
        EXPECT_EQ(step, 1);
        LeaveCriticalSection(&section);
        EXPECT_EQ(ResumeThread(worker.get()), 1u);
    }
    EXPECT_EQ(step, 2);
    DeleteCriticalSection(&section);
}
