// Drawing calls of the desktop that worker threads make.
#include "handset/coredll/kernel/call_guard.h"

// clang-format off
GUARDED(BOOL, BitBlt, (HDC to, int x, int y, int width, int height, HDC from, int fromX, int fromY, DWORD operation), (to, x, y, width, height, from, fromX, fromY, operation), Plain)
GUARDED(BOOL, ExtTextOutW, (HDC dc, int x, int y, UINT options, const RECT* rect, const wchar_t* text, UINT length, const INT* spacing), (dc, x, y, options, rect, text, length, spacing), Plain)
GUARDED(int, FillRect, (HDC dc, const RECT* rect, HBRUSH brush), (dc, rect, brush), Plain)
GUARDED(BOOL, PatBlt, (HDC dc, int x, int y, int width, int height, DWORD operation), (dc, x, y, width, height, operation), Plain)
GUARDED(BOOL, Rectangle, (HDC dc, int left, int top, int right, int bottom), (dc, left, top, right, bottom), Plain)
GUARDED(HGDIOBJ, SelectObject, (HDC dc, HGDIOBJ object), (dc, object), Plain)
GUARDED(COLORREF, SetBkColor, (HDC dc, COLORREF colour), (dc, colour), Plain, CLR_INVALID)
GUARDED(int, SetBkMode, (HDC dc, int mode), (dc, mode), Plain)
GUARDED(COLORREF, SetTextColor, (HDC dc, COLORREF colour), (dc, colour), Plain, CLR_INVALID)
GUARDED(BOOL, StretchBlt, (HDC to, int x, int y, int width, int height, HDC from, int fromX, int fromY, int fromWidth, int fromHeight, DWORD operation), (to, x, y, width, height, from, fromX, fromY, fromWidth, fromHeight, operation), Plain)
// clang-format on
