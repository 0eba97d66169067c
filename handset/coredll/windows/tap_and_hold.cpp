#include "handset/coredll/windows/tap_and_hold.h"

#include <windows.h>

#include <commctrl.h>

#include <cstdlib>

#include "handset/base/module_edge.h"
#include "handset/base/window_class.h"

namespace coredll {
namespace {

constexpr UINT kHold_ms = 700;  // of real time: it is a hand that holds
constexpr int kStill_px = 6;

// What the stylus of this thread's windows does.
struct Stylus {
    HHOOK hook = nullptr;
    UINT_PTR timer = 0;
    HWND list = nullptr;
    POINT place{};  // of the touch, in the list
};
thread_local Stylus t_stylus;

POINT PlaceOf(const MSG& message) {
    return {static_cast<short>(LOWORD(message.lParam)), static_cast<short>(HIWORD(message.lParam))};
}

bool IsStill(const POINT& place) {
    return std::abs(place.x - t_stylus.place.x) <= kStill_px &&
           std::abs(place.y - t_stylus.place.y) <= kStill_px;
}

void Forget() {
    if (t_stylus.timer != 0) KillTimer(nullptr, t_stylus.timer);
    t_stylus.timer = 0;
}

void CALLBACK OnHeld(HWND, UINT, UINT_PTR, DWORD) try {
    Forget();
    POINT place = t_stylus.place;
    if (!ClientToScreen(t_stylus.list, &place)) return;
    PostMessageW(t_stylus.list, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(t_stylus.list),
                 MAKELPARAM(static_cast<WORD>(place.x), static_cast<WORD>(place.y)));
} catch (...) {
    handset::EdgeAnswer<void>();
}

void Watch(const MSG& message) {
    if (message.message == WM_LBUTTONDOWN && handset::HasClass(message.hwnd, WC_LISTVIEWW)) {
        Forget();
        t_stylus.list = message.hwnd;
        t_stylus.place = PlaceOf(message);
        t_stylus.timer = SetTimer(nullptr, 0, kHold_ms, OnHeld);
    } else if (message.message == WM_LBUTTONUP ||
               (message.message == WM_MOUSEMOVE && !IsStill(PlaceOf(message)))) {
        Forget();
    }
}

LRESULT CALLBACK OnMessage(int code, WPARAM removed, LPARAM message) try {
    if (code == HC_ACTION && removed == PM_REMOVE) Watch(*reinterpret_cast<const MSG*>(message));
    return CallNextHookEx(t_stylus.hook, code, removed, message);
} catch (...) {
    return handset::EdgeAnswer<LRESULT>();
}

}  // namespace

void WatchTapAndHold() {
    if (t_stylus.hook == nullptr) {
        t_stylus.hook = SetWindowsHookExW(WH_GETMESSAGE, OnMessage, nullptr, GetCurrentThreadId());
    }
}

}  // namespace coredll
