// Threads to be suspended: one that runs a body, and what it can do.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "handset_fixture.h"

inline DWORD WINAPI RunBody(void* body) {
    (*static_cast<std::function<void()>*>(body))();
    return 0;
}

// A thread that runs a body; joined at the end of its scope.
class Worker {
  public:
    explicit Worker(std::function<void()> body, DWORD flags = 0) : body_(std::move(body)) {
        handle_ = CreateThread(nullptr, 0, RunBody, &body_, flags, nullptr);
    }
    ~Worker() {
        EXPECT_TRUE(Ended());
        CloseHandle(handle_);
    }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    HANDLE get() const { return handle_; }
    // Handles messages meanwhile.
    bool Ended() const {
        return Eventually([this] {
            HandleMessages();
            return WaitForSingleObject(handle_, 0) == WAIT_OBJECT_0;
        });
    }

  private:
    std::function<void()> body_;
    HANDLE handle_;
};

// A thread that may run has run by now: more threads than the machine has processors were started, and each
// was given its turn many times over.
inline void OthersHaveRun() {
    SYSTEM_INFO machine{};
    GetSystemInfo(&machine);
    const auto takeTurns = [] {
        for (int turn = 0; turn < 20; ++turn) RealPause(1);
    };
    std::vector<std::unique_ptr<Worker>> others;
    for (DWORD i = 0; i <= machine.dwNumberOfProcessors; ++i)
        others.push_back(std::make_unique<Worker>(takeTurns));
    for (const auto& other : others) EXPECT_TRUE(other->Ended());
}

inline HWND MessageWindow() {
    return CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
}

// A thread that makes one platform call after the other and counts them, until it is told to stop.
struct Caller {
    std::atomic<int> calls{0};
    std::atomic<bool> stop{false};
    void operator()() {
        while (!stop) {
            GetTickCount();
            ++calls;
        }
    }
    bool Moves() {
        const int before = calls;
        return Eventually([this, before] { return calls > before; });
    }
    bool StandsStill() {
        const int before = calls;
        OthersHaveRun();
        return calls == before;
    }
};

inline void ExpectToStandStillWhileSuspended(Caller& caller, const Worker& worker) {
    EXPECT_TRUE(caller.Moves());
    EXPECT_EQ(SuspendThread(worker.get()), 0u);
    EXPECT_TRUE(caller.StandsStill());
    EXPECT_EQ(ResumeThread(worker.get()), 1u);
    EXPECT_TRUE(caller.Moves());
}
