// Waiting for a condition with a deadline, never for a while.
#pragma once

#include <windows.h>

namespace test {

// How long a condition may take before the test fails, on a loaded machine.
inline constexpr DWORD kDeadline_ms = 20000;

// Runs `condition` until it is true or the deadline has passed; the last answer. Messages of the calling
// thread's windows are handled meanwhile.
template <typename Condition>
bool WaitFor(Condition condition, DWORD deadline_ms = kDeadline_ms) {
    const ULONGLONG end = GetTickCount64() + deadline_ms;
    while (!condition()) {
        if (GetTickCount64() >= end) return condition();
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    }
    return true;
}

}  // namespace test
