#include "tests/support/skin_window.h"

#include <algorithm>
#include <vector>

#include "shell/messages.h"
#include "skin/skin_window.h"

namespace test {
namespace {

LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    CMainState* state = MainStateOf(window);
    if (state == nullptr) return DefWindowProcW(window, message, wParam, lParam);
    if (message >= WM_SKIN_SLIDER && message <= WM_SKIN_CLICK) {
        return state->OnControl(window, message, wParam, lParam);
    }
    const bool stylus = message >= WM_MOUSEMOVE && message <= WM_LBUTTONUP;
    if (stylus || message == WM_SKIN_SETPOS || message == WM_SKIN_GETPOS || message == WM_PAINT ||
        message == WM_TIMER) {
        return SkinWindowProc(state->m_skin, window, message, wParam, lParam);
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace

SkinTables FreshSkinTables() {
    static const SkinTables kTables = MainScreenTables();
    static const std::vector<SkinButton> kButtons(kTables.pButtons, kTables.pButtons + kTables.nButtons);
    static const std::vector<SkinSlider> kSliders(kTables.pSliders, kTables.pSliders + kTables.nSliders);
    std::copy(kButtons.begin(), kButtons.end(), kTables.pButtons);
    std::copy(kSliders.begin(), kSliders.end(), kTables.pSliders);
    return kTables;
}

HWND CreateSkinWindow(CMainState& state) {
    static const ATOM kClass = [] {
        WNDCLASSW windowClass = {};
        windowClass.lpfnWndProc = WindowProc;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.lpszClassName = L"KoraSkinTest";
        return RegisterClassW(&windowClass);
    }();
    // A window that is never active is taken down at once, with or without a window manager.
    const HWND window =
        CreateWindowExW(WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE, MAKEINTATOM(kClass), L"", WS_POPUP, 0, 0, 240,
                        320, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    ShowWindow(window, SW_SHOWNOACTIVATE);
    SetWindowLongW(window, GWL_USERDATA, reinterpret_cast<LONG_PTR>(&state));
    state.m_skin.hWnd = window;
    return window;
}

}  // namespace test
