// The panel by the keys of the computer, as the host hands them out: to the window in front, which is the
// radio's.
#include "handset/controls/device_registry.h"
#include "handset/controls/switches.h"
#include "handset/controls/telephone.h"
#include "handset/phone/panel_focus.h"
#include "handset/state/handset_state.h"
#include "tests/unit/handset/open_panel.h"

namespace panel {
namespace {

class PanelKeys : public OpenPanelTest {
  protected:
    static void Send(WORD virtualKey, bool down) {
        INPUT input = {};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = virtualKey;
        input.ki.dwFlags = down ? 0 : KEYEVENTF_KEYUP;
        ASSERT_EQ(SendInput(1, &input, sizeof input), 1u);
    }
    static void Press(WORD virtualKey, WORD with = 0) {
        if (with != 0) Send(with, true);
        Send(virtualKey, true);
        Send(virtualKey, false);
        if (with != 0) Send(with, false);
    }
    static bool IsInFront(HWND window) {
        return WaitUntil([&] { return window != nullptr && GetForegroundWindow() == window; }, kDeadline_ms);
    }
    // The radio in front, as when its user has just touched it.
    void StartRadioInFront() {
        StartStandIn();
        SetForegroundWindow(RadioMainWindow());
        ASSERT_TRUE(IsInFront(RadioMainWindow()));
    }
    // From the first switch to the one with that label.
    void WalkTo(const std::wstring& label) const {
        for (const SwitchPlace& place : LayOutColumn(upright_.column).switches) {
            if (place.row->label == label) return;
            Press(VK_TAB);
        }
        FAIL() << "no such switch";
    }
};

TEST_F(PanelKeys, TheSoftKeysAreF1AndF2AndTheRadiosWindowHearsNothingOfThese) {
    StartRadioInFront();
    Press(VK_F1);
    EXPECT_TRUE(WaitForNote("softkey 0\n")) << Notes();
    Press(VK_F2);
    EXPECT_TRUE(WaitForNote("softkey 1\n")) << Notes();
    Press('7');
    EXPECT_TRUE(WaitForNote("child keyup 55\n")) << Notes();
    EXPECT_EQ(Keys(), "child keydown 55\nchild keyup 55\n");
}

TEST_F(PanelKeys, AHeldSoftKeyIsPressedOnce) {
    StartRadioInFront();
    for (int i = 0; i < 3; ++i) Send(VK_F1, true);
    Send(VK_F1, false);
    Press(VK_F2);
    EXPECT_TRUE(WaitForNote("softkey 1\n")) << Notes();
    EXPECT_EQ(Notes().find("softkey 0\n"), Notes().rfind("softkey 0\n"));
}

TEST_F(PanelKeys, TheCallKeysAreF3AndF4) {
    StartRadioInFront();
    Run({L"call", L"incoming"});
    Press(VK_F3);
    EXPECT_TRUE(WaitUntil([] { return (PhoneStatus() & kPhoneTalking) != 0; }, kDeadline_ms));
    Press(VK_F4);
    EXPECT_TRUE(WaitUntil([] { return (PhoneStatus() & kPhoneTalking) == 0; }, kDeadline_ms));
}

TEST_F(PanelKeys, KeysOfAnotherProgramsWindowAreItsOwn) {
    StartRadioInFront();
    const HWND other = CreateWindowExW(0, L"EDIT", L"other", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr,
                                       nullptr, nullptr, nullptr);
    // The thread of a test is asked for its windows' messages nowhere else.
    const auto keys = [] {
        std::string taken;
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (message.message == WM_KEYDOWN) taken += std::to_string(message.wParam) + " ";
            DispatchMessageW(&message);
        }
        return taken;
    };
    SetForegroundWindow(other);
    ASSERT_TRUE(WaitUntil(
        [&] {
            keys();
            return GetForegroundWindow() == other;
        },
        kDeadline_ms));
    for (const WORD key : {VK_F1, VK_F6, VK_SPACE}) Press(key);
    std::string taken;
    EXPECT_TRUE(WaitUntil([&] { return (taken += keys()) == "112 117 32 "; }, kDeadline_ms)) << taken;
    EXPECT_EQ(Notes().find("softkey"), std::string::npos);
    EXPECT_TRUE(HeadsetPlugged());
    DestroyWindow(other);
}

TEST_F(PanelKeys, F6GoesToTheSwitchesAndBackAndTheRadioStaysInFront) {
    StartRadioInFront();
    const std::string before = Notes();
    Press(VK_F6);
    Press(VK_SPACE);
    EXPECT_TRUE(WaitUntil([] { return !HeadsetPlugged(); }, kDeadline_ms));
    Press(VK_RETURN);
    EXPECT_TRUE(WaitUntil([] { return HeadsetPlugged(); }, kDeadline_ms));
    // Digits are the radio's all the while.
    Press('7');
    EXPECT_TRUE(WaitForNote("child keyup 55\n")) << Notes();
    for (const WORD back : {VK_F6, VK_ESCAPE}) {
        Press(back);
        Press(VK_SPACE);
        const std::string all = std::string(back == VK_F6 ? "" : "child keydown 32\nchild keyup 32\n") +
                                "child keydown 32\nchild keyup 32\n";
        EXPECT_TRUE(
            WaitUntil([&] { return Keys() == "child keydown 55\nchild keyup 55\n" + all; }, kDeadline_ms))
            << Keys();
        Press(VK_F6);
    }
    EXPECT_TRUE(HeadsetPlugged());
    EXPECT_EQ(Notes().find("activate", before.size()), std::string::npos) << Notes();
}

TEST_F(PanelKeys, EverySwitchDoesByKeyWhatItDoesByTheStylus) {
    StartRadioInFront();
    Press(VK_F6);
    // In the order in which they stand.
    WalkTo(L"Storage card");
    Press(VK_SPACE);
    EXPECT_TRUE(WaitUntil([] { return !handset::StorageCardPresent(); }, kDeadline_ms));
    Press(VK_TAB, VK_SHIFT);
    Press(VK_SPACE);
    EXPECT_TRUE(WaitUntil([] { return !HeadsetPlugged(); }, kDeadline_ms));
    Press(VK_UP);
    Press(VK_UP);
    Press(VK_SPACE);
    // Back round the end: the close button, and the radio's switch before it.
    EXPECT_TRUE(WaitUntil([] { return !RadioProcess().has_value(); }, kDeadline_ms));
}

TEST_F(PanelKeys, TheSignalIsWeakenedAndGivenBackByTheArrows) {
    handset::SetStateDword(L"TunedChannel", 9850);
    StartRadioInFront();
    Press(VK_F6);
    WalkTo(L"Signal");
    Press(VK_LEFT);
    EXPECT_TRUE(WaitUntil([] { return SignalLimit() && SignalLimit()->level == 95; }, kDeadline_ms));
    EXPECT_EQ(SignalLimit()->channel, 9850u);
    Press(VK_LEFT);
    EXPECT_TRUE(WaitUntil([] { return SignalLimit() && SignalLimit()->level == 90; }, kDeadline_ms));
    Press(VK_RIGHT);
    Press(VK_RIGHT);
    EXPECT_TRUE(WaitUntil([] { return !SignalLimit(); }, kDeadline_ms));
}

TEST_F(PanelKeys, ARadioThatWasClosedByKeyIsStartedByKey) {
    StartRadioInFront();
    Press(VK_F6);
    WalkTo(L"Radio");
    Press(VK_SPACE);
    ASSERT_TRUE(WaitUntil([] { return !RadioProcess().has_value(); }, kDeadline_ms));
    ASSERT_TRUE(IsInFront(window_));
    Press(VK_SPACE);
    EXPECT_TRUE(WaitUntil([] { return RadioProcess().has_value(); }, kDeadline_ms));
}

TEST_F(PanelKeys, ThePhoneIsMovedWithCtrlAndTheArrowsAndPutAwayByItsCross) {
    StartRadioInFront();
    DragTo(60, 20);
    Press(VK_F6);
    Press(VK_RIGHT, VK_CONTROL);
    Press(VK_DOWN, VK_CONTROL);
    RECT place = {};
    EXPECT_TRUE(WaitUntil(
        [&] {
            GetWindowRect(window_, &place);
            return place.left == 76 && place.top == 36;
        },
        kDeadline_ms))
        << "stands at " << place.left << ", " << place.top;
    Press(VK_UP);
    Press(VK_RETURN);
    EXPECT_TRUE(WaitUntil([&] { return HasEnded(); }, kDeadline_ms));
}

}  // namespace
}  // namespace panel
