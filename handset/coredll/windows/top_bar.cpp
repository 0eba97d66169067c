#include "handset/coredll/windows/top_bar.h"

#include <atomic>
#include <iterator>
#include <string>
#include <utility>

#include "handset/base/module_edge.h"
#include "handset/base/owned.h"
#include "handset/coredll/kernel/platform_call.h"
#include "handset/coredll/windows/top_bar_look.h"
#include "handset/state/handset_protocol.h"
#include "handset/state/screen_size.h"

namespace coredll {
namespace {

using handset::OwnedBitmap;
using OwnedDC = handset::OwnedMemoryDC;

constexpr UINT_PTR kLookTimer = 1;
constexpr UINT kLook_ms = 200;  // of real time: it is somebody's eye that waits

std::atomic<HWND> g_bar = nullptr;

// The window in front among those that reach from the bar downwards and are as wide as it.
struct Front {
    HWND bar;
    HWND found;
};

BOOL CALLBACK LookForFront(HWND window, LPARAM data) try {
    auto& front = *reinterpret_cast<Front*>(data);
    RECT bar = {}, place = {};
    if (window == front.bar || !IsWindowVisible(window)) return TRUE;
    GetWindowRect(front.bar, &bar);
    GetWindowRect(window, &place);
    if (place.top != bar.bottom || place.left != bar.left || place.right != bar.right) return TRUE;
    front.found = window;
    return FALSE;
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}

std::wstring TitleInFront(HWND bar) {
    Front front = {bar, nullptr};
    EnumThreadWindows(GetCurrentThreadId(), LookForFront, reinterpret_cast<LPARAM>(&front));
    wchar_t title[128] = {};
    if (front.found != nullptr) GetWindowTextW(front.found, title, static_cast<int>(std::size(title)));
    return title;
}

class CTopBar {
  public:
    CTopBar(HWND window, HWND below) : window_(window), below_(below) {}

    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);

  private:
    // Takes over what has changed, and shows it. Destroys itself when the window below is gone.
    void Look();
    void Fit() const;
    void Paint() const;

    HWND window_;
    HWND below_;
    TopBarState state_ = {};
};

void CTopBar::Look() {
    if (!IsWindow(below_)) {
        DestroyWindow(window_);
        return;
    }
    TopBarState now = CurrentTopBarState();
    now.title = TitleInFront(window_);
    if (now == state_) return;
    state_ = std::move(now);
    SetWindowTextW(window_, state_.title.c_str());
    InvalidateRect(window_, nullptr, FALSE);
}

void CTopBar::Fit() const {
    RECT display = {};
    HandsetDisplayRect(&display);
    // To the front, as it may have grown over windows that have yet to make room.
    SetWindowPos(window_, HWND_TOP, display.left, display.top, display.right - display.left,
                 static_cast<int>(handset::ShellBarHeight()), SWP_NOACTIVATE);
    InvalidateRect(window_, nullptr, FALSE);
}

void CTopBar::Paint() const {
    PAINTSTRUCT paint;
    RECT client = {};
    const HDC window = BeginPaint(window_, &paint);
    GetClientRect(window_, &client);
    {
        const OwnedBitmap bitmap(CreateCompatibleBitmap(window, client.right, client.bottom));
        const OwnedDC dc(CreateCompatibleDC(window));
        SelectObject(dc.get(), bitmap.get());
        PaintTopBar(dc.get(), client, state_);
        BitBlt(window, 0, 0, client.right, client.bottom, dc.get(), 0, 0, SRCCOPY);
    }
    EndPaint(window_, &paint);
}

LRESULT CTopBar::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT:
            Paint();
            return 0;
        case WM_ERASEBKGND:
            return TRUE;
        case WM_TIMER:
            Look();
            return 0;
        case WM_SETTINGCHANGE:
            if (wParam == handset::kSettingChangeReset) Fit();
            return 0;
        // It goes with the window below it.
        case WM_CLOSE:
            return 0;
        default:
            return DefWindowProcW(window_, message, wParam, lParam);
    }
}

LRESULT CALLBACK BarProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) try {
    if (message == WM_CREATE) {
        const auto below = static_cast<HWND>(reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpCreateParams);
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(new CTopBar(window, below)));
        SetTimer(window, kLookTimer, kLook_ms, nullptr);
        PostMessageW(window, WM_TIMER, kLookTimer, 0);
        return 0;
    }
    auto* const bar = reinterpret_cast<CTopBar*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (bar == nullptr) return DefWindowProcW(window, message, wParam, lParam);
    if (message != WM_NCDESTROY) return bar->Handle(message, wParam, lParam);
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    delete bar;
    g_bar = nullptr;
    return 0;
} catch (...) {
    return handset::EdgeAnswer<LRESULT>(message == WM_CREATE ? -1 : 0);
}

bool RegisterBarClass() {
    WNDCLASSW description = {};
    description.lpfnWndProc = BarProc;
    description.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));  // the arrow
    description.lpszClassName = handset::kTopBarClass;
    return RegisterClassW(&description) != 0;
}

}  // namespace

void ShowTopBarAbove(HWND window) {
    static const bool registered = RegisterBarClass();
    // One whose window is gone may not have noticed it yet.
    if (IsWindow(g_bar)) SendMessageW(g_bar, WM_TIMER, kLookTimer, 0);
    if (!registered || IsWindow(g_bar)) return;
    RECT display = {};
    HandsetDisplayRect(&display);
    // Disabled: it takes neither the stylus nor the activation.
    g_bar = CreateWindowExW(WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE, handset::kTopBarClass, nullptr,
                            WS_POPUP | WS_DISABLED, display.left, display.top, display.right - display.left,
                            static_cast<int>(handset::ShellBarHeight()), nullptr, nullptr, nullptr, window);
    if (g_bar != nullptr) ShowWindow(g_bar, SW_SHOWNOACTIVATE);
}

}  // namespace coredll
