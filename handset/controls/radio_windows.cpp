// Windows of the radio, and input for them.
#include "handset/controls/radio_windows.h"

#include "handset/base/window_class.h"
#include "handset/controls/radio_process.h"
#include "handset/controls/switches.h"
#include "handset/state/handset_protocol.h"
#include "handset/state/own_windows.h"
#include "handset/state/power_manager.h"

namespace panel {
namespace {

constexpr wchar_t kMainClass[] = L"Kora";
constexpr wchar_t kMenuClass[] = L"#32768";
constexpr UINT kAskTimeout_ms = 1000;

struct WindowSearch {
    DWORD processId;
    std::vector<HWND> found;
};

BOOL CALLBACK CollectWindow(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<WindowSearch*>(parameter);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    RECT place = {};
    // Windows without an area are helpers that nobody sees, and the shell's bar is nobody's to use.
    if (owner == search.processId && IsWindowVisible(window) && GetWindowRect(window, &place) &&
        !IsRectEmpty(&place) && !handset::HasClass(window, handset::kTopBarClass)) {
        search.found.push_back(window);
    }
    return TRUE;
}

GUITHREADINFO RadioThread() {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    const auto windows = RadioWindows();
    if (!windows.empty()) GetGUIThreadInfo(GetWindowThreadProcessId(windows.front(), nullptr), &info);
    if (info.hwndActive == nullptr && !windows.empty()) info.hwndActive = windows.front();
    return info;
}

// As long as it and the window that it lies in are enabled.
bool TakesInput(HWND window) {
    return IsWindowEnabled(window) && IsWindowEnabled(GetAncestor(window, GA_ROOT));
}

// Null when nobody takes keys, as while the radio scans.
HWND KeyTarget() {
    const GUITHREADINFO info = RadioThread();
    if ((info.flags & GUI_INMENUMODE) != 0 && info.hwndMenuOwner != nullptr) return info.hwndMenuOwner;
    const HWND target = info.hwndFocus != nullptr ? info.hwndFocus : info.hwndActive;
    return TakesInput(target) ? target : nullptr;
}

bool IsExtended(WORD virtualKey) {
    return virtualKey >= VK_PRIOR && virtualKey <= VK_DOWN;
}

// A text of a dialog lets the stylus through to the dialog.
bool LetsThrough(HWND window, POINT point) {
    DWORD_PTR part = HTCLIENT;
    SendMessageTimeoutW(window, WM_NCHITTEST, 0, MAKELPARAM(point.x, point.y), SMTO_ABORTIFHUNG,
                        kAskTimeout_ms, &part);
    return static_cast<LRESULT>(part) == HTTRANSPARENT;
}

// The innermost enabled window at a screen point that takes the stylus.
HWND InnermostAt(HWND window, POINT point) {
    for (;;) {
        POINT inside = point;
        ScreenToClient(window, &inside);
        const HWND child = ChildWindowFromPointEx(window, inside, CWP_SKIPINVISIBLE | CWP_SKIPDISABLED);
        if (child == nullptr || child == window || LetsThrough(child, point)) return window;
        window = child;
    }
}

HWND RadioWindowAt(POINT point) {
    for (const HWND window : RadioWindows()) {
        RECT place = {};
        GetWindowRect(window, &place);
        if (PtInRect(&place, point)) return window;
    }
    return nullptr;
}

// The user does something to the phone; false while it sleeps, which takes no notice of it.
bool Touched() {
    if (PhoneSleeps()) return false;
    handset::NoteUserActivity();
    return true;
}

bool IsMenu(HWND window) {
    return handset::HasClass(window, kMenuClass);
}

// An open menu follows the host's pointer and not posted messages, so the pointer itself is moved.
bool TouchWithPointer(Stylus touch, POINT point) {
    const DWORD kFlags[] = {MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_MOVE, MOUSEEVENTF_LEFTUP};
    SetCursorPos(point.x, point.y);
    INPUT input = {};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = kFlags[static_cast<int>(touch)];
    return SendInput(1, &input, sizeof input) == 1;
}

bool TouchWindow(Stylus touch, HWND window, POINT point) {
    const UINT kMessages[] = {WM_LBUTTONDOWN, WM_MOUSEMOVE, WM_LBUTTONUP};
    ScreenToClient(window, &point);
    const WPARAM buttons = touch == Stylus::kUp ? 0 : MK_LBUTTON;
    return PostMessageW(window, kMessages[static_cast<int>(touch)], buttons, MAKELPARAM(point.x, point.y)) !=
           FALSE;
}

}  // namespace

std::vector<HWND> WindowsOfProcess(DWORD processId) {
    WindowSearch search{processId, {}};
    EnumWindows(CollectWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

std::vector<HWND> RadioWindows() {
    const auto process = RadioProcess();
    return process ? WindowsOfProcess(*process) : std::vector<HWND>{};
}

HWND MainWindowOf(DWORD processId) {
    for (HWND window = nullptr; (window = FindWindowExW(nullptr, window, kMainClass, nullptr)) != nullptr;) {
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        if (owner == processId) return window;
    }
    return nullptr;
}

HWND RadioMainWindow() {
    return handset::FindOwnWindow(kMainClass);
}

HWND RadioTopBar() {
    return handset::FindOwnWindow(handset::kTopBarClass);
}

POINT DisplayOrigin() {
    DWORD_PTR origin = 0;
    const HWND window = handset::FindOwnWindow(handset::kPanelClass);
    if (window != nullptr &&
        SendMessageTimeoutW(window, RegisterWindowMessageW(handset::kDisplayOriginMessage), 0, 0,
                            SMTO_ABORTIFHUNG, kAskTimeout_ms, &origin) != 0 &&
        origin != 0) {
        return {static_cast<SHORT>(LOWORD(origin)), static_cast<SHORT>(HIWORD(origin))};
    }
    return {0, 0};
}

bool SendKey(WORD virtualKey, bool down) {
    if (!DisplayLit() && !RadioHasAllKeys()) return false;
    const HWND target = Touched() ? KeyTarget() : nullptr;
    if (target == nullptr) return false;
    LPARAM state = 1 | static_cast<LPARAM>(MapVirtualKeyW(virtualKey, MAPVK_VK_TO_VSC) & 0xFF) << 16;
    if (IsExtended(virtualKey)) state |= 1 << 24;
    if (!down) state |= static_cast<LPARAM>(0xC0000000u);
    return PostMessageW(target, down ? WM_KEYDOWN : WM_KEYUP, virtualKey, state) != FALSE;
}

bool PressSoftKey(bool right) {
    if (!DisplayLit() || !Touched()) return false;
    const HWND active = RadioThread().hwndActive;
    const HWND bar =
        active == nullptr ? nullptr : FindWindowExW(active, nullptr, handset::kMenuBarClass, nullptr);
    // Posted: the key's menu stays open for as long as its handler runs.
    return bar != nullptr &&
           PostMessageW(bar, RegisterWindowMessageW(handset::kSoftKeyMessage), right ? 1 : 0, 0) != FALSE;
}

bool TouchDisplay(Stylus touch, int x, int y) {
    if (!DisplayLit() || !Touched()) return false;
    const POINT origin = DisplayOrigin();
    const POINT point = {origin.x + x, origin.y + y};
    const HWND window = RadioWindowAt(point);
    if (window == nullptr) return false;
    const GUITHREADINFO info = RadioThread();
    if (IsMenu(window) || (info.flags & GUI_INMENUMODE) != 0) return TouchWithPointer(touch, point);
    // A window that has captured the stylus gets it wherever it is.
    if (touch != Stylus::kDown && info.hwndCapture != nullptr)
        return TouchWindow(touch, info.hwndCapture, point);
    const HWND target = InnermostAt(window, point);
    return IsWindowEnabled(window) ? TouchWindow(touch, target, point) : false;
}

}  // namespace panel
