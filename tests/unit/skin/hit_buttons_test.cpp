// What the stylus does to the buttons.
#include "skin/hit_test.h"
#include "skin/skin_window.h"
#include "tests/support/wait.h"
#include "tests/unit/skin/skin_on_screen.h"

namespace {

constexpr UINT kDown = WM_LBUTTONDOWN, kUp = WM_LBUTTONUP, kMove = WM_MOUSEMOVE;

class ButtonHits : public SkinOnScreen {
  protected:
    POINT MiddleOf(int id) const {
        for (const ButtonLayout& button : kButtonLayout) {
            const SkinRect at = button.At(screen());
            if (button.id == id) return {at.x + at.cx / 2, at.y + at.cy / 2};
        }
        return {-1, -1};
    }
    int Hit(POINT point, UINT message) { return HitTestButtons(m_skin, point.x, point.y, message, &m_index); }
    int Hit(int id, UINT message) { return Hit(MiddleOf(id), message); }
    // Whether the window has a timer with that id; stops it.
    bool StopTimer(int id) { return KillTimer(m_skin.hWnd, static_cast<UINT_PTR>(id)) != FALSE; }

    static constexpr POINT kNowhere = {1, 1};
    int m_index = -7;
};

TEST_P(ButtonHits, EachButtonIsHitAtItsFourCornersAndNotBeyondThem) {
    for (const ButtonLayout& button : kButtonLayout) {
        SCOPED_TRACE(button.id);
        const SkinRect at = button.At(screen());
        const int right = at.x + at.cx - 1, bottom = at.y + at.cy - 1;
        for (const POINT inside :
             {POINT{at.x, at.y}, POINT{right, at.y}, POINT{at.x, bottom}, POINT{right, bottom}}) {
            EXPECT_EQ(Hit(inside, WM_NULL), button.id);
            EXPECT_EQ(m_index, static_cast<int>(&button - kButtonLayout));
        }
        for (const POINT outside : {POINT{at.x - 1, at.y}, POINT{right + 1, at.y}, POINT{at.x, at.y - 1},
                                    POINT{at.x, bottom + 1}}) {
            EXPECT_NE(Hit(outside, WM_NULL), button.id);
        }
    }
}

TEST_P(ButtonHits, WithoutAHitTheIndexIsTheNumberOfRows) {
    EXPECT_EQ(Hit(kNowhere, kDown), -1);
    EXPECT_EQ(m_index, 9);
}

TEST_P(ButtonHits, AnEmptyOrMissingTableGivesIndex0AndNoHit) {
    m_skin.nButtons = 0;
    EXPECT_EQ(Hit(201, kDown), -1);
    EXPECT_EQ(m_index, 0);
    m_skin.nButtons = 9;
    m_skin.pButtons = nullptr;
    EXPECT_EQ(Hit(201, kDown), -1);
    EXPECT_EQ(m_index, 0);
}

TEST_P(ButtonHits, ADisabledButtonIsNeverHitEvenWhenThePointLiesInIt) {
    for (const ButtonLayout& button : kButtonLayout) {
        SCOPED_TRACE(button.id);
        for (const DWORD look : {4u, 5u, 6u}) {
            Button(button.id).dwLook = look;
            for (const UINT message : {kDown, kMove, kUp, static_cast<UINT>(WM_NULL)}) {
                EXPECT_EQ(Hit(button.id, message), -1);
                EXPECT_EQ(Button(button.id).dwLook, look);
            }
        }
        EXPECT_FALSE(StopTimer(button.id));
    }
}

TEST_P(ButtonHits, APressedAndLiftedButtonGoesThroughLooks2And1) {
    for (const ButtonLayout& button : kButtonLayout) {
        SCOPED_TRACE(button.id);
        EXPECT_EQ(Hit(button.id, kDown), button.id);
        EXPECT_EQ(Button(button.id).dwLook, 2u);
        EXPECT_EQ(Hit(button.id, kUp), button.id);
        EXPECT_EQ(Button(button.id).dwLook, 1u);
    }
}

TEST_P(ButtonHits, AMultiStateButtonRunsThroughItsFourFramesInTwoTaps) {
    for (const int id : {208, 200, 207}) {
        SCOPED_TRACE(id);
        for (const int frame : {1, 2, 3, 0}) {
            Hit(id, frame % 2 != 0 ? kDown : kUp);
            EXPECT_EQ(Button(id).nFrame, frame);
        }
    }
}

TEST_P(ButtonHits, LeavingAMultiStateButtonWhileHeldDoesNotChangeItsState) {
    for (const int frame : {0, 2}) {
        Button(200).nFrame = frame;
        Hit(200, kDown);
        EXPECT_EQ(Button(200).nFrame, frame + 1);
        EXPECT_EQ(Hit(kNowhere, kMove), 200);
        EXPECT_EQ(Button(200).nFrame, frame);
        EXPECT_EQ(Button(200).dwLook, 1u);
    }
}

TEST_P(ButtonHits, LeavingAMultiStateButtonThatWasSlidOntoWrapsItsFrameBackwards) {
    Hit(207, kMove);
    EXPECT_EQ(Button(207).dwLook, 10u);
    EXPECT_EQ(Button(207).nFrame, 0);
    EXPECT_EQ(Hit(kNowhere, kMove), 207);
    EXPECT_EQ(Button(207).nFrame, 3);
}

TEST_P(ButtonHits, AMultiStateButtonWithoutFramesKeepsItsFrame) {
    Button(200).nFrames = 0;
    Hit(200, kDown);
    Hit(kNowhere, kMove);
    EXPECT_EQ(Button(200).nFrame, 0);
}

TEST_P(ButtonHits, OnlyAutoRepeatButtonsHaveATimerWhileHeld) {
    for (const ButtonLayout& button : kButtonLayout) {
        SCOPED_TRACE(button.id);
        const bool repeats = button.kind == 1;
        Hit(button.id, kDown);
        EXPECT_EQ(StopTimer(button.id), repeats);
        Hit(button.id, kUp);
        Hit(button.id, kDown);
        Hit(button.id, kUp);
        EXPECT_FALSE(StopTimer(button.id)) << "lifted";
        Hit(button.id, kDown);
        Hit(kNowhere, kMove);
        EXPECT_FALSE(StopTimer(button.id)) << "slid off";
        Hit(button.id, kMove);
        EXPECT_EQ(Button(button.id).dwLook, 10u);
        EXPECT_EQ(StopTimer(button.id), repeats) << "slid onto";
        Hit(kNowhere, kMove);
    }
}

TEST_P(ButtonHits, AMoveOverAPressedButtonStartsNoSecondTimer) {
    Hit(201, kDown);
    ASSERT_TRUE(StopTimer(201));
    EXPECT_EQ(Hit(201, kMove), 201);
    EXPECT_EQ(Button(201).dwLook, 10u);
    EXPECT_FALSE(StopTimer(201));
}

TEST_P(ButtonHits, PressingAndHoldingTheButton201GivesATimerEvery100MsUntilTheStylusIsLiftedOrSlidesOffIt) {
    struct Ending {
        POINT point;
        UINT message;
    };
    for (const Ending& ending : {Ending{MiddleOf(201), kUp}, Ending{kNowhere, kMove}}) {
        m_sent.clear();
        Hit(201, kDown);
        const DWORD start = GetTickCount();
        ASSERT_TRUE(test::WaitFor([this] { return Sent(WM_TIMER).size() >= 8; }));
        const std::vector<SentMessage> ticks = Sent(WM_TIMER);
        for (const SentMessage& tick : ticks) EXPECT_EQ(tick.wParam, 201u);
        // A loaded machine may be late, though not as late as with another period, and never early; a tick
        // that was late may be followed by an early one.
        EXPECT_GE(ticks[7].tick_ms - start, 8u * 100 - 60);
        EXPECT_LT(ticks[7].tick_ms - start, 8u * 200);
        EXPECT_GE(ticks[0].tick_ms - start, 60u) << "the first tick comes after a whole period";

        EXPECT_EQ(Hit(ending.point, ending.message), 201);
        EXPECT_FALSE(StopTimer(201)) << "the timer outlived the touch";
    }
}

TEST_P(ButtonHits,
       SlidingFromAHeldButtonOntoALaterOneReleasesTheHeldOneFirstAndPressesTheOtherOnTheNextMove) {
    Hit(201, kDown);
    EXPECT_EQ(Hit(202, kMove), 201);
    EXPECT_EQ(Button(201).dwLook, 1u);
    EXPECT_EQ(Button(202).dwLook, 1u);
    EXPECT_FALSE(StopTimer(201));
    EXPECT_EQ(Hit(202, kMove), 202);
    EXPECT_EQ(Button(202).dwLook, 10u);
    EXPECT_TRUE(StopTimer(202));
}

TEST_P(ButtonHits, SlidingOntoAButtonThatStandsEarlierPressesItWhileTheHeldOneStaysPressed) {
    Hit(202, kDown);
    EXPECT_EQ(Hit(201, kMove), 201);
    EXPECT_EQ(Button(201).dwLook, 10u);
    EXPECT_EQ(Button(202).dwLook, 2u);
    StopTimer(201);
    StopTimer(202);
}

TEST_P(ButtonHits, AnyOtherMessageReportsTheRowUnderThePointAndChangesNothing) {
    Button(201).dwLook = 2;
    for (const UINT message : {static_cast<UINT>(WM_NULL), static_cast<UINT>(WM_LBUTTONDBLCLK)}) {
        EXPECT_EQ(Hit(202, message), 202);
        EXPECT_EQ(Hit(200, message), 200);
        EXPECT_EQ(Hit(kNowhere, message), -1);
    }
    EXPECT_EQ(Button(201).dwLook, 2u);
    EXPECT_EQ(Button(202).dwLook, 1u);
    EXPECT_EQ(Button(200).nFrame, 0);
}

INSTANTIATE_TEST_SUITE_P(Screens, ButtonHits, ::testing::Values(kPortrait, kLandscape), NameOfScreen);

}  // namespace
