// The scan's progress and the signal's strength. Their images are resources of this test program.
#include "skin/shown_texts.h"
#include "skin/skin_paint.h"
#include "tests/unit/skin/skin_on_screen.h"

namespace {

class ScanProgress : public SkinOnScreen {
  protected:
    SkinRect Field() const { return kTextLayout[7].At(screen()); }

    // What the screen shows after a text alone; DrawSkinText has its own tests.
    Picture WithText(const WCHAR* text) {
        BlankScreen();
        DrawSkinText(m_skin, 218, text);
        return Shown();
    }
};

TEST_P(ScanProgress, EachLevelShowsItsImageOverTheBackgroundAndItsPercentage) {
    constexpr const WCHAR* kTexts[] = {L"0%",  L"10%", L"20%", L"30%", L"40%", L"50%",
                                       L"60%", L"70%", L"80%", L"90%", L"100%"};
    const SkinRect at = ProgressAt(screen());
    for (int level = 0; level <= 10; ++level) {
        SCOPED_TRACE(level);
        Picture expected = WithText(kTexts[level]);
        expected.Copy(Image(0), at.x, at.y, at);
        expected.Overlay(Picture::OfResource(217 + level), 0, 0, at);
        BlankScreen();
        DrawScanProgress(m_skin, level);
        EXPECT_TRUE(Same(expected, Shown()));
    }
}

TEST_P(ScanProgress, AScanProgressLevelOf11OrMoreChangesNothingOnScreen) {
    for (const int level : {11, 12, 100, 0x7FFFFFFF, -1}) DrawScanProgress(m_skin, level);
    EXPECT_TRUE(Same(Blank(), Shown()));
}

TEST_P(ScanProgress, ALowerLevelLeavesNothingOfAHigherOne) {
    DrawScanProgress(m_skin, 3);
    const Picture expected = Shown();
    DrawScanProgress(m_skin, 10);
    DrawScanProgress(m_skin, 3);
    EXPECT_TRUE(Same(expected, Shown()));
}

INSTANTIATE_TEST_SUITE_P(Screens, ScanProgress, ::testing::ValuesIn(kScreens), NameOfScreen);

class Signal : public SkinOnScreen {
  protected:
    Picture Painted(int value) {
        BlankScreen();
        DrawSignal(m_skin, value);
        return Shown();
    }

    SkinRect Place() const { return screen().wide ? SkinRect{14, 12, 49, 22} : SkinRect{5, 10, 24, 11}; }

    Picture Expected(int id) {
        Picture expected = Blank();
        if (screen().wide) {
            expected.Overlay(Picture::OfResource(id + 1000), 0, 0, Place());
        } else {
            expected.Copy(Picture::OfResource(id), 0, 0, Place());
        }
        return expected;
    }
};

TEST_P(Signal, ASignalValueOf12ShowsBitmap211And13Shows212And65OrMoreShows216) {
    EXPECT_TRUE(Same(Expected(211), Painted(12)));
    EXPECT_TRUE(Same(Expected(212), Painted(13)));
    for (const int value : {65, 66, 100, 255, 0x7FFFFFFF})
        EXPECT_TRUE(Same(Expected(216), Painted(value))) << value;
}

TEST_P(Signal, EachBandOf13ShowsItsImage) {
    struct Band {
        int lowest, highest, id;
    };
    constexpr Band kBands[] = {{0, 12, 211}, {13, 25, 212}, {26, 38, 213}, {39, 51, 214}, {52, 64, 215}};
    for (const Band& band : kBands) {
        SCOPED_TRACE(band.id);
        EXPECT_TRUE(Same(Expected(band.id), Painted(band.lowest)));
        EXPECT_TRUE(Same(Expected(band.id), Painted(band.highest)));
    }
}

TEST_P(Signal, AValueBelow0ShowsTheLowestImage) {
    EXPECT_TRUE(Same(Expected(211), Painted(-1)));
    EXPECT_TRUE(Same(Expected(211), Painted(-100)));
}

TEST_P(Signal, WithoutItsImageTheScreenStaysAsItIs) {
    // A module that has no such bitmaps.
    m_skin.hInstance = GetModuleHandleW(L"COREDLL.dll");
    ASSERT_NE(m_skin.hInstance, nullptr);
    EXPECT_TRUE(Same(Blank(), Painted(30)));
}

TEST_P(Signal, IsShownUntilSomethingIsPaintedOverIt) {
    EXPECT_FALSE(SignalIsShown(m_skin));
    DrawSignal(m_skin, 30);
    EXPECT_TRUE(SignalIsShown(m_skin));
    DrawSkinText(m_skin, 218, L"50%");
    EXPECT_TRUE(SignalIsShown(m_skin));
    Paint([this](HDC dc) { DrawBackground(m_skin, dc); });
    EXPECT_FALSE(SignalIsShown(m_skin));
    DrawSignal(m_skin, 30);
    EXPECT_TRUE(SignalIsShown(m_skin));
}

TEST_P(Signal, WhatIsPaintedRightBesideItDoesNotMatterAndOnePixelOfItDoes) {
    const SkinRect at = Place();
    const auto shownAfter = [this](const SkinRect& place) {
        DrawSignal(m_skin, 30);
        MarkPaintedOver(m_skin, CurrentScreen(), place);
        return SignalIsShown(m_skin);
    };
    for (const int by : {0, 1}) {
        EXPECT_EQ(shownAfter({at.x - 7, at.y, 7 + by, at.cy}), by == 0) << "on the left";
        EXPECT_EQ(shownAfter({at.x + at.cx - by, at.y, 7, at.cy}), by == 0) << "on the right";
        EXPECT_EQ(shownAfter({at.x, at.y - 7, at.cx, 7 + by}), by == 0) << "above";
        EXPECT_EQ(shownAfter({at.x, at.y + at.cy - by, at.cx, 7}), by == 0) << "below";
    }
}

INSTANTIATE_TEST_SUITE_P(Screens, Signal, ::testing::ValuesIn(kScreens), NameOfScreen);

}  // namespace
