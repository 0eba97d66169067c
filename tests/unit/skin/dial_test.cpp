// The dial of a wide screen: the needle, the texts, and what it leaves alone.
#include <cmath>

#include "skin/skin_paint.h"
#include "tests/unit/skin/skin_on_screen.h"

namespace {

constexpr Pixel kLime = 0x8DC21F;

class WideDial : public SkinOnScreen {
  protected:
    Picture Drawn(std::uint32_t channel, const WCHAR* frequency = L"98.5", const WCHAR* name = L"Kora One") {
        BlankScreen();
        DrawDial(m_skin, channel, frequency, name);
        return Shown();
    }
    // Half way along the needle's path, for a frequency of the band.
    POINT OnNeedle(double mhz) const {
        const int x = screen().portrait ? 480 : 640, y = screen().portrait ? 536 : 376;
        const double angle = (4 + (mhz - 87.5) * 4) * std::acos(-1) / 180;
        return {x - std::lround(215 * std::cos(angle)), y - std::lround(215 * std::sin(angle))};
    }
    SkinRect Face() const { return screen().portrait ? SkinRect{0, 0, 241, 321} : SkinRect{0, 0, 321, 241}; }
    // Of the frequency and of the name, with some room around them.
    SkinRect Texts() const {
        return screen().portrait ? SkinRect{300, 400, 180, 140} : SkinRect{460, 240, 180, 140};
    }
};

TEST_P(WideDial, TheNeedleStandsOverTheBackgroundAtTheFrequencyAndNowhereElse) {
    constexpr double kFrequencies[] = {87.5, 92.3, 98.5, 103.4, 108};
    for (const double tuned : kFrequencies) {
        SCOPED_TRACE(tuned);
        const Picture picture = Drawn(static_cast<std::uint32_t>(std::lround(tuned * 100)));
        for (const double mhz : kFrequencies) {
            const POINT at = OnNeedle(mhz);
            const int x = static_cast<int>(at.x), y = static_cast<int>(at.y);
            EXPECT_EQ(picture.at(x, y), mhz == tuned ? kLime : Image(0).at(x, y)) << mhz;
        }
    }
}

TEST_P(WideDial, OutsideTheBandTheNeedleStaysAtItsEnd) {
    EXPECT_TRUE(Same(Drawn(8750), Drawn(7600)));
    EXPECT_TRUE(Same(Drawn(10800), Drawn(10900)));
}

TEST_P(WideDial, FrequencyAndNameStandInItsMiddleAndChangeNothingElse) {
    const Picture one = Drawn(9850, L"98.5", L"Kora One");
    for (const Picture& other : {Drawn(9850, L"107.9", L"Kora One"), Drawn(9850, L"98.5", L"Unknown")}) {
        EXPECT_FALSE(Same(one, other));
        Picture expected = other;
        expected.Copy(one, Texts().x, Texts().y, Texts());
        EXPECT_TRUE(Same(one, expected));
    }
}

TEST_P(WideDial, AnotherFrequencyLeavesNothingOfTheOneBefore) {
    const Picture expected = Drawn(9850);
    DrawDial(m_skin, 10570, L"105.7", L"A name that is much too long for the dial");
    DrawDial(m_skin, 9850, L"98.5", L"Kora One");
    EXPECT_TRUE(Same(expected, Shown()));
}

TEST_P(WideDial, TheFaceIsLeftAsItIs) {
    const Picture picture = Drawn(9850);
    Picture expected = picture;
    expected.Copy(Blank(), 0, 0, Face());
    EXPECT_TRUE(Same(expected, picture));
}

INSTANTIATE_TEST_SUITE_P(Screens, WideDial, ::testing::Values(kWidePortrait, kWideLandscape), NameOfScreen);

class NoDial : public SkinOnScreen {
  protected:
    void SetUp() override {}
};

// It has room for a part of the dial.
TEST_F(NoDial, IsThereOnAScreenOf320PixelsHoweverTallItIs) {
    UseScreen({"Tall", 320, 560, true, false});
    BlankScreen();
    DrawDial(m_skin, 9850, L"98.5", L"Kora One");
    EXPECT_TRUE(Same(Blank(), Shown()));
}

}  // namespace
