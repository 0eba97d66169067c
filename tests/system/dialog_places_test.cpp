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
    // The one for a new group's name, over the list of groups; null when it does not come.
    static HWND OpenGroupsName(Radio& radio) {
        radio.WaitUntilShown();
        const HWND groups = OpenDialog(radio, IDC_CHANNEL_LISTS);
        if (!WaitFor([&] { return IsWindowVisible(groups) != FALSE; })) return nullptr;
        test::PressButton(groups, IDC_GROUP_NEW);
        return BoxOver(radio, groups, L"Channel list");
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
    OpenAlternatives(radio);
    LookAndLeave(radio, IDC_AF_CLOSE);
}

// A dialog with one template, which has to fill the display either way.
struct Filled {
    WORD open, leave;
    int widest;  // the control that reaches across
    bool grows;  // and down to the buttons above the soft keys
};

class FilledDialogs : public DialogPlaces {
  protected:
    static RECT PlaceOf(HWND dialog, int id) {
        RECT place = {};
        const HWND control = GetDlgItem(dialog, id);
        GetWindowRect(control, &place);
        MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
        return place;
    }
    static bool Fills(HWND dialog, const Filled& row, const SIZE& display) {
        constexpr LONG kBars = 2 * 26, kMargin = 14, kButtons = 40;
        RECT client = {};
        GetClientRect(dialog, &client);
        const RECT place = PlaceOf(dialog, row.widest);
        const LONG foot = display.cy - kBars;
        return client.right == display.cx && place.right <= display.cx &&
               place.right >= display.cx - kMargin && place.bottom <= foot &&
               (!row.grows || place.bottom >= foot - kButtons);
    }
    static void Turn(const wchar_t* way) {
        ASSERT_EQ(test::RunProgram(L"handset.exe", std::wstring(L"orientation ") + way), 0u);
    }
    static void ExpectFilledHoweverItTurns(HWND dialog, const Filled& row) {
        constexpr SIZE kUpright = {240, 320}, kOnItsSide = {320, 240};
        EXPECT_TRUE(WaitFor([&] { return Fills(dialog, row, kUpright); }));
        Turn(L"landscape");
        EXPECT_TRUE(WaitFor([&] { return Fills(dialog, row, kOnItsSide); }));
        Turn(L"portrait");
        EXPECT_TRUE(WaitFor([&] { return Fills(dialog, row, kUpright); }));
    }
};

TEST_F(FilledDialogs, OneWithASingleTemplateUsesTheDisplayAndFollowsItsTurns) {
    handset.WriteBand("[10050]\nlevel=60\nps=KORA\naf=101.1\n[10110]\nlevel=10\n");
    Radio radio(handset, L"-Rec -Channel 10050");
    radio.WaitUntilShown();
    for (const Filled& row : {Filled{IDC_ADD_CURRENT, IDC_CHANNEL_ADD_CANCEL, IDC_CHANNEL_GUIDE, false},
                              Filled{IDC_CHANNEL_LISTS, IDC_GROUP_CANCEL, IDC_GROUP_LIST, true},
                              Filled{IDC_INFORMATION, IDOK, IDC_LABEL + 4, false}}) {
        SCOPED_TRACE(row.open);
        radio.Command(row.open);
        const HWND dialog = radio.WaitForBox(nullptr);
        ASSERT_NE(dialog, nullptr);
        ExpectFilledHoweverItTurns(dialog, row);
        PostMessageW(dialog, WM_COMMAND, row.leave, 0);
        EXPECT_TRUE(WaitUntilClosed(dialog));
    }
    const Filled rds = {0, IDOK, IDC_LABEL, false},
                 alternatives = {0, IDC_AF_CLOSE, IDC_AF_FREQUENCIES, true};
    PostMessageW(radio.Window(), kSkinClick, SKIN_RDS_INFORMATION, 0);
    const HWND information = radio.WaitForBox(nullptr);
    ASSERT_NE(information, nullptr);
    ExpectFilledHoweverItTurns(information, rds);
    PostMessageW(information, WM_COMMAND, IDOK, 0);
    EXPECT_TRUE(WaitUntilClosed(information));
    const HWND list = OpenAlternatives(radio);
    ASSERT_NE(list, nullptr);
    ExpectFilledHoweverItTurns(list, alternatives);
    PostMessageW(list, WM_COMMAND, IDC_AF_CLOSE, 0);
    EXPECT_TRUE(WaitUntilClosed(list));
}

