#include "tests/support/screen_picture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <utility>

#include "tests/support/wait.h"

namespace test {

ScreenPicture PictureOf(const RECT& area) {
    const int width = area.right - area.left;
    const int height = area.bottom - area.top;
    BITMAPINFO info = {};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    const HDC screen = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(screen);
    void* bits = nullptr;
    const HBITMAP bitmap = CreateDIBSection(screen, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HGDIOBJ previous = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, width, height, screen, area.left, area.top, SRCCOPY);
    GdiFlush();
    ScreenPicture picture;
    for (int i = 0; i < width * height; ++i) picture.push_back(static_cast<DWORD*>(bits)[i] & 0xFFFFFF);
    SelectObject(memory, previous);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    return picture;
}

ScreenPicture PictureOf(const Radio& radio, const RECT& area) {
    RECT place = area;
    MapWindowPoints(radio.Window(), nullptr, reinterpret_cast<POINT*>(&place), 2);
    return PictureOf(place);
}

ScreenPicture SettledPicture(const Radio& radio, const RECT& area) {
    constexpr int kSame = 20;
    ScreenPicture picture;
    int same = 0;
    EXPECT_TRUE(WaitFor([&] {
        ScreenPicture now = PictureOf(radio, area);
        same = now == picture ? same + 1 : 0;
        picture = std::move(now);
        return same >= kSame;
    })) << "the screen never rests";
    return picture;
}

std::size_t PixelsOf(const ScreenPicture& picture, COLORREF colour) {
    const auto stored = static_cast<DWORD>(RGB(GetBValue(colour), GetGValue(colour), GetRValue(colour)));
    return static_cast<std::size_t>(std::count(picture.begin(), picture.end(), stored));
}

DWORD MostOf(const ScreenPicture& picture) {
    std::map<DWORD, int> counts;
    for (const DWORD colour : picture) ++counts[colour];
    const auto more = [](const auto& a, const auto& b) { return a.second < b.second; };
    return counts.empty() ? 0 : std::max_element(counts.begin(), counts.end(), more)->first;
}

}  // namespace test
