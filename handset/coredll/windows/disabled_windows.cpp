#include "handset/coredll/windows/disabled_windows.h"

#include <cstdint>

#include "handset/base/module_edge.h"

namespace coredll {
namespace {

// How often a window is held, as a property of it.
constexpr wchar_t kHeld[] = L"Kora held disabled";

thread_local HHOOK t_hook = nullptr;

LRESULT CALLBACK OnActivation(int code, WPARAM wParam, LPARAM lParam) try {
    // No window: another thread has the active one now.
    const HWND activated = reinterpret_cast<HWND>(wParam);
    if (code == HCBT_ACTIVATE && activated != nullptr &&
        (!IsWindowEnabled(activated) || GetPropW(activated, kHeld) != nullptr)) {
        return 1;
    }
    return CallNextHookEx(t_hook, code, wParam, lParam);
} catch (...) {
    return handset::EdgeAnswer<LRESULT>();
}

}  // namespace

void KeepDisabledWindowsInactive() {
    if (t_hook == nullptr) t_hook = SetWindowsHookExW(WH_CBT, OnActivation, nullptr, GetCurrentThreadId());
}

void HoldDisabled(HWND window, bool hold) {
    const auto held = reinterpret_cast<std::intptr_t>(GetPropW(window, kHeld)) + (hold ? 1 : -1);
    if (held > 0) {
        SetPropW(window, kHeld, reinterpret_cast<HANDLE>(held));
    } else {
        RemovePropW(window, kHeld);
    }
}

}  // namespace coredll
