// Windows of all programs: which one is in front, and which there are.
//
// SetForegroundWindow: on the device the lowest bit of the handle asks for the windows that the window owns
// as well; the host brings them along by itself and does not know the bit. In the place of a window that is
// disabled comes the box that it waits for.
#include <atomic>
#include <cstdint>

#include "handset/base/module_edge.h"
#include "handset/coredll/kernel/call_guard.h"
#include "handset/state/own_windows.h"

namespace {

// A window of the device's desktop that belongs to no other one.
bool StandsAlone(HWND window) {
    return GetAncestor(window, GA_PARENT) == GetDesktopWindow() && GetWindow(window, GW_OWNER) == nullptr;
}

struct Search {
    HWND owner;
    HWND box;
};

BOOL CALLBACK FindBox(HWND window, LPARAM data) try {
    auto& search = *reinterpret_cast<Search*>(data);
    if (GetWindow(window, GW_OWNER) != search.owner || !IsWindowEnabled(window) || !IsWindowVisible(window))
        return TRUE;
    search.box = window;
    return FALSE;
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}

// The uppermost window that `owner` owns and that takes input; null when there is none.
HWND BoxOf(HWND owner) {
    Search search = {owner, nullptr};
    EnumWindows(FindBox, reinterpret_cast<LPARAM>(&search));
    return search.box;
}

bool HostAskedToHide() {
    STARTUPINFOW startup{};
    GetStartupInfoW(&startup);
    return (startup.dwFlags & STARTF_USESHOWWINDOW) != 0 && startup.wShowWindow == SW_HIDE;
}

}  // namespace

COREDLL_EXPORT BOOL WINAPI DeviceSetForegroundWindow(HWND window) try {
    const coredll::CCallGuard guard(coredll::CallKind::CallsBack);
    const auto value = reinterpret_cast<std::uintptr_t>(window) & ~std::uintptr_t{1};
    const HWND asked = reinterpret_cast<HWND>(value);
    const HWND box = IsWindowEnabled(asked) ? nullptr : BoxOf(asked);
    return SetForegroundWindow(box != nullptr ? box : asked);
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}

// The windows of the device are those of its programs; whatever else stands on the host's desktop, another
// handset among it, is not there.
COREDLL_EXPORT HWND WINAPI DeviceFindWindowW(const wchar_t* windowClass, const wchar_t* title) try {
    const coredll::CCallGuard guard(coredll::CallKind::CallsBack);
    return handset::FindOwnWindow(windowClass, title);
} catch (...) {
    return handset::EdgeAnswer<HWND>();
}

// A program that is started comes to the front, whatever is there: its first window is shown as such, however
// the host was asked to show it (minimised, say, or behind the others).
COREDLL_EXPORT BOOL WINAPI DeviceShowWindow(HWND window, int show) try {
    const coredll::CCallGuard guard(coredll::CallKind::CallsBack);
    static std::atomic<bool> started = false;
    const bool meantToHide = show == SW_HIDE && !HostAskedToHide();
    if (meantToHide || !StandsAlone(window) || started.exchange(true)) return ShowWindow(window, show);
    const BOOL before = ShowWindow(window, SW_SHOW);
    SetForegroundWindow(window);
    return before;
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}
