// Popup menus: the host's own, kept inside the handset's display and off the shell's bar, and as large as the
// display wants them.
#include <algorithm>

#include "handset/base/module_edge.h"
#include "handset/base/window_class.h"
#include "handset/coredll/kernel/call_guard.h"
#include "handset/coredll/kernel/platform_call.h"
#include "handset/coredll/windows/dialog_scale.h"
#include "handset/coredll/windows/large_menus.h"

namespace {

constexpr wchar_t kMenuClass[] = L"#32768";
// To a menu's window: which menu is it? The desktop's headers name it, the device's do not.
constexpr UINT kMenuOfWindow = 0x01E1;

LONG Clamped(LONG position, LONG size, LONG low, LONG high) {
    return std::max(low, std::min(position, high - size));
}

HMENU MenuOf(HWND window) {
    return reinterpret_cast<HMENU>(SendMessageW(window, kMenuOfWindow, 0, 0));
}

// The entry of another open menu from which this one opened; empty for a menu that nobody's entry opened.
RECT OpeningEntry(HWND submenu) {
    const HMENU wanted = MenuOf(submenu);
    for (HWND window = nullptr; (window = FindWindowExW(nullptr, window, kMenuClass, nullptr)) != nullptr;) {
        if (window == submenu || GetWindowThreadProcessId(window, nullptr) != GetCurrentThreadId()) continue;
        const HMENU menu = MenuOf(window);
        for (int i = 0; i < GetMenuItemCount(menu); ++i) {
            RECT entry = {};
            if (GetSubMenu(menu, i) != wanted) continue;
            return GetMenuItemRect(nullptr, menu, static_cast<UINT>(i), &entry) ? entry : RECT{};
        }
    }
    return {};
}

// A submenu for which there is no room at the side stands above the entry that opened it, or below.
LONG TopBesideEntry(const RECT& placed, const RECT& entry, const RECT& display) {
    RECT covered = {};
    if (!IntersectRect(&covered, &placed, &entry)) return placed.top;
    const LONG height = placed.bottom - placed.top;
    const LONG above = entry.top - height;
    return above >= display.top ? above : Clamped(entry.bottom, height, display.top, display.bottom);
}

// Where `place` goes: into the display, and there not under the stylus, which would choose from the menu when
// it is lifted from what opened it.
POINT PlaceInDisplay(const RECT& place, const RECT& display) {
    const LONG width = place.right - place.left;
    const LONG height = place.bottom - place.top;
    POINT corner = {Clamped(place.left, width, display.left, display.right),
                    Clamped(place.top, height, display.top, display.bottom)};
    POINT stylus = {};
    GetCursorPos(&stylus);
    const RECT placed = {corner.x, corner.y, corner.x + width, corner.y + height};
    const bool moved = corner.x != place.left || corner.y != place.top;
    if (!moved || !PtInRect(&placed, stylus)) return corner;
    const LONG entryHeight = GetSystemMetrics(SM_CYMENU);
    const LONG above = stylus.y - entryHeight - height;
    corner.y =
        above >= display.top ? above : Clamped(stylus.y + entryHeight, height, display.top, display.bottom);
    return corner;
}

void KeepInDisplay(HWND menu) {
    RECT place = {};
    RECT display = {};
    GetWindowRect(menu, &place);
    HandsetWorkArea(&display);
    POINT corner = PlaceInDisplay(place, display);
    RECT placed = place;
    OffsetRect(&placed, corner.x - place.left, corner.y - place.top);
    corner.y = TopBesideEntry(placed, OpeningEntry(menu), display);
    if (corner.x == place.left && corner.y == place.top) return;
    SetWindowPos(menu, nullptr, corner.x, corner.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// The host keeps menus inside its own screen; the handset's display may be a small part of it, and a menu
// would open over the phone's keys or beside it. One host places a menu when it makes its window, another
// when it shows it.
LRESULT CALLBACK KeepInDisplayProc(int code, WPARAM wParam, LPARAM lParam) try {
    const auto& call = *reinterpret_cast<const CWPSTRUCT*>(lParam);
    const bool placed = call.message == WM_MOVE || call.message == WM_WINDOWPOSCHANGED;
    if (code == HC_ACTION && placed && handset::HasClass(call.hwnd, kMenuClass)) KeepInDisplay(call.hwnd);
    return CallNextHookEx(nullptr, code, wParam, lParam);
} catch (...) {
    return handset::EdgeAnswer<LRESULT>();
}

class CMenuPlacement {
  public:
    CMenuPlacement()
        : hook_(SetWindowsHookExW(WH_CALLWNDPROC, KeepInDisplayProc, nullptr, GetCurrentThreadId())) {}
    ~CMenuPlacement() {
        if (hook_ != nullptr) UnhookWindowsHookEx(hook_);
    }
    CMenuPlacement(const CMenuPlacement&) = delete;
    CMenuPlacement& operator=(const CMenuPlacement&) = delete;

  private:
    HHOOK hook_;
};

}  // namespace

COREDLL_EXPORT BOOL WINAPI DeviceTrackPopupMenuEx(HMENU menu, UINT flags, int x, int y, HWND window,
                                                  TPMPARAMS* parameters) try {
    const coredll::CCallGuard guard(coredll::CallKind::CallsBack);
    const CMenuPlacement placement;
    const coredll::CLargeMenus large(menu, window, coredll::DisplayScale());
    return TrackPopupMenuEx(menu, flags, x, y, window, parameters);
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}
