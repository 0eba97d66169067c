// Windows as the device makes them: no frame unless one is asked for, clipped by their neighbours, and one
// with no size of its own fills the display below the shell's bar. A list view begins with the system's font,
// and its scroll bar goes with the picture behind its rows.
#include <windows.h>

#include <commctrl.h>

#include <cwchar>

#include "handset/base/module_edge.h"
#include "handset/coredll/drawing/system_font.h"
#include "handset/coredll/kernel/call_guard.h"
#include "handset/coredll/kernel/platform_call.h"
#include "handset/coredll/windows/disabled_windows.h"
#include "handset/coredll/windows/list_scroll_bar.h"
#include "handset/coredll/windows/tap_and_hold.h"
#include "handset/coredll/windows/top_bar.h"
#include "handset/coredll/windows/uncovering.h"

namespace {

using coredll::CallKind;
using coredll::CCallGuard;

struct Place {
    int x;
    int y;
    int width;
    int height;
};

constexpr bool IsDefault(int value) {
    return value == CW_USEDEFAULT;
}

// Device differs: a position that a program gives for a window of its own counts from the corner of the
// host's screen, as every position that it can read back does.
Place OnDisplay(const Place& asked) {
    if (!IsDefault(asked.x) && !IsDefault(asked.width)) return asked;
    RECT area;
    HandsetWorkArea(&area);
    Place place = asked;
    if (IsDefault(asked.x)) {
        place.x = area.left;
        place.y = area.top;
    }
    if (IsDefault(asked.width)) {
        place.width = area.right - place.x;
        place.height = area.bottom - place.y;
    }
    return place;
}

bool IsListView(const wchar_t* windowClass) {
    return !IS_INTRESOURCE(windowClass) && _wcsicmp(windowClass, WC_LISTVIEWW) == 0;
}

}  // namespace

COREDLL_EXPORT HWND WINAPI DeviceCreateWindowExW(DWORD extendedStyle, const wchar_t* windowClass,
                                                 const wchar_t* title, DWORD style, int x, int y, int width,
                                                 int height, HWND parent, HMENU menu, HINSTANCE module,
                                                 void* parameter) try {
    const CCallGuard guard(CallKind::CallsBack);
    coredll::WatchTapAndHold();
    coredll::WatchUncovering();
    coredll::KeepDisabledWindowsInactive();
    style |= WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
    Place place{x, y, width, height};
    if ((style & WS_CHILD) == 0 && parent != HWND_MESSAGE) {
        // Without this the host adds a caption.
        style |= WS_POPUP;
        place = OnDisplay(place);
    }
    const HWND window = CreateWindowExW(extendedStyle, windowClass, title, style, place.x, place.y,
                                        place.width, place.height, parent, menu, module, parameter);
    const bool isPrograms = (style & WS_CHILD) == 0 && parent == nullptr && IsDefault(x) && IsDefault(width);
    if (window != nullptr && isPrograms) coredll::ShowTopBarAbove(window);
    if (window != nullptr && IsListView(windowClass)) {
        coredll::GiveSystemFont(window);
        coredll::DrawScrollBarLikePicture(window);
    }
    return window;
} catch (...) {
    return handset::EdgeAnswer<HWND>();
}
