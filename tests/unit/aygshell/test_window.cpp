// The recording window.
#include "tests/unit/aygshell/test_window.h"

#include <cwchar>
#include <iterator>

namespace test {
namespace {

constexpr wchar_t kClass[] = L"KoraTestWindow";

}  // namespace

TestWindow::TestWindow() {
    static const ATOM atom = [] {
        WNDCLASSW description = {};
        description.lpfnWndProc = Proc;
        description.lpszClassName = kClass;
        description.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
        return RegisterClassW(&description);
    }();
    static_cast<void>(atom);
    m_window = CreateWindowExW(WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE, kClass, L"Window",
                               WS_POPUP | WS_CLIPCHILDREN, 0, 0, 240, 320, nullptr, nullptr, nullptr, this);
    // A window that is active when it is first shown becomes the window manager's business, and where there
    // is none its destruction waits in vain for an answer.
    ShowWindow(m_window, SW_SHOWNOACTIVATE);
}

TestWindow::~TestWindow() {
    Destroy();
}

void TestWindow::Destroy() {
    if (m_window != nullptr) DestroyWindow(m_window);
    m_window = nullptr;
}

LRESULT CALLBACK TestWindow::Proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        SetWindowLongPtrW(
            window, GWLP_USERDATA,
            reinterpret_cast<LONG_PTR>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams));
    }
    auto* const self = reinterpret_cast<TestWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self != nullptr) {
        const Received received = {message, wParam, lParam};
        self->m_received.push_back(received);
        if (self->onMessage) self->onMessage(received);
    }
    // The desktop's own handling would give the focus to the window itself.
    if (message == WM_ACTIVATE) return 0;
    return DefWindowProcW(window, message, wParam, lParam);
}

std::vector<Received> TestWindow::Of(UINT message) const {
    std::vector<Received> found;
    for (const Received& received : m_received) {
        if (received.message == message) found.push_back(received);
    }
    return found;
}

std::vector<HWND> OpenMenus() {
    std::vector<HWND> menus;
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND window, LPARAM list) -> BOOL {
            wchar_t name[8] = {};
            GetClassNameW(window, name, static_cast<int>(std::size(name)));
            if (std::wcscmp(name, L"#32768") == 0 && IsWindowVisible(window)) {
                reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
            }
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&menus));
    return menus;
}

}  // namespace test
