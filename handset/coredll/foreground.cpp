// Windows of all programs: which one is in front, and which there are.
//
// SetForegroundWindow: on the device the lowest bit of the handle asks for the windows that the window owns
// as well; the host brings them along by itself and does not know the bit.
#include <atomic>
#include <cstdint>

#include "handset/coredll/call_guard.h"
#include "handset/state/own_windows.h"

namespace {

// A window of the device's desktop that belongs to no other one.
bool StandsAlone(HWND window) {
    return GetAncestor(window, GA_PARENT) == GetDesktopWindow() && GetWindow(window, GW_OWNER) == nullptr;
}

bool HostAskedToHide() {
    STARTUPINFOW startup{};
    GetStartupInfoW(&startup);
    return (startup.dwFlags & STARTF_USESHOWWINDOW) != 0 && startup.wShowWindow == SW_HIDE;
}

}  // namespace

COREDLL_EXPORT BOOL WINAPI DeviceSetForegroundWindow(HWND window) {
    const coredll::CallGuard guard(coredll::CallKind::CallsBack);
    const auto value = reinterpret_cast<std::uintptr_t>(window) & ~std::uintptr_t{1};
    return SetForegroundWindow(reinterpret_cast<HWND>(value));
}

// The windows of the device are those of its programs; whatever else stands on the host's desktop, another
// handset among it, is not there.
COREDLL_EXPORT HWND WINAPI DeviceFindWindowW(const wchar_t* windowClass, const wchar_t* title) {
    const coredll::CallGuard guard(coredll::CallKind::CallsBack);
    return handset::FindOwnWindow(windowClass, title);
}

// A program that is started comes to the front, whatever is there: its first window is shown as such, however
// the host was asked to show it (minimised, say, or behind the others).
COREDLL_EXPORT BOOL WINAPI DeviceShowWindow(HWND window, int show) {
    const coredll::CallGuard guard(coredll::CallKind::CallsBack);
    static std::atomic<bool> started = false;
    const bool meantToHide = show == SW_HIDE && !HostAskedToHide();
    if (meantToHide || !StandsAlone(window) || started.exchange(true)) return ShowWindow(window, show);
    const BOOL before = ShowWindow(window, SW_SHOW);
    SetForegroundWindow(window);
    return before;
}
