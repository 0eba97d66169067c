// The elements' accessors.
#include "skin/screen.h"
#include "skin/skin_access.h"
#include "tests/unit/skin/skin_on_screen.h"

namespace {

class Accessors : public SkinOnScreen {};

TEST_P(Accessors, EnablingAnEnabledButtonTwiceFirstDisablesItAndThenEnablesItAgain) {
    EnableButton(m_skin, 200, 0);
    EXPECT_EQ(Button(200).dwLook, 5u);
    EnableButton(m_skin, 200, 0);
    EXPECT_EQ(Button(200).dwLook, 1u);
}

TEST_P(Accessors, DisablingAButtonTwiceLeavesItDisabled) {
    EnableButton(m_skin, 201, 1);
    EnableButton(m_skin, 201, 1);
    EXPECT_EQ(Button(201).dwLook, 5u);
    EnableButton(m_skin, 201, 2);
    EXPECT_EQ(Button(201).dwLook, 1u) << "any value but 1 turns the bit over";
}

TEST_P(Accessors, EnablingInvalidatesTheButtonsRectangleWithErasing) {
    for (const ButtonLayout& button : kButtonLayout) {
        SCOPED_TRACE(button.id);
        ValidateRect(m_skin.hWnd, nullptr);
        EnableButton(m_skin, button.id, 1);
        RECT invalid = {};
        ASSERT_TRUE(GetUpdateRect(m_skin.hWnd, &invalid, FALSE));
        const SkinRect at = button.At(screen());
        EXPECT_EQ(invalid.left, at.x);
        EXPECT_EQ(invalid.top, at.y);
        EXPECT_EQ(invalid.right, at.x + at.cx);
        EXPECT_EQ(invalid.bottom, at.y + at.cy);
        PAINTSTRUCT paint = {};
        BeginPaint(m_skin.hWnd, &paint);
        EndPaint(m_skin.hWnd, &paint);
        EXPECT_TRUE(paint.fErase) << "the window has no brush, so a request to erase stays open";
    }
}

TEST_P(Accessors, AnUnknownButtonIsNeitherEnabledNorInvalidated) {
    ValidateRect(m_skin.hWnd, nullptr);
    for (const int id : {-1, 0, 210, 999}) EnableButton(m_skin, id, 1);
    EXPECT_FALSE(GetUpdateRect(m_skin.hWnd, nullptr, FALSE));
    for (const ButtonLayout& button : kButtonLayout) EXPECT_EQ(Button(button.id).dwLook, 1u);
}

TEST_P(Accessors, AFrameIsSetOnlyOnAMultiStateButtonAndOnlyWithinItsFrames) {
    int frame = -7;
    for (const int good : {0, 1, 2, 3, 0, 3}) {
        SetButtonFrame(m_skin, 200, good);
        EXPECT_EQ(GetButtonFrame(m_skin, 200, &frame), 1);
        EXPECT_EQ(frame, good);
    }
    for (const int bad : {-1, 4, 100}) {
        SetButtonFrame(m_skin, 200, bad);
        EXPECT_EQ(GetButtonFrame(m_skin, 200, &frame), 1);
        EXPECT_EQ(frame, 3);
    }
    SetButtonFrame(m_skin, 201, 0);
    EXPECT_EQ(Button(201).nFrame, -1);
    SetButtonFrame(m_skin, 999, 0);
    EXPECT_TRUE(Same(Blank(), Shown())) << "setting a frame paints nothing";
}

TEST_P(Accessors, TheFrameOfAnythingButAMultiStateButtonIs0WithTheResult0) {
    for (const int id : {201, 224, 210, 999, -1, -200}) {
        int frame = -7;
        EXPECT_EQ(GetButtonFrame(m_skin, id, &frame), 0) << id;
        EXPECT_EQ(frame, 0) << id;
    }
}

TEST_P(Accessors, ASlidersPositionIs0ForANegativeOrUnknownId) {
    EXPECT_EQ(GetSliderPos(m_skin, 210), 13);
    EXPECT_EQ(GetSliderPos(m_skin, -210), 0);
    EXPECT_EQ(GetSliderPos(m_skin, 211), 0);
    EXPECT_EQ(GetSliderMax(m_skin, 211), 0);
}

TEST_P(Accessors, ASlidersMaximumIsItsTrackLessItsThumbAlongItsAxis) {
    EXPECT_EQ(GetSliderMax(m_skin, 210), 62);
    (screen().portrait ? Slider().portrait : Slider().landscape).track.cx = 100;
    EXPECT_EQ(GetSliderMax(m_skin, 210), 82);
    Slider().nOrientation = 0;
    EXPECT_EQ(GetSliderMax(m_skin, 210), 0);
}

TEST_P(Accessors, APositionIsSetOnlyBetween0AndTheMaximum) {
    for (const int good : {0, 62, 31}) {
        EXPECT_EQ(SetSliderPos(m_skin, 210, good), 1);
        EXPECT_EQ(GetSliderPos(m_skin, 210), good);
    }
    for (const int bad : {-1, 63, 1000}) EXPECT_EQ(SetSliderPos(m_skin, 210, bad), 0);
    EXPECT_EQ(SetSliderPos(m_skin, 211, 0), 0);
    EXPECT_EQ(SetSliderPos(m_skin, -1, 0), 0);
    EXPECT_EQ(GetSliderPos(m_skin, 210), 31);
    EXPECT_TRUE(Same(Blank(), Shown())) << "setting a position paints nothing";
}

TEST_P(Accessors, TheScreenTestsGoByWidthAndHeight) {
    EXPECT_EQ(IsPortraitScreen(), screen().portrait);
    EXPECT_EQ(IsWideScreen(), screen().wide);
}

INSTANTIATE_TEST_SUITE_P(Screens, Accessors, ::testing::ValuesIn(kScreens), NameOfScreen);

class OtherScreens : public SkinOnScreen {
    void SetUp() override {}
};

TEST_F(OtherScreens, ASquareScreenIsLandscape) {
    UseScreen({"Square", 320, 320, false, false});
    EXPECT_FALSE(IsPortraitScreen());
    EXPECT_FALSE(IsWideScreen());
}

TEST_F(OtherScreens, AScreenOf321PixelsIsWide) {
    UseScreen({"JustWide", 321, 400, true, true});
    EXPECT_TRUE(IsWideScreen());
}

}  // namespace
