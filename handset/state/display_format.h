// Pictures as the display has them.
#pragma once

#include <windows.h>

namespace handset {

// Of width × height pixels of 0x00RRGGBB, 32 bits each, the first row on top.
inline BITMAPINFO DisplayFormat(LONG width, LONG height) {
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    return info;
}

}  // namespace handset
