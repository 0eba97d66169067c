// Making menu bars in tests, and what their toolbars say of their keys.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>

#include "handset/include/aygshell.h"
#include "handset/state/handset_protocol.h"

namespace test {

inline SHMENUBARINFO BarRequest(HWND parent, UINT resource, DWORD flags) {
    SHMENUBARINFO info = {};
    info.cbSize = sizeof info;
    info.hwndParent = parent;
    info.dwFlags = flags;
    info.nToolBarId = resource;
    info.hInstRes = GetModuleHandleW(nullptr);
    // What a failed call must replace.
    info.hwndMB = parent;
    return info;
}

// NULL when the call fails.
inline HWND MakeBar(HWND parent, UINT resource, DWORD flags = 0) {
    SHMENUBARINFO info = BarRequest(parent, resource, flags);
    return SHCreateMenuBar(&info) ? info.hwndMB : nullptr;
}

inline LRESULT KeyCount(HWND bar) {
    return SendMessageW(bar, TB_BUTTONCOUNT, 0, 0);
}

inline TBBUTTONINFOW Key(HWND bar, int index) {
    TBBUTTONINFOW info = {};
    info.cbSize = sizeof info;
    info.dwMask = TBIF_LPARAM | TBIF_COMMAND | TBIF_STATE | TBIF_BYINDEX;
    SendMessageW(bar, TB_GETBUTTONINFOW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&info));
    return info;
}

inline HMENU KeyMenu(HWND bar, int index) {
    return reinterpret_cast<HMENU>(Key(bar, index).lParam);
}

inline std::wstring KeyLabel(HWND bar, int index) {
    wchar_t text[64] = {};
    SendMessageW(bar, TB_GETBUTTONTEXTW, static_cast<WPARAM>(Key(bar, index).idCommand),
                 reinterpret_cast<LPARAM>(text));
    return text;
}

// As the phone's own keys do it.
inline void PressSoftKey(HWND bar, int index) {
    SendMessageW(bar, RegisterWindowMessageW(handset::kSoftKeyMessage), static_cast<WPARAM>(index), 0);
}

}  // namespace test