TEST_F(FilledDialogs, TheOneForAGroupsNameUsesTheDisplayAsWell) {
    Radio radio(handset);
    const HWND name = OpenGroupsName(radio);
    ASSERT_NE(name, nullptr);
    ExpectFilledHoweverItTurns(name, {0, 0, IDC_GROUP_NAME, false});
}

// A phone of VGA size: twice the pixels each way on a display that is no larger.
TEST_F(DialogPlaces, OnADisplayOfTwiceThePixelsADialogAndABoxAreTwiceAsLarge) {
    const auto sizes = [&](std::uint32_t width, std::uint32_t height) {
        handset.SetState(L"ScreenWidth", width);
        handset.SetState(L"ScreenHeight", height);
        Radio radio(handset);
        radio.WaitUntilShown();
        const HWND dialog = OpenDialog(radio, IDC_ADD_CURRENT);
        EXPECT_TRUE(WaitFor([&] { return IsWindowVisible(dialog) != FALSE; }));
        RECT field = {}, button = {};
        GetWindowRect(GetDlgItem(dialog, IDC_CHANNEL_FREQUENCY), &field);
        test::TypeInto(dialog, IDC_CHANNEL_NAME, L"");
        test::PressSoftKey(dialog, test::SoftKey::kLeft);
        const HWND box = BoxOver(radio, dialog, L"Channel");
        GetWindowRect(GetDlgItem(box, IDOK) != nullptr ? GetDlgItem(box, IDOK) : GetDlgItem(box, IDCANCEL),
                      &button);
        return std::pair{field.bottom - field.top, button.bottom - button.top};
    };
    const auto usual = sizes(240, 320), fine = sizes(480, 640);
    EXPECT_GE(fine.first * 10, usual.first * 17) << "the field " << usual.first << " and " << fine.first;
    EXPECT_EQ(fine.second, usual.second * 2) << "the button of the box";
}

TEST_F(DialogPlaces, AnOpenDialogIsAsLargeAsOneThatIsOpenedOnTheDisplayAsItIsByThen) {
    handset.SetState(L"ScreenWidth", 240u);
    handset.SetState(L"ScreenHeight", 320u);
    Radio radio(handset);
    radio.WaitUntilShown();
    HWND dialog = nullptr;
    const auto field = [&] {
        RECT place = {};
        GetWindowRect(GetDlgItem(dialog, IDC_CHANNEL_FREQUENCY), &place);
        MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
        return place;
    };
    const auto open = [&] {
        dialog = OpenDialog(radio, IDC_ADD_CURRENT);
        EXPECT_TRUE(WaitFor([&] { return IsWindowVisible(dialog) != FALSE; }));
        return field();
    };
    const auto close = [&] {
        PostMessageW(dialog, WM_COMMAND, IDC_CHANNEL_ADD_CANCEL, 0);
        EXPECT_TRUE(WaitUntilClosed(dialog));
    };
    const auto becomes = [&](const wchar_t* display, const RECT& place) {
        EXPECT_EQ(test::RunProgram(L"handset.exe", std::wstring(L"orientation ") + display), 0u);
        EXPECT_TRUE(WaitFor([&] {
            const RECT now = field();
            return EqualRect(&now, &place) != FALSE;
        })) << "its field is at "
            << field().left << " " << field().top << " " << field().right << " " << field().bottom
            << " and not at " << place.left << " " << place.top << " " << place.right << " " << place.bottom;
    };
    const RECT usual = open();
    close();
    ASSERT_EQ(test::RunProgram(L"handset.exe", L"orientation 480x640"), 0u);
    EXPECT_TRUE(WaitFor([&] {
        RECT place = {};
        GetWindowRect(radio.Window(), &place);
        return place.right == 480;
    }));
    const RECT fine = open();
    becomes(L"240x320", usual);
    becomes(L"480x640", fine);
    close();
    ASSERT_EQ(test::RunProgram(L"handset.exe", L"orientation 240x320"), 0u);
    open();
    becomes(L"480x640", fine);
    becomes(L"240x320", usual);
    close();
}

TEST_F(DialogPlaces, TheOneForAGroupsNameTakesTheWholeScreenAsWell) {
    Radio radio(handset);
    const HWND name = OpenGroupsName(radio);
    ASSERT_NE(name, nullptr);
    EXPECT_TRUE(WaitFor([&] { return Covers(name, radio.Window()); }));
}

}  // namespace
