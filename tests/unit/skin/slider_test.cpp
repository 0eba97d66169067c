// The slider's looks and positions.
#include "skin/skin_paint.h"
#include "tests/unit/skin/skin_on_screen.h"

namespace {

constexpr Pixel kFilled = 0x8DC21F;  // red 141, green 194, blue 31

class SliderLooks : public SkinOnScreen {
  protected:
    Picture Painted(int pos, DWORD look) {
        Slider().nPos = pos;
        Slider().dwLook = look;
        BlankScreen();
        Paint([this](HDC dc) { DrawSlider(m_skin, dc, FALSE, 210); });
        return Shown();
    }

    // Background under the track, and the thumb's first or second frame on it.
    Picture Expected(int pos, int frame) {
        const SkinRect track = TrackAt(screen());
        Picture expected = Blank();
        expected.Copy(Image(0), track.x, track.y, track);
        expected.Overlay(Image(3), frame * 18, 0, {track.x + pos, track.y, 18, 13});
        if (screen().wide) DrawLine(expected, track.x, track.x + pos, track.y + 12);
        return expected;
    }

    // The platform's own line on a screen that shows nothing else tells which pixels such a pen sets.
    void DrawLine(Picture& picture, int xFrom, int xTo, int y) {
        BlankScreen();
        Paint([=](HDC dc) {
            const OwnedPen pen(CreatePen(PS_SOLID, 3, RGB(141, 194, 31)));
            const SelectObjectGuard selected(dc, pen.get());
            MoveToEx(dc, xFrom, y, nullptr);
            LineTo(dc, xTo, y);
        });
        const Picture line = Shown();
        for (int row = y - 3; row <= y + 3; ++row) {
            for (int x = xFrom - 3; x <= xTo + 3; ++x) {
                if (line.at(x, row) == kFilled) picture.at(x, row) = kFilled;
            }
        }
    }
};

TEST_P(SliderLooks, AReleasedThumbShowsItsFirstFrameAtItsPosition) {
    for (const int pos : {0, 1, 13, 40, 62}) {
        SCOPED_TRACE(pos);
        const Picture expected = Expected(pos, 0);
        EXPECT_TRUE(Same(expected, Painted(pos, 1)));
    }
}

TEST_P(SliderLooks, APressedOrDraggedThumbShowsItsSecondFrame) {
    for (const DWORD look : {2u, 6u}) {
        for (const int pos : {0, 13, 62}) {
            SCOPED_TRACE(::testing::Message() << "look " << look << " at " << pos);
            const Picture expected = Expected(pos, 1);
            EXPECT_TRUE(Same(expected, Painted(pos, look)));
        }
    }
}

TEST_P(SliderLooks, TheFilledPartOfTheTrackIsALine3PixelsThickOnWideScreensOnly) {
    const Picture shown = Painted(40, 1);
    const SkinRect track = TrackAt(screen());
    for (int y = track.y + 11; y <= track.y + 13; ++y) {
        for (int x = track.x; x < track.x + 40; ++x) {
            EXPECT_EQ(shown.at(x, y) == kFilled, screen().wide) << "at " << x << ", " << y;
        }
    }
    EXPECT_NE(shown.at(track.x + 20, track.y + 10), kFilled);
    EXPECT_NE(shown.at(track.x + 20, track.y + 14), kFilled);
    EXPECT_NE(shown.at(track.x + 45, track.y + 12), kFilled);
}

TEST_P(SliderLooks, AMovedThumbLeavesNoTraceWithinTheTrack) {
    const Picture expected = Expected(10, 0);
    Painted(60, 1);
    Slider().nPos = 10;
    Paint([this](HDC dc) { DrawSlider(m_skin, dc, FALSE, 210); });
    const SkinRect track = TrackAt(screen());
    Picture expectedTrack(track.cx, track.cy), shownTrack(track.cx, track.cy);
    expectedTrack.Copy(expected, track.x, track.y, {0, 0, track.cx, track.cy});
    shownTrack.Copy(Shown(), track.x, track.y, {0, 0, track.cx, track.cy});
    EXPECT_TRUE(Same(expectedTrack, shownTrack));
}

TEST_P(SliderLooks, OnAWideScreenALoweredVolumeLeavesALineBelowTheTrack) {
    Painted(60, 1);
    Slider().nPos = 10;
    Paint([this](HDC dc) { DrawSlider(m_skin, dc, FALSE, 210); });
    const SkinRect track = TrackAt(screen());
    EXPECT_EQ(Shown().at(track.x + 50, track.y + 13) == kFilled, screen().wide);
}

TEST_P(SliderLooks, AVerticalSliderMovesItsThumbDownTheTrack) {
    Slider().nOrientation = 0;
    for (SkinSliderPlace* place : {&Slider().portrait, &Slider().landscape}) place->track = {50, 60, 18, 80};
    Picture expected = Blank();
    expected.Copy(Image(0), 50, 60, {50, 60, 18, 80});
    expected.Overlay(Image(3), 0, 0, {50, 60 + 31, 18, 13});
    // The line lies across the track whatever the slider's orientation.
    if (screen().wide) DrawLine(expected, 50, 50 + 31, 60 + 12);
    EXPECT_TRUE(Same(expected, Painted(31, 1)));
}

TEST_P(SliderLooks, AllPaintsEverySliderAndAnUnknownIdNone) {
    const Picture expected = Expected(13, 0);
    BlankScreen();
    Paint([this](HDC dc) { DrawSlider(m_skin, dc, FALSE, 211); });
    EXPECT_TRUE(Same(Blank(), Shown()));
    Paint([this](HDC dc) { DrawSlider(m_skin, dc, TRUE, -1); });
    EXPECT_TRUE(Same(expected, Shown()));
}

TEST_P(SliderLooks, WithoutATableNothingIsPainted) {
    m_skin.pSliders = nullptr;
    Paint([this](HDC dc) { DrawSlider(m_skin, dc, TRUE, -1); });
    EXPECT_TRUE(Same(Blank(), Shown()));
}

INSTANTIATE_TEST_SUITE_P(Screens, SliderLooks, ::testing::ValuesIn(kScreens), NameOfScreen);

}  // namespace
