// The buttons in each of their looks.
#include "skin/skin_paint.h"
#include "tests/unit/skin/skin_on_screen.h"

namespace {

constexpr DWORD kReleased = 1, kPressed = 2, kDisabled = 4, kSlidOnto = 10;

class ButtonLooks : public SkinOnScreen {
  protected:
    Picture Painted(int id) {
        BlankScreen();
        Paint([&](HDC dc) { DrawButtons(m_skin, dc, FALSE, id); });
        return Shown();
    }

    // The blank screen with a part of one of the images in the button's rectangle.
    Picture With(const ButtonLayout& button, int image, int x, int y) {
        Picture expected = Blank();
        expected.Copy(Image(image), x, y, button.At(screen()));
        return expected;
    }
    Picture WithBackground(const ButtonLayout& button) {
        return With(button, 0, button.At(screen()).x, button.At(screen()).y);
    }
    Picture WithFrame(const ButtonLayout& button, int frame) {
        return With(button, button.bitmap, frame * button.At(screen()).cx, 0);
    }
};

TEST_P(ButtonLooks, AReleasedButtonWithoutStatesIsTheBackground) {
    for (const ButtonLayout& button : kButtonLayout) {
        if (button.kind == 2) continue;
        SCOPED_TRACE(button.id);
        EXPECT_TRUE(Same(WithBackground(button), Painted(button.id)));
        EXPECT_EQ(Button(button.id).nFrame, -1);
    }
}

TEST_P(ButtonLooks, AReleasedButtonWithStatesShowsItsEvenFrame) {
    for (const ButtonLayout& button : kButtonLayout) {
        if (button.kind != 2) continue;
        for (const int frame : {0, 2}) {
            SCOPED_TRACE(::testing::Message() << button.id << " frame " << frame);
            Button(button.id).nFrame = frame;
            EXPECT_TRUE(Same(WithFrame(button, frame), Painted(button.id)));
            EXPECT_EQ(Button(button.id).nFrame, frame);
        }
    }
}

TEST_P(ButtonLooks, PaintingAReleasedMultiStateButtonWhoseFrameIsOddStoresAndShowsTheEvenFrameBelowIt) {
    for (const ButtonLayout& button : kButtonLayout) {
        if (button.kind != 2) continue;
        for (const int frame : {1, 3}) {
            SCOPED_TRACE(::testing::Message() << button.id << " frame " << frame);
            Button(button.id).nFrame = frame;
            EXPECT_TRUE(Same(WithFrame(button, frame - 1), Painted(button.id)));
            EXPECT_EQ(Button(button.id).nFrame, frame - 1);
        }
    }
}

TEST_P(ButtonLooks, APressedButtonShowsItsImageOrItsFrameAsItStands) {
    for (const ButtonLayout& button : kButtonLayout) {
        SCOPED_TRACE(button.id);
        Button(button.id).dwLook = kPressed;
        if (button.kind != 2) {
            EXPECT_TRUE(Same(With(button, button.bitmap, button.xPressed(screen()), 0), Painted(button.id)));
            continue;
        }
        for (int frame = 0; frame < 4; ++frame) {
            Button(button.id).nFrame = frame;
            EXPECT_TRUE(Same(WithFrame(button, frame), Painted(button.id))) << "frame " << frame;
            EXPECT_EQ(Button(button.id).nFrame, frame);
        }
    }
}

TEST_P(ButtonLooks, ADisabledButtonShowsItsDisabledImageWhateverElseItsLookSays) {
    for (const ButtonLayout& button : kButtonLayout) {
        for (const DWORD look : {kDisabled, kDisabled | kReleased, kDisabled | kPressed}) {
            SCOPED_TRACE(::testing::Message() << button.id << " look " << look);
            Button(button.id).dwLook = look;
            EXPECT_TRUE(Same(With(button, 1, button.xDisabled(screen()), 0), Painted(button.id)));
            EXPECT_EQ(Button(button.id).dwLook, look);
        }
    }
}

TEST_P(ButtonLooks, AButtonThatWasSlidOntoIsPressedAndTheFirstOtherPressedOneIsErased) {
    for (const ButtonLayout& button : kButtonLayout) {
        SCOPED_TRACE(button.id);
        const ButtonLayout& first = kButtonLayout[button.id == 208 ? 1 : 0];
        const ButtonLayout& last = kButtonLayout[button.id == 225 ? 7 : 8];
        Button(button.id).dwLook = kSlidOnto;
        Button(first.id).dwLook = kPressed;
        Button(last.id).dwLook = kPressed;
        const int x = button.kind == 2 ? 0 : button.xPressed(screen());
        Picture expected = With(button, button.bitmap, x, 0);
        expected.Copy(Image(0), first.At(screen()).x, first.At(screen()).y, first.At(screen()));
        EXPECT_TRUE(Same(expected, Painted(button.id)));
        for (const int id : {button.id, first.id, last.id}) Button(id).dwLook = kReleased;
    }
}

TEST_P(ButtonLooks, AButtonThatWasSlidOntoAloneErasesNothing) {
    Button(201).dwLook = kSlidOnto;
    EXPECT_TRUE(Same(With(kButtonLayout[2], 2, 37, 0), Painted(201)));
}

TEST_P(ButtonLooks, AllPaintsEveryButton) {
    Paint([this](HDC dc) { DrawButtons(m_skin, dc, TRUE, -1); });
    Picture expected = Blank();
    for (const ButtonLayout& button : kButtonLayout) {
        const SkinRect at = button.At(screen());
        if (button.kind == 2) {
            expected.Copy(Image(button.bitmap), 0, 0, at);
        } else {
            expected.Copy(Image(0), at.x, at.y, at);
        }
    }
    EXPECT_TRUE(Same(expected, Shown()));
}

TEST_P(ButtonLooks, AnIdThatIsNoButtonPaintsNothing) {
    for (const int id : {-1, 0, 209, 210, 226}) EXPECT_TRUE(Same(Blank(), Painted(id))) << id;
}

TEST_P(ButtonLooks, WithoutATableNothingIsPainted) {
    m_skin.pButtons = nullptr;
    Paint([this](HDC dc) { DrawButtons(m_skin, dc, TRUE, -1); });
    EXPECT_TRUE(Same(Blank(), Shown()));
}

INSTANTIATE_TEST_SUITE_P(Screens, ButtonLooks, ::testing::ValuesIn(kScreens), NameOfScreen);

}  // namespace
