// The two screen tests.
#include "skin/screen.h"

#include <windows.h>

#include "skin/skin_tables.h"

bool IsPortraitScreen() {
    return GetSystemMetrics(SM_CXSCREEN) < GetSystemMetrics(SM_CYSCREEN);
}

bool IsWideScreen() {
    return GetSystemMetrics(SM_CXSCREEN) > kNarrowScreenWidth;
}
