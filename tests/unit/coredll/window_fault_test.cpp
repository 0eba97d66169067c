// What becomes of a program whose window procedure faults.
#include <gtest/gtest.h>
#include <windows.h>

#include "handset/include/seh.h"

DEFINE_GUARDED_CALL(GuardedInWindowFaultTest);
extern "C" BOOL GuardedInWindowFaultTest(void (*function)(void*), void* argument);

namespace {

constexpr int kFault = static_cast<int>(EXCEPTION_ACCESS_VIOLATION);

void Fault(void*) {
    const ULONG_PTR access[] = {1, 16};
    RaiseException(EXCEPTION_ACCESS_VIOLATION, 0, 2, access);
}

// A C++ frame with something to clean up, as most of a program's are.
struct Cleaned {
    explicit Cleaned(HWND owner) : window(owner) {}
    ~Cleaned() { SetWindowTextW(window, L"cleaned"); }
    HWND window;
};

UINT g_faultsAt = WM_NULL;
bool g_guarded = false;
int g_survived = 0;

LRESULT CALLBACK FaultingProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == g_faultsAt) {
        const Cleaned cleaned(window);
        if (!g_guarded) Fault(nullptr);
        if (!GuardedInWindowFaultTest(Fault, nullptr)) ++g_survived;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

HWND MakeWindow(UINT faultsAt, bool guarded) {
    g_faultsAt = faultsAt;
    g_guarded = guarded;
    g_survived = 0;
    WNDCLASSW type = {};
    type.lpfnWndProc = FaultingProc;
    type.hInstance = GetModuleHandleW(nullptr);
    type.lpszClassName = L"FaultingWindow";
    RegisterClassW(&type);
    return CreateWindowExW(0, type.lpszClassName, L"", WS_VISIBLE, 0, 0, 50, 50, nullptr, nullptr,
                           type.hInstance, nullptr);
}

void Paint(HWND window) {
    InvalidateRect(window, nullptr, FALSE);
    UpdateWindow(window);
}

// A message of another thread's, as a panel or a timer of the system sends it.
DWORD WINAPI SendCommand(void* window) {
    SendMessageW(static_cast<HWND>(window), WM_COMMAND, 0, 0);
    return 0;
}

void BeSentACommand(HWND window) {
    const HANDLE sender = CreateThread(nullptr, 0, SendCommand, window, 0, nullptr);
    MSG message;
    while (MsgWaitForMultipleObjects(1, &sender, FALSE, INFINITE, QS_ALLINPUT) != WAIT_OBJECT_0) {
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    }
    CloseHandle(sender);
}

}  // namespace

TEST(WindowFaultDeathTest, AFaultWhileAWindowIsMadeEndsTheProgram) {
    EXPECT_EXIT(MakeWindow(WM_CREATE, false), testing::ExitedWithCode(kFault), "");
}

TEST(WindowFaultDeathTest, AFaultWhileAWindowIsPaintedEndsTheProgram) {
    EXPECT_EXIT(Paint(MakeWindow(WM_PAINT, false)), testing::ExitedWithCode(kFault), "");
}

TEST(WindowFaultDeathTest, AFaultAtAMessageOfAnotherThreadEndsTheProgram) {
    EXPECT_EXIT(BeSentACommand(MakeWindow(WM_COMMAND, false)), testing::ExitedWithCode(kFault), "");
}

// The edge of a call ends what C++ throws, and nothing else.
TEST(WindowFault, AFaultPassesTheCallThatRunsTheProcedure) {
    const auto call = [](void*) {
        g_faultsAt = WM_USER;
        g_guarded = false;
        CallWindowProcW(FaultingProc, nullptr, WM_USER, 0, 0);
    };
    EXPECT_FALSE(GuardedInWindowFaultTest(call, nullptr));
}

TEST(WindowFault, AFaultUnderAGuardIsTheGuardsAffair) {
    const HWND window = MakeWindow(WM_CREATE, true);
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(g_survived, 1);
    g_faultsAt = WM_COMMAND;
    BeSentACommand(window);
    EXPECT_EQ(g_survived, 2);
    g_faultsAt = WM_NULL;
    DestroyWindow(window);
}
