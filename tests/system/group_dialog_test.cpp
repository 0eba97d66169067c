// The channel lists, as a hand manages them; the volume is read back.
#include "tests/system/channels_on_radio.h"

namespace {

using test::ListBoxText;
using test::PickRow;
using test::PressButton;
using test::PressSoftKey;
using test::Radio;
using test::SoftKey;
using test::TextOf;
using test::TypeInto;
using test::WaitFor;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

class GroupDialog : public test::ChannelsOnRadio {
  protected:
    void SetUp() override {
        ForgetPresets();
        SetPresets(L"G1", L"Home", {{L"Alpha", 8760, L""}});
        SetPresets(L"G2", L"Travel", {{L"Beta", 9850, L""}, {L"Gamma", 10790, L""}});
        SetPresets(L"G3", L"Work", {{L"Delta", 10000, L""}});
        Select(L"Travel");
        BuildVolume();
    }
    HWND Open(const Radio& radio) {
        const HWND dialog = OpenDialog(radio, IDC_CHANNEL_LISTS);
        // Filled when it is shown.
        EXPECT_TRUE(WaitFor([&] { return IsWindowVisible(dialog) != FALSE; }));
        return dialog;
    }
    static std::vector<std::wstring> Listed(HWND dialog) {
        std::vector<std::wstring> names;
        const auto count = SendMessageW(GetDlgItem(dialog, IDC_GROUP_LIST), LB_GETCOUNT, 0, 0);
        for (int row = 0; row < count; ++row) names.push_back(ListBoxText(dialog, IDC_GROUP_LIST, row));
        return names;
    }
    static int Picked(HWND dialog) {
        return static_cast<int>(SendMessageW(GetDlgItem(dialog, IDC_GROUP_LIST), LB_GETCURSEL, 0, 0));
    }
    static void Pick(HWND dialog, int row) {
        PickRow(dialog, IDC_GROUP_LIST, row);
        EXPECT_TRUE(WaitFor([&] { return Picked(dialog) == row; }));
    }
    // Presses a button that asks for a name, and types it.
    void GiveName(const Radio& radio, HWND dialog, int button, const std::wstring& proposed,
                  const std::wstring& name) {
        PressButton(dialog, button);
        const HWND nameDialog = BoxOver(radio, dialog, L"Channel list");
        EXPECT_EQ(TextOf(nameDialog, IDC_GROUP_NAME), proposed);
        TypeInto(nameDialog, IDC_GROUP_NAME, name);
        PressSoftKey(nameDialog, SoftKey::kLeft);
        EXPECT_TRUE(WaitUntilClosed(nameDialog));
    }
    std::wstring Selected() const { return handset.RegistryText(test::kRadioSettings, L"Selected"); }
};

TEST_F(GroupDialog, TheGroupsAreListedByNameAndTheSelectedOneIsPicked) {
    Radio radio(handset);
    radio.WaitUntilShown();
    const HWND dialog = Open(radio);
    EXPECT_THAT(Listed(dialog), ElementsAre(L"Home", L"Travel", L"Work"));
    EXPECT_EQ(Picked(dialog), 1);
}

TEST_F(GroupDialog, AGroupThatOnlyBeginsWithTheSelectedNameInAnyLetterCaseIsPicked) {
    Select(L"wO");
    Radio radio(handset);
    radio.WaitUntilShown();
    EXPECT_EQ(Picked(Open(radio)), 2);
}

TEST_F(GroupDialog, NothingIsPickedWhenTheSelectedGroupIsGone) {
    Select(L"Nowhere");
    Radio radio(handset);
    radio.WaitUntilShown();
    const HWND dialog = Open(radio);
    EXPECT_EQ(Picked(dialog), -1);
    EXPECT_EQ(Listed(dialog).size(), 3u);
}

TEST_F(GroupDialog, OkShowsThePickedGroupAndRemembersIt) {
    Radio radio(handset);
    radio.WaitUntilShown();
    ASSERT_TRUE(WaitForRows(radio, 2));
    const HWND dialog = Open(radio);
    Pick(dialog, 2);
    PressSoftKey(dialog, SoftKey::kLeft);
    ASSERT_TRUE(WaitUntilClosed(dialog));
    ASSERT_TRUE(WaitForRows(radio, 1));
    EXPECT_THAT(Names(radio), ElementsAre(L"Delta"));
    EXPECT_EQ(Selected(), L"Work");
}

TEST_F(GroupDialog, CancelChangesNothing) {
    Radio radio(handset);
    radio.WaitUntilShown();
    const auto before = Stored();
    const HWND dialog = Open(radio);
    Pick(dialog, 0);
    PressSoftKey(dialog, SoftKey::kRight);
    ASSERT_TRUE(WaitUntilClosed(dialog));
    EXPECT_EQ(Selected(), L"Travel");
    EXPECT_EQ(test::RowCount(radio.ListView()), 2);
    EXPECT_EQ(Stored(), before);
}

TEST_F(GroupDialog, ANewGroupIsProposedWithTheNextNumberAndAddedAtTheEnd) {
    Radio radio(handset);
    radio.WaitUntilShown();
    const HWND dialog = Open(radio);
    GiveName(radio, dialog, IDC_GROUP_NEW, L"Group 4", L"Aunt's house");
    EXPECT_TRUE(WaitFor([&] { return Listed(dialog).size() == 4; }));
    EXPECT_EQ(Listed(dialog).back(), L"Aunt's house");
    // Its identifier is meant for the row behind it, which is not there.
    EXPECT_EQ(SendMessageW(GetDlgItem(dialog, IDC_GROUP_LIST), LB_GETITEMDATA, 3, 0), 0);
    EXPECT_THAT(Stored(), Contains("G Aunt's house"));
}

TEST_F(GroupDialog, ANewGroupWithoutANameOrWithOneThatExistsIsRefused) {
    Radio radio(handset);
    radio.WaitUntilShown();
    const HWND dialog = Open(radio);
    for (const wchar_t* name : {L"", L"Work"}) {
        GiveName(radio, dialog, IDC_GROUP_NEW, L"Group 4", name);
        EXPECT_EQ(AnswerBoxOver(radio, dialog, L"Error"),
                  L"The list could not be added. It needs a name of its own.");
    }
    EXPECT_EQ(Listed(dialog).size(), 3u);
}

TEST_F(GroupDialog, LeavingTheNameDialogAddsNothing) {
    Radio radio(handset);
    radio.WaitUntilShown();
    const HWND dialog = Open(radio);
    PressButton(dialog, IDC_GROUP_NEW);
    const HWND nameDialog = BoxOver(radio, dialog, L"Channel list");
    PressSoftKey(nameDialog, SoftKey::kRight);
    EXPECT_TRUE(WaitUntilClosed(nameDialog));
    EXPECT_EQ(Listed(dialog).size(), 3u);
    EXPECT_EQ(radio.Box(L"Error"), nullptr);
    EXPECT_THAT(Stored(), Not(Contains("G Group 4")));
}

TEST_F(GroupDialog, ARenamedGroupMovesToTheEndAndItsFormerNeighbourIsPicked) {
    Radio radio(handset);
    radio.WaitUntilShown();
    const HWND dialog = Open(radio);
    GiveName(radio, dialog, IDC_GROUP_RENAME, L"Travel", L"Abroad");
    EXPECT_TRUE(WaitFor([&] { return Listed(dialog).back() == L"Abroad"; }));
    EXPECT_THAT(Listed(dialog), ElementsAre(L"Home", L"Work", L"Abroad"));
    EXPECT_EQ(Picked(dialog), 1);
    EXPECT_THAT(Stored(), Contains("C Abroad|Beta|9850|"));
    // The rename runs to the end of the database, by the order of the group names.
    EXPECT_THAT(Stored(), Contains("C Abroad|Delta|10000|"));
    EXPECT_THAT(Stored(), Contains("C Home|Alpha|8760|"));
}

TEST_F(GroupDialog, TheOnlyGroupStaysPickedWhenItIsRenamed) {
    ForgetPresets();
    SetPresets(L"G1", L"Home", {{L"Alpha", 8760, L""}});
    Select(L"Home");
    BuildVolume();
    Radio radio(handset);
    radio.WaitUntilShown();
    const HWND dialog = Open(radio);
    GiveName(radio, dialog, IDC_GROUP_RENAME, L"Home", L"Hearth");
    EXPECT_TRUE(WaitFor([&] { return Listed(dialog).back() == L"Hearth"; }));
    EXPECT_THAT(Listed(dialog), ElementsAre(L"Hearth"));
    EXPECT_TRUE(WaitFor([&] { return Picked(dialog) == 0; }));
}

TEST_F(GroupDialog, RenamingToAnEmptyNameIsRefused) {
    Radio radio(handset);
    radio.WaitUntilShown();
    const HWND dialog = Open(radio);
    GiveName(radio, dialog, IDC_GROUP_RENAME, L"Travel", L"");
    EXPECT_EQ(AnswerBoxOver(radio, dialog, L"Error"),
              L"The list could not be renamed. It needs a name of its own.");
    EXPECT_THAT(Listed(dialog), ElementsAre(L"Home", L"Travel", L"Work"));
    EXPECT_EQ(Picked(dialog), 1);
}

TEST_F(GroupDialog, DeletingTheFirstGroupTakesItsChannelsAndPicksTheNext) {
    Radio radio(handset);
    radio.WaitUntilShown();
    const HWND dialog = Open(radio);
    Pick(dialog, 0);
    PressButton(dialog, IDC_GROUP_DELETE);
    EXPECT_EQ(AnswerBoxOver(radio, dialog, L"Stored channels"),
              L"The channels stored in this list will be lost. Continue?");
    EXPECT_TRUE(WaitFor([&] { return Listed(dialog).size() == 2; }));
    EXPECT_THAT(Listed(dialog), ElementsAre(L"Travel", L"Work"));
    EXPECT_EQ(Picked(dialog), 0);
    EXPECT_THAT(Stored(), Not(Contains("G Home")));
    EXPECT_THAT(Stored(), Not(Contains("C Home|Alpha|8760|")));
}

TEST_F(GroupDialog, ADeletionThatIsNotConfirmedKeepsTheGroup) {
    Radio radio(handset);
    radio.WaitUntilShown();
    const HWND dialog = Open(radio);
    PressButton(dialog, IDC_GROUP_DELETE);
    AnswerBoxOver(radio, dialog, L"Stored channels", IDCANCEL);
    EXPECT_EQ(Listed(dialog).size(), 3u);
    EXPECT_EQ(Picked(dialog), 1);
    EXPECT_THAT(Stored(), Contains("G Travel"));
}

TEST_F(GroupDialog, RenameAndDeleteNeedAPickedGroup) {
    Select(L"Nowhere");
    Radio radio(handset);
    radio.WaitUntilShown();
    const HWND dialog = Open(radio);
    // The buttons are looked at with every command.
    PostMessageW(dialog, WM_COMMAND, IDC_GROUP_LIST, 0);
    EXPECT_TRUE(WaitFor([&] { return !IsWindowEnabled(GetDlgItem(dialog, IDC_GROUP_RENAME)); }));
    EXPECT_TRUE(WaitFor([&] { return !IsWindowEnabled(GetDlgItem(dialog, IDC_GROUP_DELETE)); }));
    Pick(dialog, 0);
    EXPECT_TRUE(WaitFor([&] { return IsWindowEnabled(GetDlgItem(dialog, IDC_GROUP_RENAME)) != FALSE; }));
    EXPECT_TRUE(WaitFor([&] { return IsWindowEnabled(GetDlgItem(dialog, IDC_GROUP_DELETE)) != FALSE; }));
}

}  // namespace
