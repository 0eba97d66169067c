// The stored channels on the main screen: built from the preset favourites, shown, selected, tuned.
#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <utility>

#include "tests/support/contrast.h"
#include "tests/support/screen_picture.h"
#include "tests/system/channels_on_radio.h"

namespace {

using test::Radio;
using test::RowCount;
using test::WaitFor;
using testing::ElementsAre;

class ChannelList : public test::ThreeChannelsOnRadio {
  protected:
    static int ColumnsWidth(const Radio& radio) {
        int width = 0;
        for (const WPARAM column : {0, 1})
            width += static_cast<int>(SendMessageW(radio.ListView(), LVM_GETCOLUMNWIDTH, column, 0));
        return width;
    }
    static int ClientWidth(const Radio& radio) {
        RECT client = {};
        GetClientRect(radio.ListView(), &client);
        return client.right;
    }
};

TEST_F(ChannelList, ShowsTheChannelsOfTheSelectedGroup) {
    Radio radio(handset);
    radio.WaitUntilShown();
    ASSERT_EQ(RowCount(radio.ListView()), 3);
    EXPECT_THAT(Names(radio), ElementsAre(L"Alpha", L"Beta", L"Gamma"));
    EXPECT_EQ(test::RowText(radio.ListView(), 0, 1), L"87.6 MHz ");
}

TEST_F(ChannelList, ItsRowsAreFifteenPixelsHighSoThatTheLastOneIsWholeEitherWay) {
    Radio radio(handset);
    radio.WaitUntilShown();
    EXPECT_EQ(test::RowTop(radio.ListView(), 1), 15);
    EXPECT_EQ(test::RowTop(radio.ListView(), 2), 30);
    for (const auto& [way, height] :
         {std::pair{L"orientation landscape", 60}, {L"orientation portrait", 105}}) {
        ASSERT_EQ(test::RunProgram(L"handset.exe", way), 0u);
        EXPECT_TRUE(WaitFor([&, rows = height] {
            RECT client = {};
            GetClientRect(radio.ListView(), &client);
            return client.bottom == rows;
        }));
        EXPECT_EQ(height % 15, 0);
    }
}

// On the picture, against the ground that the row has there.
TEST_F(ChannelList, TheSelectedRowIsSeenAndCanBeRead) {
    Radio radio(handset);
    radio.WaitUntilShown();
    PostMessageW(radio.ListView(), WM_KEYDOWN, VK_DOWN, 0);
    ASSERT_TRUE(WaitFor([&] { return test::SelectedRow(radio.ListView()) >= 0; }));
    const LONG top = 105 + test::RowTop(radio.ListView(), test::SelectedRow(radio.ListView()));
    const test::ScreenPicture row = test::SettledPicture(radio, {0, top, 240, top + 15});
    const test::ScreenPicture other = test::PictureOf(radio, {0, 195, 240, 209});
    const DWORD ground = test::MostOf(row);
    EXPECT_NE(ground, test::MostOf(other)) << "it looks like any other row";
    for (const DWORD text : {0xFFFF80u, 0x80FFFFu}) {
        EXPECT_GT(std::count(row.begin(), row.end(), text), 20) << std::hex << text;
        EXPECT_GE(test::Contrast(ground, text), 4.5) << std::hex << text << " on " << ground;
    }
}

TEST_F(ChannelList, AMissingSelectionLeavesTheListEmpty) {
    handset.DeleteRegistry(test::kRadioSettings, L"Selected");
    Radio radio(handset);
    radio.WaitUntilShown();
    EXPECT_EQ(RowCount(radio.ListView()), 0);
}

TEST_F(ChannelList, AFrequencyWithHundredthsIsHighlightedByItsShownText) {
    SetPresets(L"G2", L"Fine", {{L"Elsewhere", 8990, L""}, {L"Off", 8755, L""}, {L"Up", 8760, L""}});
    Select(L"Fine");
    BuildVolume();
    Radio radio(handset);
    radio.WaitUntilShown();
    EXPECT_TRUE(WaitForTrace("Current szHighLightChannel 87.5 MHz  ...\n"));
    ASSERT_THAT(Names(radio), ElementsAre(L"Elsewhere", L"Off", L"Up"));
    EXPECT_EQ(test::SelectedRow(radio.ListView()), 1);
}

TEST_F(ChannelList, AFavouriteThatCannotBeWrittenEndsTheBuildWithAnError) {
    // So many that the fault comes while they are written.
    std::vector<Preset> many;
    for (std::uint32_t i = 0; i < 300; ++i) many.push_back({L"One", 8750 + i, L""});
    SetPresets(L"G2", L"Many", many);
    Radio builder(handset, L"Kora.vol");
    ASSERT_TRUE(WaitForTrace("szCountryName: Many"));
    handset.SetState(L"Fault", L"database-write");
    const HWND box = builder.WaitForBox(L"Error");
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(Radio::BoxText(box), L"Error");
    EXPECT_THAT(handset.Trace(), testing::HasSubstr("CeWriteRecordProps failed error ["));
    Radio::Answer(box, IDOK);
    EXPECT_TRUE(builder.WaitUntilGone());
}

TEST_F(ChannelList, SelectingRowsQuicklyTunesOnlyOnceWhenTheSelectionHasRested) {
    Radio radio(handset);
    radio.WaitUntilShown();
    const ULONGLONG start = GetTickCount64();
    for (int i = 0; i < 3; ++i) PostMessageW(radio.ListView(), WM_KEYDOWN, VK_DOWN, 1);
    ASSERT_TRUE(WaitForCall("SetChannel 10790 -> 0"));
    EXPECT_GE(GetTickCount64() - start, 1400u);
    EXPECT_EQ(Count(handset.TunerCalls(), "SetChannel"), 1);
}

TEST_F(ChannelList, ActivatingARowTunesAtOnce) {
    Radio radio(handset);
    radio.WaitUntilShown();
    const ULONGLONG start = GetTickCount64();
    PostMessageW(radio.ListView(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(20, 8));
    PostMessageW(radio.ListView(), WM_LBUTTONUP, 0, MAKELPARAM(20, 8));
    PostMessageW(radio.ListView(), WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(20, 8));
    PostMessageW(radio.ListView(), WM_LBUTTONUP, 0, MAKELPARAM(20, 8));
    ASSERT_TRUE(WaitForCall("SetChannel 8760 -> 0"));
    EXPECT_LT(GetTickCount64() - start, 1400u);
}

TEST_F(ChannelList, AShortcutDoesNotAddAFrequencyThatTheListHas) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Type("985");
    ASSERT_TRUE(WaitForCall("SetChannel 9850 -> 0"));
    radio.Shortcut(IDC_ADD_CURRENT);
    ASSERT_TRUE(WaitUntilKeysCome(radio));
    EXPECT_EQ(radio.Box(nullptr), nullptr);
    radio.Type("1005");
    ASSERT_TRUE(WaitForCall("SetChannel 10050 -> 0"));
    radio.Shortcut(IDC_ADD_CURRENT);
    EXPECT_NE(radio.WaitForBox(L"Channel"), nullptr);
}

// As many rows as bring a vertical bar.
TEST_F(ChannelList, AnAddedRowThatBringsTheBarLeavesRoomForTheFrequencies) {
    SetPresets(
        L"G2", L"Many",
        {{L"A", 8760, L""}, {L"B", 8860, L""}, {L"C", 8960, L""}, {L"D", 9060, L""}, {L"E", 9160, L""}});
    Select(L"Many");
    BuildVolume();
    Radio radio(handset, L"-Rec -Channel 10050");
    radio.WaitUntilShown();
    const auto bars = [&] { return GetWindowLongW(radio.ListView(), GWL_STYLE) & (WS_HSCROLL | WS_VSCROLL); };
    for (std::uint32_t channel = 1005; bars() != WS_VSCROLL && channel < 1020; ++channel) {
        radio.Type(std::to_string(channel));
        ASSERT_TRUE(WaitForCall("SetChannel " + std::to_string(channel * 10) + " -> 0"));
        const int rows = RowCount(radio.ListView());
        const HWND dialog = OpenDialog(radio, IDC_ADD_CURRENT);
        test::PressSoftKey(dialog, test::SoftKey::kLeft);
        ASSERT_TRUE(WaitUntilClosed(dialog));
        ASSERT_TRUE(WaitForRows(radio, rows + 1));
        ASSERT_EQ(bars() & WS_HSCROLL, 0) << rows + 1 << " rows";
    }
    EXPECT_EQ(bars(), WS_VSCROLL);
    EXPECT_LE(ColumnsWidth(radio), ClientWidth(radio));
}

TEST_F(ChannelList, ItsScrollBarHasTheSkinsColours) {
    std::vector<Preset> many;
    for (std::uint32_t i = 0; i < 20; ++i) many.push_back({L"One", 8760 + i * 50, L""});
    SetPresets(L"G2", L"Many", many);
    Select(L"Many");
    BuildVolume();
    Radio radio(handset);
    radio.WaitUntilShown();
    ASSERT_TRUE(WaitFor([&] { return (GetWindowLongW(radio.ListView(), GWL_STYLE) & WS_VSCROLL) != 0; }));
    const test::ScreenPicture bar = test::SettledPicture(radio, {ClientWidth(radio), 105, 240, 210});
    const DWORD track = test::MostOf(bar);
    const DWORD brightest = *std::max_element(bar.begin(), bar.end(), [](DWORD one, DWORD other) {
        return test::Luminance(one) < test::Luminance(other);
    });
    EXPECT_LT(test::Luminance(track), 0.02) << std::hex << track;
    EXPECT_GE(test::Contrast(track, brightest), 3.0) << std::hex << brightest;
    EXPECT_LT(test::Contrast(track, brightest), 4.5)
        << "a bar that outshines the texts: " << std::hex << brightest;
}

TEST_F(ChannelList, TheRowOfTheFrequencyThatABookedStartTunesIsHighlighted) {
    Radio radio(handset, L"-Rec -Channel 9850");
    radio.WaitUntilShown();
    EXPECT_TRUE(WaitForTrace("Current szHighLightChannel 98.5 MHz  ...\n"));
    EXPECT_EQ(test::SelectedRow(radio.ListView()), 1);
}

TEST_F(ChannelList, TheFirstRowIsHighlightedAsAnyOther) {
    Radio radio(handset, L"-Rec -Channel 8760");
    radio.WaitUntilShown();
    EXPECT_TRUE(WaitForTrace("Current szHighLightChannel 87.6 MHz  ...\n"));
    EXPECT_EQ(test::SelectedRow(radio.ListView()), 0);
}

TEST_F(ChannelList, ATunedFrequencyIsCalledByTheNameInTheVolume) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Type("985");
    ASSERT_TRUE(WaitForCall("SetChannel 9850 -> 0"));
    PostMessageW(radio.Window(), 0x8003, SKIN_RDS_INFORMATION, 0);
    const HWND dialog = radio.WaitForBox(nullptr);
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(WaitFor([&] { return test::TextOf(dialog, IDC_RDS_CHANNEL_NAME) == L"Beta"; }));
}

}  // namespace
