// The background.
#include "skin/bitmap_source.h"
#include "skin/skin_paint.h"
#include "tests/unit/skin/skin_on_screen.h"

namespace {

class Background : public SkinOnScreen {
  protected:
    Picture WholeBackground() const {
        Picture expected = Blank();
        expected.Copy(Image(0), 0, 0, {0, 0, screen().cx, screen().cy});
        return expected;
    }
};

TEST_P(Background, TheOrientationsImageCoversTheWholeScreen) {
    Paint([this](HDC dc) { DrawBackground(m_skin, dc); });
    EXPECT_TRUE(Same(WholeBackground(), Shown()));
}

TEST_P(Background, ItIsPaintedAlsoWhileAnotherThreadHoldsTheImage) {
    const HBITMAP image = screen().portrait ? m_skin.pBitmaps[0].hPortrait : m_skin.pBitmaps[0].hLandscape;
    const OwnedMemoryDC other(CreateCompatibleDC(nullptr));
    const SelectObjectGuard taken(other.get(), image);
    ASSERT_TRUE(taken);
    Paint([this](HDC dc) { DrawBackground(m_skin, dc); });
    EXPECT_TRUE(Same(WholeBackground(), Shown()));
}

TEST_P(Background, RestoringARectangleTouchesNothingElse) {
    const SkinRect part = {31, 47, 90, 53};
    Paint([&](HDC dc) { BitmapSource(m_skin, dc).RestoreBackground(dc, part); });
    Picture expected = Blank();
    expected.Copy(Image(0), part.x, part.y, part);
    EXPECT_TRUE(Same(expected, Shown()));
}

TEST_P(Background, WithoutAnImageTheScreenStaysAsItIs) {
    m_skin.pBitmaps[0].hPortrait = nullptr;
    m_skin.pBitmaps[0].hLandscape = nullptr;
    Paint([this](HDC dc) { DrawBackground(m_skin, dc); });
    EXPECT_TRUE(Same(Blank(), Shown()));
}

INSTANTIATE_TEST_SUITE_P(Screens, Background, ::testing::ValuesIn(kScreens), NameOfScreen);

}  // namespace
