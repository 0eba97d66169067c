#include "shell/worker_threads.h"

namespace {

constexpr DWORD kRefused = static_cast<DWORD>(-1);
constexpr DWORD kBetweenAttempts_ms = 10;
// The longest call of a worker is the monitor's wait for its next round, of 700 ms.
constexpr int kMostAttempts = 200;

}  // namespace

bool SuspendWorker(HANDLE thread) {
    for (int attempt = 0; attempt < kMostAttempts; ++attempt) {
        if (SuspendThread(thread) != kRefused) return true;
        if (WaitAnswering(thread, kBetweenAttempts_ms)) return false;
    }
    return false;
}

bool WaitAnswering(HANDLE object, DWORD time_ms) {
    const DWORD result = MsgWaitForMultipleObjectsEx(1, &object, time_ms, QS_SENDMESSAGE, 0);
    if (result == WAIT_TIMEOUT) return false;
    if (result != WAIT_OBJECT_0 + 1) return true;
    MSG message;
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
    return false;
}

void JoinWorker(HANDLE thread) {
    while (!WaitAnswering(thread, INFINITE)) {
    }
}
