// The tables of the main screen, row by row.
#include <gtest/gtest.h>

#include <iterator>

#include "skin/skin_tables.h"
#include "tests/unit/skin/layout.h"

namespace {

bool SameRect(const SkinRect& a, const SkinRect& b) {
    return a.x == b.x && a.y == b.y && a.cx == b.cx && a.cy == b.cy;
}

void ExpectPlace(const SkinButtonPlace& place, const SkinRect& rect, int bitmap, int xPressed,
                 int xDisabled) {
    EXPECT_TRUE(SameRect(place.rect, rect));
    EXPECT_EQ(place.nBitmap, bitmap);
    EXPECT_EQ(place.xSource, xPressed);
    EXPECT_EQ(place.ySource, 0);
    EXPECT_EQ(place.nDisabledBitmap, 1);
    EXPECT_EQ(place.xDisabled, xDisabled);
    EXPECT_EQ(place.yDisabled, 0);
}

}  // namespace

TEST(SkinTables, TheMainScreenHas7Bitmaps9Buttons1SliderAnd13TextFields) {
    const SkinTables tables = MainScreenTables();
    EXPECT_EQ(tables.nBitmaps, 7);
    EXPECT_EQ(tables.nButtons, 9);
    EXPECT_EQ(tables.nSliders, 1);
    EXPECT_EQ(tables.nTexts, 13);
}

TEST(SkinTables, EachBitmapRowHoldsItsIndexAndTheIdsOfBothOrientations) {
    const SkinTables tables = MainScreenTables();
    ASSERT_EQ(tables.nBitmaps, static_cast<int>(std::size(kBitmapLayout)));
    for (int i = 0; i < tables.nBitmaps; ++i) {
        EXPECT_EQ(tables.pBitmaps[i].nIndex, i);
        EXPECT_EQ(tables.pBitmaps[i].uPortraitId, kBitmapLayout[i][0]);
        EXPECT_EQ(tables.pBitmaps[i].uLandscapeId, kBitmapLayout[i][1]);
    }
}

TEST(SkinTables, EachButtonRowIsAsLaidOut) {
    const SkinTables tables = MainScreenTables();
    ASSERT_EQ(tables.nButtons, static_cast<int>(std::size(kButtonLayout)));
    for (int i = 0; i < tables.nButtons; ++i) {
        const SkinButton& row = tables.pButtons[i];
        const ButtonLayout& expected = kButtonLayout[i];
        SCOPED_TRACE(expected.id);
        EXPECT_EQ(row.nId, expected.id);
        EXPECT_EQ(row.dwKind, static_cast<DWORD>(expected.kind));
        EXPECT_EQ(row.dwLook, 1u);
        EXPECT_EQ(row.nFrame, expected.kind == 2 ? 0 : -1);
        EXPECT_EQ(row.nFrames, expected.kind == 2 ? 4 : 0);
        ExpectPlace(row.portrait, expected.portrait, expected.bitmap, expected.xPortrait,
                    expected.xDisabledPortrait);
        ExpectPlace(row.landscape, expected.landscape, expected.bitmap, expected.xLandscape,
                    expected.xDisabledLandscape);
    }
}

TEST(SkinTables, TheSliderRowIsAsLaidOut) {
    const SkinSlider& row = MainScreenTables().pSliders[0];
    EXPECT_EQ(row.nId, 210);
    EXPECT_EQ(row.nOrientation, 1);
    EXPECT_EQ(row.dwLook, 1u);
    EXPECT_EQ(row.nPos, 13);
    EXPECT_TRUE(SameRect(row.portrait.track, kTrackPortrait));
    EXPECT_TRUE(SameRect(row.landscape.track, kTrackLandscape));
    for (const SkinSliderPlace& place : {row.portrait, row.landscape}) {
        EXPECT_EQ(place.cxThumb, 18);
        EXPECT_EQ(place.cyThumb, 13);
    }
}

TEST(SkinTables, EachTextFieldRowIsAsLaidOut) {
    const SkinTables tables = MainScreenTables();
    ASSERT_EQ(tables.nTexts, static_cast<int>(std::size(kTextLayout)));
    for (int i = 0; i < tables.nTexts; ++i) {
        const SkinText& row = tables.pTexts[i];
        const TextLayout& expected = kTextLayout[i];
        SCOPED_TRACE(expected.id);
        EXPECT_EQ(row.nId, expected.id);
        EXPECT_TRUE(SameRect(row.portrait, expected.portrait));
        EXPECT_TRUE(SameRect(row.landscape, expected.landscape));
        EXPECT_EQ(row.uFormat, expected.format);
        EXPECT_EQ(row.crText, expected.colour);
        EXPECT_EQ(row.lfWidth, expected.width);
        EXPECT_EQ(row.lfHeight, expected.height);
        EXPECT_EQ(row.lfWeight, expected.weight);
    }
}
