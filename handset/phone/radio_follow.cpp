// The radio's windows and the panel's.
#include "handset/phone/radio_follow.h"

#include "handset/base/owned.h"
#include "handset/controls/host_folder.h"
#include "handset/controls/radio_windows.h"
#include "handset/state/screen_size.h"

namespace panel {
namespace {

constexpr UINT kStay = SWP_NOACTIVATE | SWP_ASYNCWINDOWPOS;

void MoveRadio(const std::vector<HWND>& windows, int dx, int dy) {
    for (const HWND window : windows) {
        RECT place = {};
        GetWindowRect(window, &place);
        SetWindowPos(window, nullptr, place.left + dx, place.top + dy, 0, 0,
                     kStay | SWP_NOSIZE | SWP_NOZORDER);
    }
}

bool IsAbove(HWND upper, HWND lower) {
    for (HWND window = GetWindow(upper, GW_HWNDNEXT); window != nullptr;
         window = GetWindow(window, GW_HWNDNEXT)) {
        if (window == lower) return true;
    }
    return false;
}

}  // namespace

void CRadioFollow::Follow(HWND panel, const RECT& display) {
    const HWND main = RadioMainWindow();
    if (main == nullptr || !IsWindowVisible(main)) {
        // One that is not shown yet is moved when it is.
        followed_ = nullptr;
        return;
    }
    const bool changed = main != followed_ || display.left != origin_.x || display.top != origin_.y;
    followed_ = main;
    origin_ = {display.left, display.top};
    auto windows = RadioWindows();
    if (const HWND bar = RadioTopBar()) windows.push_back(bar);
    RECT place = {};
    GetWindowRect(main, &place);
    // Its main window stands below the bar that it brings along.
    const LONG top = display.top + static_cast<LONG>(handset::ShellBarHeight());
    if (changed && (place.left != display.left || place.top != top)) {
        MoveRadio(windows, display.left - place.left, top - place.top);
    }
    // From the lowest up, so that they keep their order among themselves.
    for (auto window = windows.rbegin(); window != windows.rend(); ++window) {
        if (!IsAbove(*window, panel)) {
            SetWindowPos(*window, HWND_TOP, 0, 0, 0, 0, kStay | SWP_NOMOVE | SWP_NOSIZE);
        }
    }
}

void CRadioFollow::OpenDisplay(HWND panel, bool open, const RECT& display) {
    // There the desktop's own window manager stacks the windows and raises the panel when it is clicked,
    // without a word to the programs.
    if (!OnWine()) return;
    RECT window = {};
    GetWindowRect(panel, &window);
    RECT hole = open ? display : RECT{};
    if (open) OffsetRect(&hole, -window.left, -window.top);
    if (EqualRect(&hole, &hole_)) return;
    hole_ = hole;
    if (!open) {
        SetWindowRgn(panel, nullptr, TRUE);
        return;
    }
    handset::OwnedRegion region(CreateRectRgn(0, 0, window.right - window.left, window.bottom - window.top));
    const handset::OwnedRegion shown(CreateRectRgnIndirect(&hole));
    CombineRgn(region.get(), region.get(), shown.get(), RGN_DIFF);
    // The window owns the region from here on.
    SetWindowRgn(panel, region.release(), TRUE);
}

}  // namespace panel
