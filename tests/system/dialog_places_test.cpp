// Where the dialogs stand: each takes the whole screen, over the window that it belongs to.
#include "tests/system/channels_on_radio.h"

namespace {

using test::Radio;
using test::WaitFor;

constexpr UINT kSkinClick = 0x8003;

class DialogPlaces : public test::ThreeChannelsOnRadio {
  protected:
    static bool Covers(HWND dialog, HWND window) {
        RECT ours = {}, below = {};
        GetWindowRect(dialog, &ours);
        GetWindowRect(window, &below);
        return EqualRect(&ours, &below) != FALSE;
    }
    // Waits for the dialog, looks at it and leaves it by that command.
    static void LookAndLeave(const Radio& radio, WORD leave) {
        const HWND dialog = radio.WaitForBox(nullptr);
        ASSERT_NE(dialog, nullptr);
        EXPECT_TRUE(WaitFor([&] { return Covers(dialog, radio.Window()); }));
        PostMessageW(dialog, WM_COMMAND, leave, 0);
        EXPECT_TRUE(WaitUntilClosed(dialog));
    }
};

TEST_F(DialogPlaces, EveryDialogOfTheMenusAndOfTheKeysTakesTheWholeScreen) {
    handset.WriteBand("[10050]\nlevel=60\nps=KORA\naf=101.1\n[10110]\nlevel=10\n");
    Radio radio(handset, L"-Rec -Channel 10050");
    radio.WaitUntilShown();
    struct Row {
        WORD open, leave;
    };
    for (const Row& row :
         {Row{IDC_ADD_CURRENT, IDC_CHANNEL_ADD_CANCEL}, Row{IDC_CHANNEL_LISTS, IDC_GROUP_CANCEL},
          Row{IDC_SETTINGS, IDOK}, Row{IDC_SCHEDULE, IDOK}, Row{IDC_INFORMATION, IDOK}}) {
        SCOPED_TRACE(row.open);
        radio.Command(row.open);
        LookAndLeave(radio, row.leave);
    }
    PostMessageW(radio.Window(), kSkinClick, SKIN_RDS_INFORMATION, 0);
    LookAndLeave(radio, IDOK);
    // The tuner knows of the alternatives some time after it was tuned.
    EXPECT_TRUE(WaitFor([&] {
        PostMessageW(radio.Window(), kSkinClick, SKIN_AF_LIST, 0);
        return WaitFor([&] { return radio.Box(nullptr) != nullptr; }, 500);
    }));
    LookAndLeave(radio, IDC_AF_CLOSE);
}

TEST_F(DialogPlaces, TheOneForAGroupsNameTakesTheWholeScreenAsWell) {
    Radio radio(handset);
    radio.WaitUntilShown();
    const HWND groups = OpenDialog(radio, IDC_CHANNEL_LISTS);
    ASSERT_TRUE(WaitFor([&] { return IsWindowVisible(groups) != FALSE; }));
    test::PressButton(groups, IDC_GROUP_NEW);
    const HWND name = BoxOver(radio, groups, L"Channel list");
    EXPECT_TRUE(WaitFor([&] { return Covers(name, radio.Window()); }));
}

}  // namespace
