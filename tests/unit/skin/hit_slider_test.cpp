// What the stylus does to the slider.
#include "skin/hit_test.h"
#include "tests/unit/skin/skin_on_screen.h"

namespace {

constexpr UINT kDown = WM_LBUTTONDOWN, kUp = WM_LBUTTONUP, kMove = WM_MOUSEMOVE;

class SliderHits : public SkinOnScreen {
  protected:
    // `x` and `y` from the track's upper left corner.
    int Hit(int x, int y, UINT message) {
        const SkinRect track = TrackAt(screen());
        return HitTestSlider(m_skin, track.x + x, track.y + y, message, &m_index);
    }
    int m_index = -7;
};

TEST_P(SliderHits, TheTrackIsHitAtItsCornersAndNotBeyondThem) {
    for (const POINT inside : {POINT{0, 0}, POINT{79, 0}, POINT{0, 12}, POINT{79, 12}}) {
        EXPECT_EQ(Hit(inside.x, inside.y, WM_NULL), 210);
        EXPECT_EQ(m_index, 0);
    }
    for (const POINT outside : {POINT{-1, 0}, POINT{80, 0}, POINT{0, -1}, POINT{0, 13}}) {
        EXPECT_EQ(Hit(outside.x, outside.y, WM_NULL), -1);
        EXPECT_EQ(m_index, 1);
    }
}

TEST_P(SliderHits, AnEmptyOrMissingTableGivesIndex0AndNoHit) {
    m_skin.nSliders = 0;
    EXPECT_EQ(Hit(5, 5, kDown), -1);
    EXPECT_EQ(m_index, 0);
    m_skin.nSliders = 1;
    m_skin.pSliders = nullptr;
    EXPECT_EQ(Hit(5, 5, kDown), -1);
    EXPECT_EQ(m_index, 0);
}

TEST_P(SliderHits, ATapPutsTheMiddleOfTheThumbUnderTheStylus) {
    EXPECT_EQ(Hit(40, 6, kDown), 210);
    EXPECT_EQ(Slider().nPos, 31);
    EXPECT_EQ(Slider().dwLook, 2u);
    EXPECT_EQ(Hit(41, 6, kUp), 210);
    EXPECT_EQ(Slider().nPos, 32);
    EXPECT_EQ(Slider().dwLook, 1u);
}

TEST_P(SliderHits, TappingAtTheTracksFarLeftPutsTheThumbAt0) {
    for (const int x : {0, 1, 9}) {
        Slider().nPos = 50;
        Hit(x, 6, kDown);
        EXPECT_EQ(Slider().nPos, 0) << x;
    }
    Hit(10, 6, kDown);
    EXPECT_EQ(Slider().nPos, 1);
}

TEST_P(SliderHits, DraggingTheThumbPastTheTracksEndKeepsItAtTrackWidthLessThumbWidthWhichIs62) {
    Hit(40, 6, kDown);
    for (const int x : {71, 79, 80, 81, 300}) {
        Slider().nPos = 40;
        EXPECT_EQ(Hit(x, 6, kMove), 210);
        EXPECT_EQ(Slider().nPos, 62) << x;
    }
    Hit(70, 6, kMove);
    EXPECT_EQ(Slider().nPos, 61);
}

TEST_P(SliderHits, DraggingBeforeTheTracksStartKeepsTheThumbAt0) {
    Hit(40, 6, kDown);
    for (const int x : {0, -1, -30, -5000}) {
        Slider().nPos = 40;
        EXPECT_EQ(Hit(x, 6, kMove), 210);
        EXPECT_EQ(Slider().nPos, 0) << x;
    }
}

TEST_P(SliderHits, AMoveWithinTheTrackDragsOnlyAHeldThumb) {
    EXPECT_EQ(Hit(40, 6, kMove), -1);
    EXPECT_EQ(m_index, 1);
    EXPECT_EQ(Slider().nPos, 13);
    EXPECT_EQ(Slider().dwLook, 1u);
    Hit(20, 6, kDown);
    EXPECT_EQ(Hit(40, 6, kMove), 210);
    EXPECT_EQ(Slider().nPos, 31);
    EXPECT_EQ(Slider().dwLook, 6u);
    EXPECT_EQ(Hit(50, 6, kMove), 210);
    EXPECT_EQ(Slider().nPos, 41);
}

TEST_P(SliderHits, AReleaseWithinTheTrackCountsOnlyForAHeldThumb) {
    EXPECT_EQ(Hit(40, 6, kUp), -1);
    EXPECT_EQ(m_index, 1);
    EXPECT_EQ(Slider().nPos, 13);
    for (const DWORD look : {2u, 6u}) {
        Slider().dwLook = look;
        EXPECT_EQ(Hit(40, 6, kUp), 210);
        EXPECT_EQ(Slider().nPos, 31);
        EXPECT_EQ(Slider().dwLook, 1u);
    }
}

TEST_P(SliderHits, AHeldThumbFollowsTheStylusAlongItsAxisOutsideTheTrackToo) {
    Hit(20, 6, kDown);
    EXPECT_EQ(Hit(40, -50, kMove), 210);
    EXPECT_EQ(Slider().nPos, 31);
    EXPECT_EQ(Hit(45, 200, kMove), 210);
    EXPECT_EQ(Slider().nPos, 36);
}

TEST_P(SliderHits, AReleaseOutsideTheTrackLetsTheThumbGoWhereItIs) {
    Hit(20, 6, kDown);
    Hit(40, 6, kMove);
    EXPECT_EQ(Hit(60, -50, kUp), 210);
    EXPECT_EQ(Slider().nPos, 31);
    EXPECT_EQ(Slider().dwLook, 1u);
    EXPECT_EQ(Hit(60, -50, kMove), -1);
    EXPECT_EQ(m_index, 1);
}

TEST_P(SliderHits, AnyOtherMessageReportsTheTrackUnderThePointAndChangesNothing) {
    Slider().dwLook = 2;
    EXPECT_EQ(Hit(40, 6, WM_LBUTTONDBLCLK), 210);
    EXPECT_EQ(Hit(40, -6, WM_LBUTTONDBLCLK), -1);
    EXPECT_EQ(Slider().nPos, 13);
    EXPECT_EQ(Slider().dwLook, 2u);
}

TEST_P(SliderHits, AVerticalSliderGoesByTheStylussHeight) {
    Slider().nOrientation = 0;
    const SkinRect track = {50, 60, 18, 80};
    for (SkinSliderPlace* place : {&Slider().portrait, &Slider().landscape}) place->track = track;
    EXPECT_EQ(HitTestSlider(m_skin, 55, 60 + 40, kDown, &m_index), 210);
    EXPECT_EQ(Slider().nPos, 40 - 13 / 2);
    HitTestSlider(m_skin, 0, 500, kMove, &m_index);
    EXPECT_EQ(Slider().nPos, 80 - 13);
    HitTestSlider(m_skin, 500, 0, kMove, &m_index);
    EXPECT_EQ(Slider().nPos, 0);
}

INSTANTIATE_TEST_SUITE_P(Screens, SliderHits, ::testing::Values(kPortrait, kLandscape), NameOfScreen);

}  // namespace
