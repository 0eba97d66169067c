// The popup menu of the channel list, chosen from by keys.
#include "tests/system/channels_on_radio.h"

#include <commctrl.h>

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
    static HWND Menu() { return FindWindowW(L"#32768", nullptr); }
    // Opens the menu as a tap-and-hold does and steps down to the item.
    static void Choose(const Radio& radio, int item) {
        PostMessageW(radio.Window(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(radio.Window()),
                     MAKELPARAM(120, 200));
        ASSERT_TRUE(WaitFor([] { return Menu() != nullptr && IsWindowVisible(Menu()); })) << "no menu";
        for (int step = 0; step <= item; ++step) radio.Key(VK_DOWN);
        radio.Key(VK_RETURN);
    }
    // Marks a row as a tap does, and waits until the radio has tuned to it.
    void TapRow(const Radio& radio, int row, const std::string& tuned) const {
        const LPARAM point = MAKELPARAM(20, static_cast<WORD>(row * RowHeight(radio) + RowHeight(radio) / 2));
        PostMessageW(radio.ListView(), WM_LBUTTONDOWN, MK_LBUTTON, point);
        PostMessageW(radio.ListView(), WM_LBUTTONUP, 0, point);
        ASSERT_TRUE(WaitFor([&] { return test::SelectedRow(radio.ListView()) == row; }));
        ASSERT_TRUE(WaitForCall("SetChannel " + tuned + " -> 0"));
    }
    static int RowHeight(const Radio& radio) {
        const auto spacing = SendMessageW(radio.ListView(), LVM_APPROXIMATEVIEWRECT, 2, MAKELPARAM(-1, -1)) -
                             SendMessageW(radio.ListView(), LVM_APPROXIMATEVIEWRECT, 1, MAKELPARAM(-1, -1));
        return static_cast<int>(HIWORD(spacing));
    }
    static constexpr int kAdd = 0, kDelete = 1, kEdit = 2;
};

TEST_F(ChannelPopup, AddStoresWhatIsTyped) {
    Radio radio(handset);
    radio.WaitUntilShown();
    Choose(radio, kAdd);
    const HWND dialog = radio.WaitForBox(L"Channel");
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(TextOf(dialog, IDC_CHANNEL_NAME), L"");
    EXPECT_EQ(TextOf(dialog, IDC_CHANNEL_FREQUENCY), L"");
    TypeInto(dialog, IDC_CHANNEL_NAME, L"Delta");
    TypeInto(dialog, IDC_CHANNEL_FREQUENCY, L"100.5");
    PressSoftKey(dialog, SoftKey::kLeft);
    ASSERT_TRUE(WaitForRows(radio, 4));
    EXPECT_THAT(Stored(), Contains("C Test|Delta|10050|"));
}

TEST_F(ChannelPopup, DeleteAsksAndTakesTheChannelAndItsRow) {
    Radio radio(handset);
    radio.WaitUntilShown();
    TapRow(radio, 1, "9850");
    Choose(radio, kDelete);
    EXPECT_EQ(AnswerBoxOver(radio, nullptr, L"FM", IDYES), L"Delete this channel?");
    ASSERT_TRUE(WaitForRows(radio, 2));
    EXPECT_THAT(Names(radio), ElementsAre(L"Alpha", L"Gamma"));
    EXPECT_THAT(Stored(), Not(Contains("C Test|Beta|9850|http://beta")));
}

TEST_F(ChannelPopup, DeleteAnsweredWithNoKeepsTheChannelAndItsRow) {
    Radio radio(handset);
    radio.WaitUntilShown();
    TapRow(radio, 1, "9850");
    Choose(radio, kDelete);
    AnswerBoxOver(radio, nullptr, L"FM", IDNO);
    EXPECT_EQ(test::RowCount(radio.ListView()), 3);
    EXPECT_THAT(Stored(), Contains("C Test|Beta|9850|http://beta"));
}

TEST_F(ChannelPopup, EditShowsTheChannelAndChangesItInPlace) {
    Radio radio(handset);
    radio.WaitUntilShown();
    TapRow(radio, 1, "9850");
    Choose(radio, kEdit);
    const HWND dialog = radio.WaitForBox(L"Channel");
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(TextOf(dialog, IDC_CHANNEL_NAME), L"Beta");
    EXPECT_EQ(TextOf(dialog, IDC_CHANNEL_FREQUENCY), L"98.5");
    EXPECT_EQ(TextOf(dialog, IDC_CHANNEL_GUIDE), L"http://beta");
    TypeInto(dialog, IDC_CHANNEL_NAME, L"Zeta");
    TypeInto(dialog, IDC_CHANNEL_FREQUENCY, L"99.1");
    PressSoftKey(dialog, SoftKey::kLeft);
    ASSERT_TRUE(WaitUntilClosed(dialog));
    ASSERT_TRUE(WaitFor([&] { return test::RowText(radio.ListView(), 1, 0) == L"Zeta"; }));
    EXPECT_EQ(test::RowText(radio.ListView(), 1, 1), L"99.1 MHz ");
    EXPECT_THAT(Stored(), Contains("C Test|Zeta|9910|http://beta"));
}

TEST_F(ChannelPopup, AnEditToTheFrequencyOfAnotherChannelIsRefusedWithAnError) {
    Radio radio(handset);
    radio.WaitUntilShown();
    TapRow(radio, 1, "9850");
    Choose(radio, kEdit);
    const HWND dialog = radio.WaitForBox(L"Channel");
    TypeInto(dialog, IDC_CHANNEL_FREQUENCY, L"107.9");
    PressSoftKey(dialog, SoftKey::kLeft);
    EXPECT_EQ(AnswerBoxOver(radio, dialog, L"Error"),
              L"The channel could not be changed. It may already be in the list.");
    EXPECT_THAT(Stored(), Contains("C Test|Beta|9850|http://beta"));
}

TEST_F(ChannelPopup, AnAddedChannelOfAFrequencyThatTheGroupHasIsRefusedWithAnError) {
    Radio radio(handset);
    radio.WaitUntilShown();
    Choose(radio, kAdd);
    const HWND dialog = radio.WaitForBox(L"Channel");
    TypeInto(dialog, IDC_CHANNEL_NAME, L"Twice");
    TypeInto(dialog, IDC_CHANNEL_FREQUENCY, L"87.6");
    PressSoftKey(dialog, SoftKey::kLeft);
    EXPECT_EQ(AnswerBoxOver(radio, dialog, L"Error"),
              L"The channel could not be added. It may already be in the list.");
    EXPECT_EQ(test::RowCount(radio.ListView()), 3);
}

}  // namespace
