// The stored channels on the main screen: built from the preset favourites, shown, selected, tuned.
#include <windows.h>

#include <commctrl.h>

#include "tests/system/channels_on_radio.h"

namespace {

using test::Radio;
using test::RowCount;
using test::WaitFor;
using testing::ElementsAre;

class ChannelList : public test::ThreeChannelsOnRadio {};

TEST_F(ChannelList, ShowsTheChannelsOfTheSelectedGroup) {
    Radio radio(handset);
    radio.WaitUntilShown();
    ASSERT_EQ(RowCount(radio.ListView()), 3);
    EXPECT_THAT(Names(radio), ElementsAre(L"Alpha", L"Beta", L"Gamma"));
    EXPECT_EQ(test::RowText(radio.ListView(), 0, 1), L"87.6 MHz ");
}

TEST_F(ChannelList, AMissingSelectionLeavesTheListEmpty) {
    handset.DeleteRegistry(kSettings, L"Selected");
    Radio radio(handset);
    radio.WaitUntilShown();
    EXPECT_EQ(RowCount(radio.ListView()), 0);
}

TEST_F(ChannelList, AFrequencyWithHundredthsIsHighlightedByItsShownText) {
    SetPresets(L"G2", L"Fine", {{L"Off", 8755, L""}, {L"Later", 8750, L""}});
    Select(L"Fine");
    BuildVolume();
    Radio radio(handset);
    radio.WaitUntilShown();
    EXPECT_TRUE(WaitForTrace("Current szHighLightChannel 87.5 MHz  ...\n"));
    ASSERT_EQ(RowCount(radio.ListView()), 2);
    EXPECT_EQ(test::SelectedRow(radio.ListView()), 0);
}

TEST_F(ChannelList, AFavouriteThatCannotBeWrittenEndsTheBuildWithAnError) {
    SetEnvironmentVariableW(L"KORA_FAULT", L"database-write");
    EXPECT_EQ(BuildVolume(), L"Error");
    SetEnvironmentVariableW(L"KORA_FAULT", nullptr);
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

TEST_F(ChannelList, TheRowOfTheFrequencyThatABookedStartTunesIsHighlighted) {
    Radio radio(handset, L"-Rec -Channel 9850");
    radio.WaitUntilShown();
    EXPECT_TRUE(WaitForTrace("Current szHighLightChannel 98.5 MHz  ...\n"));
    EXPECT_EQ(test::SelectedRow(radio.ListView()), 1);
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
