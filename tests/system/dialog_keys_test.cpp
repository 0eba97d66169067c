// The dialogs worked with the keys that a phone has: arrows and Return.
#include <commctrl.h>

#include <algorithm>
#include <set>

#include "tests/support/window_thread.h"
#include "tests/system/channels_on_radio.h"

namespace {

using test::FocusIn;
using test::Radio;
using test::WaitFor;

// More than any dialog needs to be gone through, with what its controls keep for themselves.
constexpr int kManyKeys = 60;

class DialogByKeys : public test::ThreeChannelsOnRadio {
  protected:
    static bool WaitForFocusIn(HWND dialog) {
        return WaitFor([&] { return IsChild(dialog, FocusIn(dialog)) != FALSE; });
    }
    static bool HasFocus(HWND dialog, int id) { return FocusIn(dialog) == GetDlgItem(dialog, id); }
    // As the phone gives it: to what has the focus. Returns when the dialog has dealt with it.
    static void Press(HWND dialog, WPARAM key) {
        const HWND focus = FocusIn(dialog);
        PostMessageW(focus, WM_KEYDOWN, key, 1);
        PostMessageW(focus, WM_KEYUP, key, 1);
        // A window is painted when no message is left that was posted before. The first paint may have been
        // under way already.
        for (int paint = 0; paint < 2; ++paint) {
            InvalidateRect(dialog, nullptr, FALSE);
            EXPECT_TRUE(WaitFor([&] { return !GetUpdateRect(dialog, nullptr, FALSE); }));
        }
    }
    static bool PressUntilFocus(HWND dialog, WPARAM key, int id) {
        for (int i = 0; i < kManyKeys && !HasFocus(dialog, id); ++i) Press(dialog, key);
        return HasFocus(dialog, id);
    }
    static BOOL CALLBACK AddReachable(HWND control, LPARAM controls) {
        const LONG style = GetWindowLongW(control, GWL_STYLE);
        const bool wanted = (style & WS_TABSTOP) != 0 && IsWindowVisible(control) && IsWindowEnabled(control);
        if (wanted && GetDlgCtrlID(control) != 0)
            reinterpret_cast<std::set<int>*>(controls)->insert(GetDlgCtrlID(control));
        return TRUE;
    }
    static void ExpectAllReached(HWND dialog, WPARAM key) {
        std::set<int> wanted, reached;
        EnumChildWindows(dialog, AddReachable, reinterpret_cast<LPARAM>(&wanted));
        EXPECT_FALSE(wanted.empty());
        const auto all = [&] {
            return std::includes(reached.begin(), reached.end(), wanted.begin(), wanted.end());
        };
        for (int i = 0; i < kManyKeys && !all(); ++i) {
            Press(dialog, key);
            reached.insert(GetDlgCtrlID(FocusIn(dialog)));
        }
        EXPECT_TRUE(all()) << "key " << key << " reaches " << testing::PrintToString(reached) << " of "
                           << testing::PrintToString(wanted);
    }
    static void LookAndLeave(const Radio& radio, WORD leave) {
        const HWND dialog = radio.WaitForBox(nullptr);
        ASSERT_NE(dialog, nullptr);
        ASSERT_TRUE(WaitForFocusIn(dialog));
        for (const WPARAM key : {VK_RIGHT, VK_LEFT}) ExpectAllReached(dialog, key);
        PostMessageW(dialog, WM_COMMAND, leave, 0);
        EXPECT_TRUE(WaitUntilClosed(dialog));
    }
    static HWND OpenByCommand(Radio& radio, WORD command) {
        radio.WaitUntilShown();
        const HWND dialog = OpenDialog(radio, command);
        EXPECT_TRUE(WaitForFocusIn(dialog));
        return dialog;
    }
};

TEST_F(DialogByKeys, TheArrowsReachEveryControlOfEveryDialogBothWays) {
    handset.WriteBand("[10050]\nlevel=60\nps=KORA\naf=101.1 103.4\n[10110]\nlevel=10\n");
    Radio radio(handset, L"-Rec -Channel 10050");
    radio.WaitUntilShown();
    struct Row {
        WORD open, leave;
    };
    for (const Row& row :
         {Row{IDC_ADD_CURRENT, IDC_CHANNEL_ADD_CANCEL}, Row{IDC_CHANNEL_LISTS, IDC_GROUP_CANCEL},
          Row{IDC_SETTINGS, IDOK}, Row{IDC_SCHEDULE, IDOK}}) {
        SCOPED_TRACE(row.open);
        radio.Command(row.open);
        LookAndLeave(radio, row.leave);
    }
    OpenAlternatives(radio);
    LookAndLeave(radio, IDC_AF_CLOSE);
}

TEST_F(DialogByKeys, DownGoesFromOneFieldToTheNextAndUpBack) {
    Radio radio(handset);
    const HWND dialog = OpenByCommand(radio, IDC_ADD_CURRENT);
    EXPECT_TRUE(HasFocus(dialog, IDC_CHANNEL_NAME));
    Press(dialog, VK_DOWN);
    EXPECT_TRUE(HasFocus(dialog, IDC_CHANNEL_FREQUENCY));
    Press(dialog, VK_UP);
    EXPECT_TRUE(HasFocus(dialog, IDC_CHANNEL_NAME));
}

TEST_F(DialogByKeys, LeftMovesInAFieldsTextAndLeavesTheFieldAtItsBeginning) {
    Radio radio(handset);
    const HWND dialog = OpenByCommand(radio, IDC_ADD_CURRENT);
    Press(dialog, VK_DOWN);
    ASSERT_TRUE(HasFocus(dialog, IDC_CHANNEL_FREQUENCY));
    SendMessageW(GetDlgItem(dialog, IDC_CHANNEL_FREQUENCY), EM_SETSEL, 1, 1);
    Press(dialog, VK_LEFT);
    EXPECT_TRUE(HasFocus(dialog, IDC_CHANNEL_FREQUENCY));
    Press(dialog, VK_LEFT);
    EXPECT_TRUE(HasFocus(dialog, IDC_CHANNEL_NAME));
}

TEST_F(DialogByKeys, AChoiceKeepsItsArrowsToItsLastButton) {
    Radio radio(handset);
    const HWND dialog = OpenByCommand(radio, IDC_SETTINGS);
    ASSERT_TRUE(PressUntilFocus(dialog, VK_DOWN, IDC_RECORD_WAV_STEREO));
    Press(dialog, VK_DOWN);
    EXPECT_TRUE(HasFocus(dialog, IDC_SAVE_DEFAULT));
    Press(dialog, VK_UP);
    EXPECT_TRUE(HasFocus(dialog, IDC_RECORD_WAV_STEREO));
}

TEST_F(DialogByKeys, ReturnTicksACheckBoxAndTheDialogStays) {
    Radio radio(handset);
    const HWND dialog = OpenByCommand(radio, IDC_SETTINGS);
    ASSERT_TRUE(HasFocus(dialog, IDC_MUTE_WEAK));
    const HWND box = GetDlgItem(dialog, IDC_MUTE_WEAK);
    const LRESULT before = SendMessageW(box, BM_GETCHECK, 0, 0);
    Press(dialog, VK_RETURN);
    EXPECT_NE(SendMessageW(box, BM_GETCHECK, 0, 0), before);
    EXPECT_TRUE(IsWindow(dialog));
}

TEST_F(DialogByKeys, ReturnChoosesADayForABooking) {
    Radio radio(handset);
    const HWND dialog = OpenByCommand(radio, IDC_SCHEDULE);
    ASSERT_TRUE(PressUntilFocus(dialog, VK_RIGHT, IDC_SCHEDULE_SUNDAY + 2));
    const std::string before = handset.Trace();
    Press(dialog, VK_RETURN);
    EXPECT_TRUE(WaitFor(
        [&] { return CountIn(handset.Trace(), "Check Result") == CountIn(before, "Check Result") + 1; }));
    EXPECT_TRUE(IsWindow(dialog));
}

TEST_F(DialogByKeys, TheHourAndTheMinutesOfATimeAreReachedAndTurned) {
    Radio radio(handset);
    const HWND dialog = OpenByCommand(radio, IDC_SCHEDULE);
    ASSERT_TRUE(PressUntilFocus(dialog, VK_RIGHT, IDC_SCHEDULE_START));
    const std::wstring before = test::TextOf(dialog, IDC_SCHEDULE_START);
    for (int field = 0; field < 2; ++field) {
        Press(dialog, VK_RIGHT);
        ASSERT_TRUE(HasFocus(dialog, IDC_SCHEDULE_START));
        Press(dialog, VK_UP);
    }
    const std::wstring after = test::TextOf(dialog, IDC_SCHEDULE_START);
    EXPECT_NE(before.substr(0, 2), after.substr(0, 2)) << "the hour";
    EXPECT_NE(before.substr(5), after.substr(5)) << "the minutes";
}

TEST_F(DialogByKeys, ReturnTunesToAnAlternativeFrequencyAsATouchDoes) {
    handset.WriteBand("[10050]\nlevel=60\nps=KORA\naf=101.1 103.4\n[10110]\nlevel=10\n");
    Radio radio(handset, L"-Rec -Channel 10050");
    radio.WaitUntilShown();
    const HWND dialog = OpenAlternatives(radio);
    EXPECT_TRUE(WaitForFocusIn(dialog));
    ASSERT_TRUE(PressUntilFocus(dialog, VK_RIGHT, IDC_AF_FREQUENCIES));
    const HWND list = GetDlgItem(dialog, IDC_AF_FREQUENCIES);
    const auto row = [&] {
        return SendMessageW(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED);
    };
    for (const WPARAM key : {VK_DOWN, VK_RIGHT}) {
        for (int i = 0; i < 3 && row() != 1 && HasFocus(dialog, IDC_AF_FREQUENCIES); ++i) Press(dialog, key);
    }
    ASSERT_EQ(row(), 1);
    ASSERT_TRUE(HasFocus(dialog, IDC_AF_FREQUENCIES));
    Press(dialog, VK_RETURN);
    EXPECT_TRUE(WaitForCall("SetChannel 10340 -> 0"));
    EXPECT_TRUE(IsWindow(dialog));
}

}  // namespace
