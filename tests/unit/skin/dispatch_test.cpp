// The dispatcher: what it paints, answers and sends.
#include "shell/messages.h"
#include "skin/skin_access.h"
#include "skin/skin_window.h"
#include "tests/support/wait.h"
#include "tests/unit/skin/skin_on_screen.h"

namespace {

class Dispatcher : public SkinOnScreen {
  protected:
    POINT MiddleOf(int id) const {
        for (const ButtonLayout& button : kButtonLayout) {
            const SkinRect at = button.At(screen());
            if (button.id == id) return {at.x + at.cx / 2, at.y + at.cy / 2};
        }
        return {-1, -1};
    }
    LRESULT Touch(UINT message, int id) { return Stylus(message, MiddleOf(id).x, MiddleOf(id).y); }
    LRESULT OnTrack(UINT message, int x) {
        return Stylus(message, TrackAt(screen()).x + x, TrackAt(screen()).y + 6);
    }
    void TearDown() override {
        if (GetCapture() == m_skin.hWnd) ReleaseCapture();
    }

    // Background, the buttons released, the thumb at 13.
    Picture WholeScreen() {
        Picture expected = Blank();
        expected.Copy(Image(0), 0, 0, {0, 0, screen().cx, screen().cy});
        for (const ButtonLayout& button : kButtonLayout) {
            if (button.kind == 2) expected.Copy(Image(button.bitmap), 0, 0, button.At(screen()));
        }
        expected.Overlay(Image(3), 0, 0, {TrackAt(screen()).x + 13, TrackAt(screen()).y, 18, 13});
        return expected;
    }
};

TEST_P(Dispatcher, APaintShowsBackgroundButtonsAndSlider) {
    m_dispatching = true;
    InvalidateRect(m_skin.hWnd, nullptr, FALSE);
    UpdateWindow(m_skin.hWnd);
    EXPECT_TRUE(Same(WholeScreen(), Shown()));
    RECT left = {};
    EXPECT_FALSE(GetUpdateRect(m_skin.hWnd, &left, FALSE)) << "the paint was not completed";
}

TEST_P(Dispatcher, APaintWithoutTablesLeavesTheScreenAndIsCompleted) {
    m_dispatching = true;
    static_cast<SkinTables&>(m_skin) = {};
    InvalidateRect(m_skin.hWnd, nullptr, FALSE);
    UpdateWindow(m_skin.hWnd);
    EXPECT_TRUE(Same(Blank(), Shown()));
    RECT left = {};
    EXPECT_FALSE(GetUpdateRect(m_skin.hWnd, &left, FALSE));
}

TEST_P(Dispatcher, TheWindowIsStoredInTheSkin) {
    const HWND window = m_skin.hWnd;
    m_skin.hWnd = nullptr;
    EXPECT_EQ(SkinWindowProc(m_skin, window, WM_NULL, 0, 0), 0);
    EXPECT_EQ(m_skin.hWnd, window);
}

TEST_P(Dispatcher, AnyOtherMessageGives0AndSendsNothing) {
    for (const UINT message :
         {static_cast<UINT>(WM_KEYDOWN), static_cast<UINT>(WM_LBUTTONDBLCLK), WM_SKIN_SLIDER, WM_SKIN_CLICK,
          WM_SKIN_REPEAT, static_cast<UINT>(WM_APP) + 6}) {
        EXPECT_EQ(Send(message, 210, 5), 0);
    }
    EXPECT_TRUE(m_sent.empty());
    EXPECT_TRUE(Same(Blank(), Shown()));
}

TEST_P(Dispatcher, TappingThePlainButton224SendsAClickWithWParam0x200E0OnReleaseAndReturns0x200E0) {
    EXPECT_EQ(Touch(WM_LBUTTONDOWN, 224), 0);
    EXPECT_TRUE(Sent(WM_SKIN_CLICK).empty());
    EXPECT_EQ(Touch(WM_LBUTTONUP, 224), 0x200E0);
    const std::vector<SentMessage> clicks = Sent(WM_SKIN_CLICK);
    ASSERT_EQ(clicks.size(), 1u);
    EXPECT_EQ(clicks[0].wParam, 0x200E0u);
    EXPECT_EQ(clicks[0].lParam, MAKELPARAM(MiddleOf(224).x, MiddleOf(224).y));
    EXPECT_EQ(m_sent.size(), 1u);
}

TEST_P(Dispatcher, EachButtonIsPaintedPressedAndReleasedWithinItsRectangle) {
    for (const ButtonLayout& button : kButtonLayout) {
        SCOPED_TRACE(button.id);
        const SkinRect at = button.At(screen());
        BlankScreen();
        Touch(WM_LBUTTONDOWN, button.id);
        Picture expected = Blank();
        expected.Copy(Image(button.bitmap), button.kind == 2 ? at.cx : button.xPressed(screen()), 0, at);
        EXPECT_TRUE(Same(expected, Shown()));

        EXPECT_EQ(Touch(WM_LBUTTONUP, button.id), 0x20000 | button.id);
        if (button.kind == 2) {
            expected.Copy(Image(button.bitmap), 2 * at.cx, 0, at);
        } else {
            expected.Copy(Image(0), at.x, at.y, at);
        }
        EXPECT_TRUE(Same(expected, Shown()));
    }
}

TEST_P(Dispatcher, AButtonThatSomethingElseTapsDoesWhatAStylusDoesAndComesUpAgain) {
    for (const ButtonLayout& button : kButtonLayout) {
        SCOPED_TRACE(button.id);
        BlankScreen();
        m_sent.clear();
        TapButton(m_skin, m_skin.hWnd, button.id);
        const bool repeats = button.kind == 1;
        EXPECT_EQ(Sent(WM_SKIN_REPEAT).size(), repeats ? 1u : 0u);
        ASSERT_EQ(Sent(WM_SKIN_CLICK).size(), 1u);
        EXPECT_EQ(Sent(WM_SKIN_CLICK)[0].wParam, static_cast<WPARAM>(0x20000 | button.id));
        EXPECT_FALSE(KillTimer(m_skin.hWnd, static_cast<UINT_PTR>(button.id))) << "it is still held";
        Picture expected = Blank();
        if (button.kind == 2) {
            expected.Copy(Image(button.bitmap), 2 * button.At(screen()).cx, 0, button.At(screen()));
        } else {
            expected.Copy(Image(0), button.At(screen()).x, button.At(screen()).y, button.At(screen()));
        }
        EXPECT_TRUE(Same(expected, Shown()));
    }
}

// A box that took the stylus from it.
TEST_P(Dispatcher, AButtonThatIsHeldMeanwhileKeepsNoTapFromAnother) {
    Touch(WM_LBUTTONDOWN, 201);
    TapButton(m_skin, m_skin.hWnd, 207);
    int frame = 0;
    GetButtonFrame(m_skin, 207, &frame);
    EXPECT_EQ(frame, 2);
}

TEST_P(Dispatcher, ADisabledButtonIsTappedByNobody) {
    for (const ButtonLayout& button : kButtonLayout) EnableButton(m_skin, button.id, 1);
    BlankScreen();
    for (const ButtonLayout& button : kButtonLayout) TapButton(m_skin, m_skin.hWnd, button.id);
    TapButton(m_skin, m_skin.hWnd, 999);
    EXPECT_TRUE(m_sent.empty());
    EXPECT_TRUE(Same(Blank(), Shown()));
}

TEST_P(Dispatcher, DraggingTheThumbSendsItsPositionForEachMoveBetween0And62) {
    EXPECT_EQ(OnTrack(WM_LBUTTONDOWN, 40), 0);
    EXPECT_TRUE(m_sent.empty()) << "a press alone sends nothing";
    std::vector<LPARAM> expected;
    for (const int x : {-200, 0, 9, 10, 40, 70, 71, 79, 90, 240}) {
        EXPECT_EQ(OnTrack(WM_MOUSEMOVE, x), 0);
        expected.push_back(x <= 9 ? 0 : x >= 71 ? 62 : x - 9);
    }
    const std::vector<SentMessage> moves = Sent(WM_SKIN_SLIDER);
    ASSERT_EQ(moves.size(), expected.size());
    for (std::size_t i = 0; i < moves.size(); ++i) {
        EXPECT_EQ(moves[i].wParam, 210u);
        EXPECT_EQ(moves[i].lParam, expected[i]);
    }
    EXPECT_EQ(m_sent.size(), moves.size());
}

TEST_P(Dispatcher, ADraggedThumbIsPaintedPressedAtItsNewPositionWithinTheTrack) {
    const SkinRect track = TrackAt(screen());
    OnTrack(WM_LBUTTONDOWN, 20);
    OnTrack(WM_MOUSEMOVE, 50);
    Picture expected = Blank();
    expected.Copy(Image(0), track.x, track.y, track);
    expected.Overlay(Image(3), 18, 0, {track.x + 41, track.y, 18, 13});
    EXPECT_TRUE(Same(expected, Shown()));
}

TEST_P(Dispatcher, AReleaseOverTheSliderNamesItInTheResultAndSendsNothing) {
    OnTrack(WM_LBUTTONDOWN, 40);
    EXPECT_EQ(OnTrack(WM_LBUTTONUP, 50), 0x10000 | 210);
    EXPECT_EQ(Slider().nPos, 41);
    EXPECT_TRUE(m_sent.empty());
}

TEST_P(Dispatcher, AReleaseOverNothingGives0AndSendsNothing) {
    Stylus(WM_LBUTTONDOWN, 1, 1);
    EXPECT_EQ(Stylus(WM_LBUTTONUP, 1, 1), 0);
    EXPECT_TRUE(m_sent.empty());
    EXPECT_TRUE(Same(Blank(), Shown()));
}

TEST_P(Dispatcher, AMoveIsShownToTheButtonsOnlyWhileTheSliderIsHeld) {
    Touch(WM_LBUTTONDOWN, 224);
    EXPECT_EQ(Touch(WM_MOUSEMOVE, 225), 0);
    EXPECT_EQ(Button(224).dwLook, 2u) << "a move alone does not leave a held button";
    EXPECT_EQ(Button(225).dwLook, 1u);
    Touch(WM_LBUTTONUP, 224);
    m_sent.clear();

    OnTrack(WM_LBUTTONDOWN, 40);
    Touch(WM_MOUSEMOVE, 225);
    EXPECT_EQ(Button(225).dwLook, 10u);
    EXPECT_EQ(Sent(WM_SKIN_SLIDER).size(), 1u);
}

TEST_P(Dispatcher, AReleaseAwayFromAHeldButtonStillSendsItsClick) {
    Touch(WM_LBUTTONDOWN, 224);
    EXPECT_EQ(Stylus(WM_LBUTTONUP, 1, 1), 0x200E0);
    EXPECT_EQ(Sent(WM_SKIN_CLICK).size(), 1u);
    EXPECT_EQ(Button(224).dwLook, 1u);
}

TEST_P(Dispatcher, APressCapturesTheStylusAndEveryReleaseFromThenOnLetsItGo) {
    Stylus(WM_LBUTTONDOWN, 1, 1);
    EXPECT_EQ(GetCapture(), m_skin.hWnd);
    Stylus(WM_LBUTTONUP, 1, 1);
    EXPECT_EQ(GetCapture(), nullptr);
    SetCapture(m_skin.hWnd);
    Stylus(WM_LBUTTONUP, 1, 1);
    EXPECT_EQ(GetCapture(), nullptr) << "the flag of the first press is never cleared";
}

TEST_P(Dispatcher, SettingAPositionMovesAndPaintsTheThumbAndSendsIt) {
    const SkinRect track = TrackAt(screen());
    for (const int pos : {0, 30, 62}) {
        m_sent.clear();
        BlankScreen();
        EXPECT_EQ(Send(WM_SKIN_SETPOS, 210, pos), 0);
        EXPECT_EQ(Send(WM_SKIN_GETPOS, 210, 0), pos);
        ASSERT_EQ(m_sent.size(), 1u);
        EXPECT_EQ(m_sent[0].message, WM_SKIN_SLIDER);
        EXPECT_EQ(m_sent[0].wParam, 210u);
        EXPECT_EQ(m_sent[0].lParam, pos);
        Picture expected = Blank();
        expected.Copy(Image(0), track.x, track.y, track);
        expected.Overlay(Image(3), 0, 0, {track.x + pos, track.y, 18, 13});
        EXPECT_TRUE(Same(expected, Shown()));
    }
}

TEST_P(Dispatcher, SettingThePosition63OnThe80PixelTrackIsRefusedAndSendsNothing) {
    EXPECT_EQ(Send(WM_SKIN_SETPOS, 210, 63), 0);
    EXPECT_EQ(Send(WM_SKIN_SETPOS, 210, -1), 0);
    EXPECT_EQ(Send(WM_SKIN_SETPOS, 211, 5), 0);
    EXPECT_EQ(Send(WM_SKIN_GETPOS, 210, 0), 13);
    EXPECT_TRUE(m_sent.empty());
    EXPECT_TRUE(Same(Blank(), Shown()));
}

TEST_P(Dispatcher, ATimerIsPassedOnAsARepeatWithTheSameParameters) {
    EXPECT_EQ(Send(WM_TIMER, 202, 77), 0);
    ASSERT_EQ(m_sent.size(), 1u);
    EXPECT_EQ(m_sent[0].message, WM_SKIN_REPEAT);
    EXPECT_EQ(m_sent[0].wParam, 202u);
    EXPECT_EQ(m_sent[0].lParam, 77);
}

TEST_P(Dispatcher, HoldingAnAutoRepeatButtonYieldsRepeatTicksEvery100MsWithTheButtonsId) {
    m_dispatching = true;
    for (const int id : {201, 202, 215, 216}) {
        SCOPED_TRACE(id);
        m_sent.clear();
        Touch(WM_LBUTTONDOWN, id);
        const DWORD start = GetTickCount();
        ASSERT_TRUE(test::WaitFor([this] { return Sent(WM_SKIN_REPEAT).size() >= 6; }));
        const std::vector<SentMessage> ticks = Sent(WM_SKIN_REPEAT);
        for (const SentMessage& tick : ticks) EXPECT_EQ(tick.wParam, static_cast<WPARAM>(id));
        EXPECT_GE(ticks[5].tick_ms - start, 6u * 100 - 60);
        EXPECT_LT(ticks[5].tick_ms - start, 6u * 200);
        Touch(WM_LBUTTONUP, id);
        EXPECT_FALSE(KillTimer(m_skin.hWnd, static_cast<UINT_PTR>(id)));
    }
}

TEST_P(Dispatcher, RepaintingOneElementTouchesOnlyItsRectangle) {
    RepaintElements(m_skin, m_skin.hWnd, FALSE, 200, -1);
    Picture expected = Blank();
    expected.Copy(Image(5), 0, 0, kButtonLayout[1].At(screen()));
    EXPECT_TRUE(Same(expected, Shown()));

    const SkinRect track = TrackAt(screen());
    BlankScreen();
    RepaintElements(m_skin, m_skin.hWnd, FALSE, -1, 210);
    expected = Blank();
    expected.Copy(Image(0), track.x, track.y, track);
    expected.Overlay(Image(3), 0, 0, {track.x + 13, track.y, 18, 13});
    EXPECT_TRUE(Same(expected, Shown()));
}

TEST_P(Dispatcher, RepaintingWithTheBackgroundPaintsItFirst) {
    RepaintElements(m_skin, m_skin.hWnd, TRUE, 200, 210);
    Picture expected = Blank();
    expected.Copy(Image(0), 0, 0, {0, 0, screen().cx, screen().cy});
    expected.Copy(Image(5), 0, 0, kButtonLayout[1].At(screen()));
    expected.Overlay(Image(3), 0, 0, {TrackAt(screen()).x + 13, TrackAt(screen()).y, 18, 13});
    EXPECT_TRUE(Same(expected, Shown()));
}

TEST_P(Dispatcher, RepaintingNothingChangesNothing) {
    RepaintElements(m_skin, m_skin.hWnd, FALSE, -1, -1);
    RepaintElements(m_skin, m_skin.hWnd, FALSE, 999, 999);
    EXPECT_TRUE(Same(Blank(), Shown()));
}

INSTANTIATE_TEST_SUITE_P(Screens, Dispatcher, ::testing::Values(kPortrait, kLandscape), NameOfScreen);

}  // namespace
