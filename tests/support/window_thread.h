// What the thread of a window of another program is at: its focus, its active window, its menus.
#pragma once

#include <windows.h>

namespace test {

inline GUITHREADINFO ThreadOf(HWND window) {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info);
    return info;
}

inline HWND FocusIn(HWND window) {
    return ThreadOf(window).hwndFocus;
}

}  // namespace test
