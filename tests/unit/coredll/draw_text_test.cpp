// DrawText, looked at by its pixels: what it lays into a place stands there whole, whatever the host takes
// the letters' widths for.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

#include "handset_fixture.h"

namespace {

constexpr LONG kBeside = 80;

struct Ink {
    LONG left = -1, right = -1;  // the first column and the one behind the last
    int pixels = 0;
};

// White letters on a black bitmap, the place in its middle.
class WrittenText : public HandsetTest {
  protected:
    Ink Drawn(LONG height, LONG weight, const std::wstring& text, LONG width, UINT format) {
        const LONG rows = 4 * height, columns = width + 2 * kBeside;
        std::vector<std::uint32_t> pixels =
            Pixels(height, weight, text, {kBeside, 0, kBeside + width, rows}, columns, format);
        Ink ink;
        for (LONG x = 0; x < columns; ++x) {
            for (LONG y = 0; y < rows; ++y) {
                if ((pixels[static_cast<std::size_t>(y * columns + x)] & 0xFFFFFF) == 0) continue;
                ++ink.pixels;
                if (ink.left < 0) ink.left = x - kBeside;
                ink.right = x - kBeside + 1;
            }
        }
        return ink;
    }
    RECT Measured(LONG height, const std::wstring& text, UINT format) {
        RECT place = {};
        Pixels(height, FW_NORMAL, text, {}, 1, format | DT_CALCRECT, &place);
        return place;
    }

  private:
    static std::vector<std::uint32_t> Pixels(LONG height, LONG weight, const std::wstring& text, RECT place,
                                             LONG columns, UINT format, RECT* after = nullptr) {
        LOGFONTW description = {};
        GetObjectW(GetStockObject(SYSTEM_FONT), sizeof description, &description);
        description.lfHeight = height;
        description.lfWeight = weight;
        const LONG rows = 4 * height;
        BITMAPINFO info = {};
        info.bmiHeader = {sizeof info.bmiHeader, columns, -rows, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        void* bits = nullptr;
        const HDC dc = CreateCompatibleDC(nullptr);
        const HBITMAP bitmap = CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        const HFONT font = CreateFontIndirectW(&description);
        const HGDIOBJ bitmapBefore = SelectObject(dc, bitmap), fontBefore = SelectObject(dc, font);
        SetTextColor(dc, RGB(255, 255, 255));
        SetBkMode(dc, TRANSPARENT);
        DrawTextW(dc, text.c_str(), static_cast<int>(text.size()), &place, format);
        if (after != nullptr) *after = place;
        const auto* const first = static_cast<const std::uint32_t*>(bits);
        std::vector<std::uint32_t> pixels(first, first + columns * rows);
        SelectObject(dc, fontBefore);
        SelectObject(dc, bitmapBefore);
        DeleteObject(font);
        DeleteObject(bitmap);
        DeleteDC(dc);
        return pixels;
    }
};

const std::wstring kTexts[] = {L"MORNINGS", L"News", L"RADIO KORA", L"Good morning", L"SASSOS", L"A&B"};
constexpr LONG kHeights[] = {9, 10, 11, 12, 13, 14, 15, 18, 22, 25};

TEST_F(WrittenText, AtTheRightEdgeEveryLetterIsWhole) {
    for (const LONG height : kHeights) {
        for (const std::wstring& text : kTexts) {
            SCOPED_TRACE(std::to_string(height) + " " + std::string(text.begin(), text.end()));
            const Ink whole = Drawn(height, FW_NORMAL, text, 300, DT_LEFT | DT_NOPREFIX);
            const Ink placed = Drawn(height, FW_NORMAL, text, 200, DT_RIGHT | DT_NOPREFIX);
            EXPECT_EQ(placed.pixels, whole.pixels);
            EXPECT_LE(placed.right, 200);
            EXPECT_EQ(placed.right - placed.left, whole.right - whole.left);
        }
    }
}

TEST_F(WrittenText, InTheMiddleOfSeveralLinesEveryLetterIsWhole) {
    const std::wstring words = L"LISTEN TO THE BEST MUSIC OF THIS MORNING ON RADIO KORA MOUNTAIN";
    for (const LONG height : {11, 12, 13}) {
        for (LONG width = 100; width < 240; ++width) {
            constexpr UINT kFormat = DT_CENTER | DT_WORDBREAK;
            const Ink clipped = Drawn(height, FW_NORMAL, words, width, kFormat);
            const Ink free = Drawn(height, FW_NORMAL, words, width, kFormat | DT_NOCLIP);
            ASSERT_EQ(clipped.pixels, free.pixels) << height << " in " << width;
        }
    }
}

TEST_F(WrittenText, WhatIsTooLongEndsAtItsPlace) {
    for (const UINT format : {UINT{DT_LEFT}, UINT{DT_RIGHT}, UINT{DT_CENTER}}) {
        const Ink ink = Drawn(12, FW_NORMAL, L"MORNINGS", 30, format);
        EXPECT_GE(ink.left, 0);
        EXPECT_LE(ink.right, 30);
        EXPECT_GT(ink.right - ink.left, 20);
    }
}

TEST_F(WrittenText, WhatEndsInDotsIsWholeWithThem) {
    for (LONG width = 20; width < 50; ++width) {
        constexpr UINT kFormat = DT_RIGHT | DT_END_ELLIPSIS;
        const Ink clipped = Drawn(12, FW_NORMAL, L"MORNINGS", width, kFormat);
        ASSERT_EQ(clipped.pixels, Drawn(12, FW_NORMAL, L"MORNINGS", width, kFormat | DT_NOCLIP).pixels)
            << width;
    }
}

TEST_F(WrittenText, AMeasuredTextHasRoomWhereItWasMeasured) {
    for (const LONG height : kHeights) {
        for (const std::wstring& text : kTexts) {
            SCOPED_TRACE(std::to_string(height) + " " + std::string(text.begin(), text.end()));
            const RECT measured = Measured(height, text, DT_NOPREFIX);
            const Ink whole = Drawn(height, FW_NORMAL, text, 300, DT_LEFT | DT_NOPREFIX);
            const Ink placed = Drawn(height, FW_NORMAL, text, measured.right, DT_LEFT | DT_NOPREFIX);
            EXPECT_EQ(placed.pixels, whole.pixels);
        }
    }
}

}  // namespace
