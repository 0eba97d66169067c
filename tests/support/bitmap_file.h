// A bitmap out of the bytes of a file of its own format (BITMAPFILEHEADER, header, colours, rows).
#pragma once

#include <windows.h>

#include <cstring>
#include <vector>

namespace test {

// In the display's format; the caller's to delete. The bytes are a whole file, and believed.
inline HBITMAP BitmapOfFile(const BYTE* file) {
    BITMAPFILEHEADER head;
    std::memcpy(&head, file, sizeof head);
    // In the file it begins at an odd place; its colours follow it.
    std::vector<DWORD> copy((head.bfOffBits - sizeof head + sizeof(DWORD) - 1) / sizeof(DWORD));
    std::memcpy(copy.data(), file + sizeof head, head.bfOffBits - sizeof head);
    const auto* info = reinterpret_cast<const BITMAPINFO*>(copy.data());
    const HDC screen = GetDC(nullptr);
    const HBITMAP bitmap =
        CreateDIBitmap(screen, &info->bmiHeader, CBM_INIT, file + head.bfOffBits, info, DIB_RGB_COLORS);
    ReleaseDC(nullptr, screen);
    return bitmap;
}

}  // namespace test
