// What the skin's tables and hit tests take from the platform's header, for a build without the platform:
// types, numbers, and the few calls that they make (platform.cpp).
#pragma once

#include <cstdint>

using BOOL = int;
using UINT = unsigned;
using DWORD = std::uint32_t;
using LONG = std::int32_t;
using COLORREF = std::uint32_t;
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;
using UINT_PTR = std::uintptr_t;
using WCHAR = wchar_t;
using HWND = struct Window*;
using HBITMAP = struct Bitmap*;
using HINSTANCE = struct Module*;

struct POINT {
    LONG x, y;
};
struct RECT {
    LONG left, top, right, bottom;
};

// clang-format off
inline constexpr BOOL FALSE = 0;
inline constexpr UINT WM_NULL = 0, WM_TIMER = 0x113, WM_MOUSEMOVE = 0x200, WM_LBUTTONDOWN = 0x201,
                      WM_LBUTTONUP = 0x202, WM_LBUTTONDBLCLK = 0x203;
inline constexpr int  SM_CXSCREEN = 0, SM_CYSCREEN = 1;
inline constexpr UINT DT_LEFT = 0, DT_CENTER = 1, DT_RIGHT = 2, DT_WORDBREAK = 0x10, DT_END_ELLIPSIS = 0x8000,
                      DT_WORD_ELLIPSIS = 0x40000;
// clang-format on

// As the platform's macro: red in the lowest byte.
constexpr COLORREF RGB(unsigned red, unsigned green, unsigned blue) {
    return red | green << 8 | blue << 16;
}

BOOL PtInRect(const RECT* rect, POINT point);
int GetSystemMetrics(int index);
UINT_PTR SetTimer(HWND window, UINT_PTR id, UINT period_ms, void (*procedure)());
BOOL KillTimer(HWND window, UINT_PTR id);
DWORD GetTickCount();
