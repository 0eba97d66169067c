// The popup menu of the channel list, chosen from by keys.
#include "tests/system/channels_on_radio.h"

#include <commctrl.h>

#include <optional>

namespace {

using test::PressSoftKey;
using test::Radio;
using test::SoftKey;
using test::TextOf;
using test::TypeInto;
using test::WaitFor;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

class ChannelPopup : public test::ThreeChannelsOnRadio {
  protected:
    void SetUp() override {
        ThreeChannelsOnRadio::SetUp();
        radio.emplace(handset);
        radio->WaitUntilShown();
    }
    static HWND Menu() { return FindWindowW(L"#32768", nullptr); }
    // Opens the menu as a tap-and-hold does and steps down to the item.
    void Choose(int item) const {
        PostMessageW(radio->Window(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(radio->Window()),
                     MAKELPARAM(120, 200));
        ASSERT_TRUE(WaitFor([] { return Menu() != nullptr && IsWindowVisible(Menu()); })) << "no menu";
        for (int step = 0; step <= item; ++step) radio->Key(VK_DOWN);
        radio->Key(VK_RETURN);
    }
    // Marks the second row as a tap does, and waits until the radio has tuned to it.
    void TapBeta() const {
        const HWND list = radio->ListView();
        const int height = RowHeight(list);
        const LPARAM point = MAKELPARAM(20, static_cast<WORD>(height + height / 2));
        PostMessageW(list, WM_LBUTTONDOWN, MK_LBUTTON, point);
        PostMessageW(list, WM_LBUTTONUP, 0, point);
        ASSERT_TRUE(WaitFor([&] { return test::SelectedRow(list) == 1; }));
        ASSERT_TRUE(WaitForCall("SetChannel 9850 -> 0"));
    }
    HWND ChooseDialog(int item) const {
        Choose(item);
        const HWND dialog = radio->WaitForBox(L"Channel");
        EXPECT_NE(dialog, nullptr) << "no dialog";
        return dialog;
    }
    HWND EditBeta() const {
        TapBeta();
        return ChooseDialog(kEdit);
    }
    static int RowHeight(HWND list) {
        const auto spacing = SendMessageW(list, LVM_APPROXIMATEVIEWRECT, 2, MAKELPARAM(-1, -1)) -
                             SendMessageW(list, LVM_APPROXIMATEVIEWRECT, 1, MAKELPARAM(-1, -1));
        return static_cast<int>(HIWORD(spacing));
    }
    std::optional<Radio> radio;
    static constexpr int kAdd = 0, kDelete = 1, kEdit = 2;
};

TEST_F(ChannelPopup, AddStoresWhatIsTyped) {
    const HWND dialog = ChooseDialog(kAdd);
    EXPECT_EQ(TextOf(dialog, IDC_CHANNEL_NAME), L"");
    EXPECT_EQ(TextOf(dialog, IDC_CHANNEL_FREQUENCY), L"");
    TypeInto(dialog, IDC_CHANNEL_NAME, L"Delta");
    TypeInto(dialog, IDC_CHANNEL_FREQUENCY, L"100.5");
    PressSoftKey(dialog, SoftKey::kLeft);
    ASSERT_TRUE(WaitForRows(*radio, 4));
    EXPECT_THAT(Stored(), Contains("C Test|Delta|10050|"));
}

TEST_F(ChannelPopup, DeleteAsksAndTakesTheChannelAndItsRow) {
    TapBeta();
    Choose(kDelete);
    EXPECT_EQ(AnswerBoxOver(*radio, nullptr, L"FM", IDYES), L"Delete this channel?");
    ASSERT_TRUE(WaitForRows(*radio, 2));
    EXPECT_THAT(Names(*radio), ElementsAre(L"Alpha", L"Gamma"));
    EXPECT_THAT(Stored(), Not(Contains("C Test|Beta|9850|http://beta")));
}

TEST_F(ChannelPopup, DeleteAnsweredWithNoKeepsTheChannelAndItsRow) {
    TapBeta();
    Choose(kDelete);
    AnswerBoxOver(*radio, nullptr, L"FM", IDNO);
    EXPECT_EQ(test::RowCount(radio->ListView()), 3);
    EXPECT_THAT(Stored(), Contains("C Test|Beta|9850|http://beta"));
}

TEST_F(ChannelPopup, EditShowsTheChannelAndChangesItInPlace) {
    const HWND dialog = EditBeta();
    EXPECT_EQ(TextOf(dialog, IDC_CHANNEL_NAME), L"Beta");
    EXPECT_EQ(TextOf(dialog, IDC_CHANNEL_FREQUENCY), L"98.5");
    EXPECT_EQ(TextOf(dialog, IDC_CHANNEL_GUIDE), L"http://beta");
    TypeInto(dialog, IDC_CHANNEL_NAME, L"Zeta");
    TypeInto(dialog, IDC_CHANNEL_FREQUENCY, L"99.1");
    PressSoftKey(dialog, SoftKey::kLeft);
    ASSERT_TRUE(WaitUntilClosed(dialog));
    ASSERT_TRUE(WaitFor([&] { return test::RowText(radio->ListView(), 1, 0) == L"Zeta"; }));
    EXPECT_EQ(test::RowText(radio->ListView(), 1, 1), L"99.1 MHz ");
    EXPECT_THAT(Stored(), Contains("C Test|Zeta|9910|http://beta"));
}

TEST_F(ChannelPopup, AfterAnEditNobodyHasTheVolumeOpenBesideTheRadio) {
    const HWND dialog = EditBeta();
    TypeInto(dialog, IDC_CHANNEL_NAME, L"Zeta");
    PressSoftKey(dialog, SoftKey::kLeft);
    ASSERT_TRUE(WaitFor([&] { return test::RowText(radio->ListView(), 1, 0) == L"Zeta"; }));
    radio->Send(WM_NULL);
    EXPECT_EQ(BuildVolume(), L"The channel database was created.");
}

TEST_F(ChannelPopup, ADeletedRowThatWasSelectedAsksNothingOfTheTuner) {
    TapBeta();
    // At once, and when the selection has rested.
    ASSERT_TRUE(WaitFor([&] { return Count(handset.TunerCalls(), "SetChannel 9850 -> 0") == 2; }));
    const std::size_t before = handset.TunerCalls().size();
    Choose(kDelete);
    AnswerBoxOver(*radio, nullptr, L"FM", IDYES);
    ASSERT_TRUE(WaitForRows(*radio, 2));
    // Longer than a selection rests before it is tuned.
    ASSERT_TRUE(WaitForRounds(4));
    EXPECT_THAT(TunerCommands(before), testing::IsEmpty());
}

TEST_F(ChannelPopup, AnEditToTheFrequencyOfAnotherChannelIsRefusedWithAnError) {
    const HWND dialog = EditBeta();
    TypeInto(dialog, IDC_CHANNEL_FREQUENCY, L"107.9");
    PressSoftKey(dialog, SoftKey::kLeft);
    EXPECT_EQ(AnswerBoxOver(*radio, dialog, L"Error"),
              L"The channel could not be changed. It may already be in the list.");
    EXPECT_THAT(Stored(), Contains("C Test|Beta|9850|http://beta"));
}

TEST_F(ChannelPopup, AnAddedChannelOfAFrequencyThatTheGroupHasIsRefusedWithAnError) {
    const HWND dialog = ChooseDialog(kAdd);
    TypeInto(dialog, IDC_CHANNEL_NAME, L"Twice");
    TypeInto(dialog, IDC_CHANNEL_FREQUENCY, L"87.6");
    PressSoftKey(dialog, SoftKey::kLeft);
    EXPECT_EQ(AnswerBoxOver(*radio, dialog, L"Error"),
              L"The channel could not be added. It may already be in the list.");
    EXPECT_EQ(test::RowCount(radio->ListView()), 3);
}

}  // namespace
