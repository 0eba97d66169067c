// The screen tests.
#include "skin/screen.h"

#include <windows.h>

#include "skin/skin_tables.h"

SkinScreen CurrentScreen() {
    const int cx = GetSystemMetrics(SM_CXSCREEN), cy = GetSystemMetrics(SM_CYSCREEN);
    return {cx, cy, (cx < cy), (cx > kNarrowScreenWidth)};
}

bool IsPortraitScreen() {
    return CurrentScreen().bPortrait;
}

bool IsWideScreen() {
    return CurrentScreen().bWide;
}
