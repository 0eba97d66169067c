#include "handset/state/own_windows.h"

#include <string>

#include "handset/base/owned.h"
#include "handset/state/handset_state.h"

namespace handset {
namespace {

// An event of this name stands for each program of the handset, and goes with it however it ends.
std::wstring SignOf(DWORD process) {
    return StateObjectName((L"Program-" + std::to_wstring(process)).c_str());
}

}  // namespace

void JoinHandset() {
    // Never closed: the process's end does that.
    // cppcheck-suppress leakReturnValNotUsed
    CreateEventW(nullptr, TRUE, FALSE, SignOf(GetCurrentProcessId()).c_str());
}

bool IsOwnWindow(HWND window) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process == GetCurrentProcessId()) return true;
    if (process == 0) return false;
    return static_cast<bool>(OwnedHandle(OpenEventW(SYNCHRONIZE, FALSE, SignOf(process).c_str())));
}

HWND FindOwnWindow(const wchar_t* windowClass, const wchar_t* title) {
    HWND window = nullptr;
    do {
        window = FindWindowExW(nullptr, window, windowClass, title);
    } while (window != nullptr && !IsOwnWindow(window));
    return window;
}

}  // namespace handset
