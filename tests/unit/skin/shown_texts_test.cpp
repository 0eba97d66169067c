// Texts that are shown: painted when they are new, or when something was painted over them.
#include "skin/shown_texts.h"

#include "skin/skin_paint.h"
#include "skin/skin_rows.h"
#include "tests/unit/skin/skin_on_screen.h"

namespace {

constexpr int kService = 212, kType = 217, kFrequency = 211, kRadioText = 215;

class ShownTexts : public SkinOnScreen {
  protected:
    // Whether the text is painted now, to a screen that is blank by then.
    bool Paints(int field, const WCHAR* text) {
        BlankScreen();
        ShowSkinText(m_skin, field, text);
        return !Same(Blank(), Shown());
    }
    // The same text painted outright.
    Picture Drawn(int field, const WCHAR* text) {
        BlankScreen();
        DrawSkinText(m_skin, field, text);
        return Shown();
    }
    void Resize(int cx, int cy) {
        SetWindowPos(m_skin.hWnd, nullptr, 0, 0, cx, cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
};

TEST_P(ShownTexts, ANewTextIsPaintedAsAnyOther) {
    for (const TextLayout& field : kTextLayout) {
        SCOPED_TRACE(field.id);
        EXPECT_TRUE(Paints(field.id, L"Ab 1"));
        const Picture shown = Shown();
        EXPECT_TRUE(Same(Drawn(field.id, L"Ab 1"), shown));
    }
}

TEST_P(ShownTexts, ATextThatIsShownAlreadyIsNotPaintedAgain) {
    ShowSkinText(m_skin, kService, L"KORA ONE");
    EXPECT_FALSE(Paints(kService, L"KORA ONE"));
    EXPECT_TRUE(Paints(kService, L"KORA TWO"));
    EXPECT_TRUE(Paints(kService, L""));
    EXPECT_FALSE(Paints(kService, L""));
}

TEST_P(ShownTexts, ATextThatIsTooLongToBeKeptIsPaintedAnewEachTime) {
    const std::wstring kept(kShownTextCapacity - 1, L'M');
    const std::wstring tooLong(kShownTextCapacity, L'M');
    ShowSkinText(m_skin, kService, kept.c_str());
    EXPECT_FALSE(Paints(kService, kept.c_str()));
    EXPECT_TRUE(Paints(kService, tooLong.c_str()));
    EXPECT_TRUE(Paints(kService, tooLong.c_str()));
    EXPECT_TRUE(Paints(kService, kept.c_str()));
}

TEST_P(ShownTexts, TheFirstTextIsPaintedAlsoWhenItIsEmpty) {
    EXPECT_TRUE(Paints(kService, L""));
}

TEST_P(ShownTexts, ATextIsPaintedAgainAfterTheBackgroundWas) {
    ShowSkinText(m_skin, kService, L"KORA ONE");
    Paint([this](HDC dc) { DrawBackground(m_skin, dc); });
    EXPECT_TRUE(Paints(kService, L"KORA ONE"));
}

TEST_P(ShownTexts, ATextIsPaintedAgainAfterItsFieldWasDrawnOtherwise) {
    ShowSkinText(m_skin, kService, L"KORA ONE");
    DrawSkinText(m_skin, kService, L"KORA ONE");
    EXPECT_TRUE(Paints(kService, L"KORA ONE"));
}

TEST_P(ShownTexts, ATextIsPaintedAgainAfterAFieldUnderItWasDrawn) {
    ShowSkinText(m_skin, kService, L"KORA ONE");
    DrawSkinText(m_skin, kFrequency, L"98.5 MHz");
    EXPECT_TRUE(Paints(kService, L"KORA ONE"));
    EXPECT_FALSE(Paints(kService, L"KORA ONE"));
}

TEST_P(ShownTexts, AFieldElsewhereDoesNotMatter) {
    ShowSkinText(m_skin, kService, L"KORA ONE");
    DrawSkinText(m_skin, 218, L"50%");
    EXPECT_FALSE(Paints(kService, L"KORA ONE"));
}

TEST_P(ShownTexts, WhatIsPaintedRightBesideAFieldDoesNotMatterAndOnePixelOfItDoes) {
    const SkinRect at = PlaceOf(*FindText(m_skin, kService), CurrentScreen());
    const auto paintedAgainAfter = [this](const SkinRect& place) {
        ShowSkinText(m_skin, kService, L"KORA ONE");
        MarkPaintedOver(m_skin, CurrentScreen(), place);
        return Paints(kService, L"KORA ONE");
    };
    for (const int by : {0, 1}) {
        EXPECT_EQ(paintedAgainAfter({at.x - 7, at.y, 7 + by, at.cy}), by != 0) << "on the left";
        EXPECT_EQ(paintedAgainAfter({at.x + at.cx - by, at.y, 7, at.cy}), by != 0) << "on the right";
        EXPECT_EQ(paintedAgainAfter({at.x, at.y - 7, at.cx, 7 + by}), by != 0) << "above";
        EXPECT_EQ(paintedAgainAfter({at.x, at.y + at.cy - by, at.cx, 7}), by != 0) << "below";
    }
}

TEST_P(ShownTexts, OfTwoThatOverlapTheUpperIsPaintedAgainAfterTheLowerAndNotTheOtherWayRound) {
    ShowSkinText(m_skin, kService, L"KORA ONE");
    ShowSkinText(m_skin, kType, L"News");
    ShowSkinText(m_skin, kType, L"Jazz");
    EXPECT_FALSE(Paints(kService, L"KORA ONE"));
    EXPECT_TRUE(Paints(kService, L"KORA TWO"));
    EXPECT_TRUE(Paints(kType, L"Jazz"));
    EXPECT_FALSE(Paints(kService, L"KORA TWO"));
    EXPECT_FALSE(Paints(kType, L"Jazz"));
}

TEST_P(ShownTexts, TheBarOfAScanCountsAsPaintedOverTheRadioText) {
    if (!screen().portrait) GTEST_SKIP() << "they overlap on the upright screen only";
    ShowSkinText(m_skin, kRadioText, L"Good morning");
    DrawScanProgress(m_skin, 5);
    EXPECT_TRUE(Paints(kRadioText, L"Good morning"));
}

TEST_P(ShownTexts, WhatCouldNotBePaintedIsPaintedLater) {
    Resize(0, 0);
    ShowSkinText(m_skin, kService, L"KORA ONE");
    Resize(screen().cx, screen().cy);
    EXPECT_TRUE(Paints(kService, L"KORA ONE"));
}

TEST_P(ShownTexts, WhatCouldNotBePaintedDoesNotCountAsShownOnceSomethingElseWasPainted) {
    Resize(0, 0);
    ShowSkinText(m_skin, kService, L"KORA ONE");
    Resize(screen().cx, screen().cy);
    Paint([this](HDC dc) { DrawBackground(m_skin, dc); });
    EXPECT_TRUE(Paints(kService, L"KORA ONE"));
}

TEST_P(ShownTexts, AnIdThatIsNoFieldChangesNothing) {
    EXPECT_FALSE(Paints(210, L"Ab 1"));
}

INSTANTIATE_TEST_SUITE_P(Screens, ShownTexts, ::testing::ValuesIn(kScreens), NameOfScreen);

}  // namespace
