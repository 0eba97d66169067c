#include "tests/screens/picture.h"

#include <cstdint>
#include <vector>

#include "handset/phone/png_file.h"
#include "tests/support/handset_under_test.h"
#include "tests/support/wait.h"

namespace screens {
namespace {

// The shell's bar looks for its title five times a second.
constexpr DWORD kBetweenLooks_ms = 250, kRests_ms = 2500;

// 0x00RRGGBB, rows from the top.
std::vector<std::uint32_t> PixelsOf(const RECT& area) {
    const LONG width = area.right - area.left, height = area.bottom - area.top;
    BITMAPINFO info = {};
    info.bmiHeader = {sizeof(BITMAPINFOHEADER), width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    const HDC screen = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(screen);
    void* bits = nullptr;
    const HBITMAP bitmap = CreateDIBSection(screen, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HGDIOBJ previous = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, width, height, screen, area.left, area.top, SRCCOPY);
    GdiFlush();
    const auto* const pixels = static_cast<const std::uint32_t*>(bits);
    std::vector<std::uint32_t> copy(pixels, pixels + static_cast<std::size_t>(width) * height);
    SelectObject(memory, previous);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    return copy;
}

}  // namespace

Picture PictureOf(const RECT& area) {
    return {area.right - area.left, area.bottom - area.top, PixelsOf(area)};
}

void TakePicture(const RECT& area, const std::wstring& file) {
    std::vector<std::uint32_t> before;
    test::WaitFor(
        [&] {
            std::vector<std::uint32_t> now = PixelsOf(area);
            const bool rests = now == before;
            before = std::move(now);
            if (!rests) Sleep(kBetweenLooks_ms);
            return rests;
        },
        kRests_ms);
    test::WriteWholeFile(file, panel::PngOf(before.data(), area.right - area.left, area.bottom - area.top));
}

}  // namespace screens
