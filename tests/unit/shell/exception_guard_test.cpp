#include "shell/exception_guard.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "tests/support/wait.h"

namespace {

// In the first page, where nothing ever is. The compiler must not see that; and a build that traps null
// pointers by itself is to meet the fault all the same.
int* volatile g_nowhere = reinterpret_cast<int*>(16);

void ReadNowhere() {
    *g_nowhere = *g_nowhere + 1;
}

TEST(ExceptionGuard, CodeWithoutAFaultRunsToItsEnd) {
    int rounds = 0;
    EXPECT_TRUE(RunGuarded([&] { ++rounds; }));
    EXPECT_EQ(rounds, 1);
}

TEST(ExceptionGuard, AnAccessViolationIsSurvivedAndReported) {
    bool after = false;
    EXPECT_FALSE(RunGuarded([&] {
        ReadNowhere();
        after = true;
    }));
    EXPECT_FALSE(after);
}

TEST(ExceptionGuard, ARaisedExceptionOfAnyCodeIsSurvived) {
    for (const DWORD code : {0xC0000005u, 0xE0000001u, 0x80000001u, 0x40010006u, 1u}) {
        EXPECT_FALSE(RunGuarded([&] { RaiseException(code, 0, 0, nullptr); })) << std::hex << code;
    }
}

TEST(ExceptionGuard, AnExceptionThatForbidsContinuingIsSurvived) {
    EXPECT_FALSE(RunGuarded([] { RaiseException(0xC0000025, EXCEPTION_NONCONTINUABLE, 0, nullptr); }));
}

TEST(ExceptionGuard, ACppExceptionIsSurvivedAndItsDestructorsRun) {
    struct Noted {
        bool& gone;
        ~Noted() { gone = true; }
    };
    bool gone = false;
    EXPECT_FALSE(RunGuarded([&] {
        const Noted noted{gone};
        throw std::runtime_error("fault");
    }));
    EXPECT_TRUE(gone);
}

TEST(ExceptionGuard, ACppExceptionThatIsHandledInsideIsNoFault) {
    std::string seen;
    EXPECT_TRUE(RunGuarded([&] {
        try {
            throw std::runtime_error("inside");
        } catch (const std::exception& fault) {
            seen = fault.what();
        }
    }));
    EXPECT_EQ(seen, "inside");
}

// A driver or the system may probe memory under a guard of its own.
TEST(ExceptionGuard, AFaultThatAnInnerGuardHandlesIsNoFaultOutside) {
    bool inner = true, after = false;
    EXPECT_TRUE(RunGuarded([&] {
        inner = RunGuarded(ReadNowhere);
        after = true;
    }));
    EXPECT_FALSE(inner);
    EXPECT_TRUE(after);
}

TEST(ExceptionGuard, AFaultFromDeepInsideIsSurvived) {
    struct Deep {
        static int Down(int depth) {
            volatile char filler[256] = {};
            if (depth == 0) ReadNowhere();
            return depth == 0 ? filler[0] : Down(depth - 1) + filler[1];
        }
    };
    EXPECT_FALSE(RunGuarded([] { Deep::Down(500); }));
}

TEST(ExceptionGuard, ManyFaultsInARowLeaveTheThreadAsItWas) {
    int survived = 0;
    for (int i = 0; i < 2000; ++i) survived += RunGuarded(ReadNowhere) ? 0 : 1;
    EXPECT_EQ(survived, 2000);
}

TEST(ExceptionGuard, ThreadsGuardThemselvesSideBySide) {
    struct Work {
        static DWORD WINAPI Run(LPVOID) {
            DWORD survived = 0;
            for (int i = 0; i < 500; ++i) survived += RunGuarded(ReadNowhere) ? 0 : 1;
            return survived;
        }
    };
    HANDLE threads[3];
    for (HANDLE& thread : threads) thread = CreateThread(nullptr, 0, Work::Run, nullptr, 0, nullptr);
    for (const HANDLE thread : threads) {
        EXPECT_EQ(WaitForSingleObject(thread, test::kDeadline_ms), WAIT_OBJECT_0);
        DWORD survived = 0;
        GetExitCodeThread(thread, &survived);
        EXPECT_EQ(survived, 500u);
        CloseHandle(thread);
    }
}

}  // namespace
