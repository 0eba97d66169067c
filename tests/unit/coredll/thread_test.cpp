// The beginning and the end of threads.
#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>

#include "handset_fixture.h"
#include "tests/support/process_counts.h"
#include "worker.h"

namespace {

std::atomic<int> g_step{0};

DWORD WINAPI OneStep(void* code) {
    g_step = 1;
    return static_cast<DWORD>(reinterpret_cast<UINT_PTR>(code));
}

DWORD WINAPI ManyCalls(void*) {
    for (;;) {
        ++g_step;
        GetTickCount();
    }
}

DWORD WINAPI ExitsEarly(void*) {
    ExitThread(17);
}

DWORD WINAPI WaitsForEver(void* event) {
    g_step = 1;
    return WaitForSingleObject(static_cast<HANDLE>(event), INFINITE);
}

DWORD CodeOf(HANDLE thread) {
    EXPECT_EQ(WaitForSingleObject(thread, 10000), static_cast<DWORD>(WAIT_OBJECT_0));
    DWORD code = STILL_ACTIVE;
    GetExitCodeThread(thread, &code);
    return code;
}

class Threads : public testing::Test {
  protected:
    void SetUp() override { g_step = 0; }
};

// What a program does at the end of a thread, as the C++ runtime does with its own locks.
void WINAPI CallAtTheEnd(void*) {
    Sleep(0);
}

TEST_F(Threads, APlatformCallAtTheVeryEndOfAThreadLeavesNoHandlesBehind) {
    Sleep(0);
    // Called after the one with which COREDLL gives its own record of the thread back.
    const DWORD slot = FlsAlloc(CallAtTheEnd);
    const auto run = [slot] {
        const HANDLE thread = CreateThread(
            nullptr, 0,
            [](LPVOID taken) -> DWORD {
                FlsSetValue(*static_cast<const DWORD*>(taken), taken);
                return 0;
            },
            const_cast<DWORD*>(&slot), 0, nullptr);
        WaitForSingleObject(thread, INFINITE);
        CloseHandle(thread);
    };
    for (int warm = 0; warm < 3; ++warm) run();
    const std::size_t before = test::HandlesOf(GetCurrentProcessId());
    for (int round = 0; round < 20; ++round) run();
    EXPECT_LE(test::HandlesOf(GetCurrentProcessId()), before + 4);
    FlsFree(slot);
}

}  // namespace

TEST_F(Threads, GiveTheCodeThatTheyEndWith) {
    DWORD id = 0;
    const HANDLE thread = CreateThread(nullptr, 0, OneStep, reinterpret_cast<void*>(42), 0, &id);
    EXPECT_NE(id, 0u);
    EXPECT_EQ(CodeOf(thread), 42u);
    CloseHandle(thread);
    const HANDLE early = CreateThread(nullptr, 0, ExitsEarly, nullptr, 0, nullptr);
    EXPECT_EQ(CodeOf(early), 17u);
    CloseHandle(early);
}

TEST_F(Threads, CreatedSuspendedTheyRunNothingBeforeTheyAreResumed) {
    const HANDLE thread = CreateThread(nullptr, 0, OneStep, nullptr, CREATE_SUSPENDED, nullptr);
    OthersHaveRun();
    EXPECT_EQ(g_step, 0);
    EXPECT_EQ(SuspendThread(thread), 1u);
    EXPECT_EQ(ResumeThread(thread), 2u);
    OthersHaveRun();
    EXPECT_EQ(g_step, 0);
    EXPECT_EQ(ResumeThread(thread), 1u);
    EXPECT_EQ(CodeOf(thread), 0u);
    EXPECT_EQ(g_step, 1);
    CloseHandle(thread);
}

TEST_F(Threads, SuspendedBeforeTheirFirstCallTheyStopThere) {
    for (int round = 0; round < 50; ++round) {
        const HANDLE thread = CreateThread(nullptr, 0, OneStep, nullptr, 0, nullptr);
        // It may have come to its end by now; then there is nothing to suspend.
        const DWORD previous = SuspendThread(thread);
        if (previous == 0) {
            EXPECT_EQ(WaitForSingleObject(thread, 2), static_cast<DWORD>(WAIT_TIMEOUT));
            EXPECT_EQ(ResumeThread(thread), 1u);
        }
        CodeOf(thread);
        CloseHandle(thread);
    }
}

TEST_F(Threads, AnEndedOneCannotBeSuspended) {
    const HANDLE thread = CreateThread(nullptr, 0, OneStep, nullptr, 0, nullptr);
    CodeOf(thread);
    EXPECT_EQ(SuspendThread(thread), static_cast<DWORD>(-1));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ACCESS_DENIED));
    CloseHandle(thread);
}

TEST_F(Threads, AreTerminatedWhileTheyRunWaitOrAreSuspended) {
    const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    const HANDLE running = CreateThread(nullptr, 0, ManyCalls, nullptr, 0, nullptr);
    EXPECT_TRUE(Eventually([] { return g_step > 100; }));
    EXPECT_TRUE(TerminateThread(running, 5));
    EXPECT_EQ(CodeOf(running), 5u);
    const HANDLE suspended = CreateThread(nullptr, 0, ManyCalls, nullptr, 0, nullptr);
    EXPECT_EQ(SuspendThread(suspended), 0u);
    EXPECT_TRUE(TerminateThread(suspended, 6));
    EXPECT_EQ(CodeOf(suspended), 6u);
    g_step = 0;
    const HANDLE waiting = CreateThread(nullptr, 0, WaitsForEver, event, 0, nullptr);
    EXPECT_TRUE(Eventually([] { return g_step == 1; }));
    EXPECT_TRUE(TerminateThread(waiting, 7));
    EXPECT_EQ(CodeOf(waiting), 7u);
    for (const HANDLE handle : {running, suspended, waiting, event}) CloseHandle(handle);
}

TEST_F(Threads, NoLockIsLostWithATerminatedOne) {
    for (int round = 0; round < 20; ++round) {
        g_step = 0;
        const HANDLE thread = CreateThread(
            nullptr, 0,
            [](void*) -> DWORD {
                for (;;) {
                    LocalFree(LocalAlloc(LMEM_FIXED, 100));
                    ++g_step;
                }
            },
            nullptr, 0, nullptr);
        ASSERT_TRUE(Eventually([] { return g_step > 10; }));
        ASSERT_TRUE(TerminateThread(thread, 0));
        const HLOCAL memory = LocalAlloc(LMEM_FIXED, 100);
        EXPECT_NE(memory, nullptr);
        LocalFree(memory);
        CodeOf(thread);
        CloseHandle(thread);
    }
}
