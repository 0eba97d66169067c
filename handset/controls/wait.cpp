#include "handset/controls/wait.h"

#include <windows.h>

namespace panel {
namespace {

constexpr DWORD kPollPeriod_ms = 20;

}  // namespace

bool WaitUntil(const std::function<bool()>& condition, unsigned timeout_ms) {
    const ULONGLONG deadline = GetTickCount64() + timeout_ms;
    while (!condition()) {
        if (GetTickCount64() >= deadline) return false;
        Sleep(kPollPeriod_ms);
    }
    return true;
}

}  // namespace panel
