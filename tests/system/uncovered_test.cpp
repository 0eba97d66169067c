// What a dialog, a box or a menu has covered is painted again when it goes: the main screen shows what the
// radio plays by then.
#include <windows.h>

#include <commctrl.h>

#include "tests/support/screen_picture.h"
#include "tests/system/channels_on_radio.h"

namespace {

using test::PickRow;
using test::PictureOf;
using test::PressSoftKey;
using test::Radio;
using test::ScreenPicture;
using test::SettledPicture;
using test::SoftKey;
using test::TypeInto;
using test::WaitFor;

constexpr RECT kFrequency = {123, 30, 240, 50};
constexpr RECT kName = {0, 28, 118, 52};

class Uncovered : public test::ChannelsOnRadio {
  protected:
    void SetUp() override {
        ForgetPresets();
        SetPresets(L"G1", L"Home", {{L"Alpha", 9850, L""}});
        SetPresets(L"G2", L"Travel", {{L"Beta", 9850, L""}});
        Select(L"Home");
        BuildVolume();
        handset.WriteBand("[9850]\nlevel=60\nps=KORA\naf=101.1\n[10110]\nlevel=60\nps=KORA\naf=98.5\n");
    }
    // The radio on 98.5 MHz, with the picture of that part of the screen.
    ScreenPicture Tune(Radio& radio, const RECT& area) const {
        radio.WaitUntilShown();
        radio.Type("985");
        EXPECT_TRUE(WaitForCall("SetChannel 9850 -> 0"));
        return PaintedAnew(radio, area);
    }
    // What stands there when the whole window was painted.
    static ScreenPicture PaintedAnew(const Radio& radio, const RECT& area) {
        RedrawWindow(radio.Window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
        EXPECT_TRUE(WaitFor([&] { return GetUpdateRect(radio.Window(), nullptr, FALSE) == FALSE; }));
        radio.Send(WM_NULL);
        return SettledPicture(radio, area);
    }
    // The dialog with one row. The tuner knows the alternatives some time after it was tuned.
    static HWND OpenAlternatives(const Radio& radio) {
        HWND dialog = nullptr;
        const auto listed = [&] { return test::RowCount(GetDlgItem(dialog, IDC_AF_FREQUENCIES)) == 1; };
        const bool opened = WaitFor([&] {
            radio.Tap(170, 222);
            if (!WaitFor([&] { return (dialog = radio.Box(nullptr)) != nullptr && IsWindowVisible(dialog); },
                         500))
                return false;
            if (WaitFor(listed, 500)) return true;
            PostMessageW(dialog, WM_COMMAND, IDC_AF_CLOSE, 0);
            WaitUntilClosed(dialog);
            return false;
        });
        return opened ? dialog : nullptr;
    }
    static void ExpectShownAnew(const Radio& radio, const RECT& area, const ScreenPicture& before) {
        EXPECT_TRUE(WaitFor([&] { return PictureOf(radio, area) != before; }, 5000))
            << "what stood there before stays";
        const ScreenPicture shown = SettledPicture(radio, area);
        EXPECT_TRUE(shown != before);
        EXPECT_TRUE(PaintedAnew(radio, area) == shown);
    }
};

TEST_F(Uncovered, AfterATapOnAnAlternativeTheFrequencyIsThatOfTheScreen) {
    Radio radio(handset);
    const ScreenPicture before = Tune(radio, kFrequency);
    const HWND dialog = OpenAlternatives(radio);
    ASSERT_NE(dialog, nullptr);
    const HWND list = GetDlgItem(dialog, IDC_AF_FREQUENCIES);
    PostMessageW(list, WM_MOUSEMOVE, 0, MAKELPARAM(20, 8));
    for (const UINT message : {WM_LBUTTONDOWN, WM_LBUTTONUP}) {
        PostMessageW(list, message, message == WM_LBUTTONDOWN ? MK_LBUTTON : 0, MAKELPARAM(20, 8));
    }
    ASSERT_TRUE(WaitForCall("SetChannel 10110 -> 0"));
    PostMessageW(dialog, WM_COMMAND, IDC_AF_CLOSE, 0);
    ASSERT_TRUE(WaitUntilClosed(dialog));
    ExpectShownAnew(radio, kFrequency, before);
}

TEST_F(Uncovered, AfterAnotherGroupTheNameIsTheOneOfThatGroup) {
    Radio radio(handset);
    const ScreenPicture before = Tune(radio, kName);
    const HWND dialog = OpenDialog(radio, IDC_CHANNEL_LISTS);
    ASSERT_TRUE(WaitFor([&] { return IsWindowVisible(dialog) != FALSE; }));
    PickRow(dialog, IDC_GROUP_LIST, 1);
    PressSoftKey(dialog, SoftKey::kLeft);
    ASSERT_TRUE(WaitUntilClosed(dialog));
    ExpectShownAnew(radio, kName, before);
}

TEST_F(Uncovered, AfterTheCurrentChannelWasAddedItsNameIsShown) {
    Select(L"Nobody");
    Radio radio(handset);
    const ScreenPicture before = Tune(radio, kName);
    const HWND dialog = OpenDialog(radio, IDC_ADD_CURRENT);
    TypeInto(dialog, IDC_CHANNEL_NAME, L"Omega");
    PressSoftKey(dialog, SoftKey::kLeft);
    ASSERT_TRUE(WaitUntilClosed(dialog));
    ASSERT_TRUE(WaitForRows(radio, 1));
    ExpectShownAnew(radio, kName, before);
}

}  // namespace
