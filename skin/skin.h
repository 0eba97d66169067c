// The skin as the main state holds it: the tables, and the window on which they are painted.
#pragma once

#include "skin/skin_tables.h"

struct CSkin : SkinTables {
    HINSTANCE hInstance = nullptr;  // module of the bitmaps
    HWND hWnd = nullptr;            // stored by SkinWindowProc
};
