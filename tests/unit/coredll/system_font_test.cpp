// The system's font, with which the skin and the lists write.
#include <gtest/gtest.h>
#include <windows.h>

#include <commctrl.h>

#include <cwchar>

#include "handset_fixture.h"

using SystemFont = HandsetTest;

namespace {

LOGFONTW Described(HGDIOBJ font) {
    LOGFONTW description = {};
    EXPECT_NE(GetObjectW(font, sizeof description, &description), 0);
    return description;
}

}  // namespace

TEST_F(SystemFont, IsTheDevicesTahomaOfNinePoints) {
    const LOGFONTW font = Described(GetStockObject(SYSTEM_FONT));
    EXPECT_STREQ(font.lfFaceName, L"Tahoma");
    EXPECT_EQ(font.lfHeight, -12);
    EXPECT_EQ(font.lfWeight, FW_NORMAL);
}

// Whatever the host has beside it.
TEST_F(SystemFont, IsThereAndNotReplacedByAnother) {
    const LOGFONTW description = Described(GetStockObject(SYSTEM_FONT));
    const HDC dc = CreateCompatibleDC(nullptr);
    const HFONT font = CreateFontIndirectW(&description);
    const HGDIOBJ previous = SelectObject(dc, font);
    WCHAR face[LF_FACESIZE] = L"";
    GetTextFaceW(dc, LF_FACESIZE, face);
    EXPECT_STREQ(face, L"Tahoma");
    SelectObject(dc, previous);
    DeleteObject(font);
    DeleteDC(dc);
}

TEST_F(SystemFont, NeedsRoomForAllThatIsToldOfIt) {
    LOGFONTW font = {};
    EXPECT_EQ(GetObjectW(GetStockObject(SYSTEM_FONT), sizeof font, &font), static_cast<int>(sizeof font));
    std::wmemset(font.lfFaceName, L'-', LF_FACESIZE);
    GetObjectW(GetStockObject(SYSTEM_FONT), 4, &font);
    EXPECT_EQ(font.lfFaceName[0], L'-');
}

TEST_F(SystemFont, AFontWithoutAHeightHasThatOfTheSystems) {
    LOGFONTW wanted = Described(GetStockObject(SYSTEM_FONT));
    wanted.lfHeight = 0;
    wanted.lfWeight = FW_BOLD;
    const HFONT font = CreateFontIndirectW(&wanted);
    const LOGFONTW made = Described(font);
    EXPECT_EQ(made.lfHeight, -12);
    EXPECT_EQ(made.lfWeight, FW_BOLD);
    DeleteObject(font);
}

// Squeezed further, an R looks like an 8, a D like a 0 and an S like a 5.
TEST_F(SystemFont, ABoldLetterIsSqueezedNoFurtherThanItCanBeRead) {
    const auto widthOf = [](LONG weight, LONG width) {
        LOGFONTW wanted = Described(GetStockObject(SYSTEM_FONT));
        wanted.lfHeight = 15;
        wanted.lfWeight = weight;
        wanted.lfWidth = width;
        const HFONT font = CreateFontIndirectW(&wanted);
        const HDC dc = CreateCompatibleDC(nullptr);
        const HGDIOBJ previous = SelectObject(dc, font);
        TEXTMETRICW metrics = {};
        GetTextMetricsW(dc, &metrics);
        SelectObject(dc, previous);
        DeleteObject(font);
        DeleteDC(dc);
        return metrics.tmAveCharWidth;
    };
    const LONG own = widthOf(FW_SEMIBOLD, 0);
    EXPECT_EQ(widthOf(FW_SEMIBOLD, 5), own * 7 / 8);
    EXPECT_EQ(widthOf(FW_SEMIBOLD, own + 2), own + 2);
    EXPECT_EQ(widthOf(FW_NORMAL, 5), 5);
}

TEST_F(SystemFont, AListViewsRowsAreFifteenPixelsHigh) {
    InitCommonControls();
    const HWND list = CreateWindowExW(0, WC_LISTVIEWW, L"", WS_POPUP | LVS_REPORT | LVS_NOCOLUMNHEADER, 0, 0,
                                      240, 105, nullptr, nullptr, nullptr, nullptr);
    LVITEMW item = {};
    for (item.iItem = 0; item.iItem < 3; ++item.iItem)
        SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    for (WPARAM row = 0; row < 3; ++row) {
        POINT position = {};
        SendMessageW(list, LVM_GETITEMPOSITION, row, reinterpret_cast<LPARAM>(&position));
        EXPECT_EQ(position.y, static_cast<LONG>(15 * row));
    }
    DestroyWindow(list);
}
