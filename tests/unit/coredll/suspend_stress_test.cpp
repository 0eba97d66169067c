// SuspendThread against a thread that calls the platform as fast as it can.
#include <gtest/gtest.h>
#include <windows.h>

#include <atomic>

#include "handset/coredll/kernel/platform_call.h"
#include "handset_fixture.h"

namespace {

constexpr int kRounds = 1000;

// A device that is called like the tuner: one lock, several threads.
struct Device {
    CRITICAL_SECTION lock;
    std::atomic<int> begun{0};
    std::atomic<int> done{0};

    void Call() {
        const CPlatformCall call;
        ++begun;
        enter(&lock);
        // Something of the platform's inside the call: it must not stop there, the lock is held.
        GetTickCount();
        leave(&lock);
        ++done;
    }
    // The device's own lock is the host's, as in the handset's DLLs.
    void(WINAPI* enter)(CRITICAL_SECTION*) =
        HostFunction<void WINAPI(CRITICAL_SECTION*)>("kernel32.dll", "EnterCriticalSection");
    void(WINAPI* leave)(CRITICAL_SECTION*) =
        HostFunction<void WINAPI(CRITICAL_SECTION*)>("kernel32.dll", "LeaveCriticalSection");
};

struct Hammer {
    HWND window = nullptr;
    Device device;
    std::atomic<int> returned{0};
    std::atomic<bool> stop{false};
};

void Draw() {
    const HDC screen = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(screen);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
}

DWORD WINAPI Hammering(void* data) {
    auto& hammer = *static_cast<Hammer*>(data);
    void (*const calls[])(Hammer&) = {
        [](Hammer& own) { own.device.Call(); },
        [](Hammer&) { LocalFree(LocalAlloc(LMEM_FIXED, 64)); },
        [](Hammer&) { Draw(); },
        [](Hammer& own) { InvalidateRect(own.window, nullptr, FALSE); },
        [](Hammer&) { Sleep(0); },
        [](Hammer& own) { SetWindowTextW(own.window, L"text"); },
        [](Hammer& own) { SendMessageW(own.window, WM_NULL, 0, 0); },
        [](Hammer&) { CloseHandle(CreateEventW(nullptr, TRUE, FALSE, nullptr)); },
    };
    for (std::size_t i = 0; !hammer.stop; ++i) {
        // The platform's windows answer only now and then; the device is called much more often.
        calls[i % 64 == 0 ? i / 64 % std::size(calls) : i % 5](hammer);
        ++hammer.returned;
    }
    return 0;
}

}  // namespace

TEST(SuspendStress, AThousandRoundsNeitherLockUpNorLetACallThrough) {
    Hammer hammer;
    InitializeCriticalSection(&hammer.device.lock);
    hammer.window =
        CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    const HANDLE thread = CreateThread(nullptr, 0, Hammering, &hammer, 0, nullptr);
    int moved = 0;
    for (int round = 0; round < kRounds; ++round) {
        const int before = hammer.returned;
        ASSERT_EQ(SuspendThread(thread), 0u);
        const int begun = hammer.device.begun;
        const int returned = hammer.returned;
        EXPECT_EQ(hammer.device.done, begun);
        // Each of these needs a lock that the thread would have taken with it.
        hammer.device.Call();
        Draw();
        HandleMessages();
        if (round % 8 == 0) RealPause(1);
        EXPECT_EQ(hammer.device.begun, begun + 1);
        EXPECT_EQ(hammer.returned, returned);
        ASSERT_EQ(ResumeThread(thread), 1u);
        HandleMessages();
        if (round % 4 == 0) RealPause(0);
        moved += hammer.returned != before ? 1 : 0;
    }
    hammer.stop = true;
    EXPECT_TRUE(Eventually([thread] {
        HandleMessages();
        return WaitForSingleObject(thread, 0) == WAIT_OBJECT_0;
    }));
    EXPECT_GT(moved, kRounds / 10);
    CloseHandle(thread);
    DestroyWindow(hammer.window);
    DeleteCriticalSection(&hammer.device.lock);
}
