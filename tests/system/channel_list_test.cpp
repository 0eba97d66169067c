// The stored channels on the main screen: built from the preset favourites, shown, selected, tuned.
#include <windows.h>

#include <commctrl.h>

#include "resources/resource_ids.h"
#include "tests/system/radio_test.h"

namespace {

using test::Radio;
using test::WaitFor;
using testing::HasSubstr;

constexpr wchar_t kGroup[] = L"Test";

class ChannelList : public test::RadioTest {
  protected:
    void SetUp() override {
        const std::wstring key = L"HKCU\\Software\\Quillon\\Kora\\My Favorite\\TestGroup";
        handset.SetRegistry(key, L"Name", std::wstring(kGroup));
        handset.SetRegistry(key, L"ChannelValue1", 8760u);
        handset.SetRegistry(key, L"ChannelName1", std::wstring(L"Alpha"));
        handset.SetRegistry(key, L"ChannelValue2", 9850u);
        handset.SetRegistry(key, L"ChannelName2", std::wstring(L"Beta"));
        handset.SetRegistry(key, L"ChannelValue3", 10790u);
        handset.SetRegistry(key, L"ChannelName3", std::wstring(L"Gamma"));
        handset.SetRegistry(L"HKCR\\CLSID\\{cd0dd476-b0be-48fd-90fe-91fc36ed0a77}", L"Selected",
                            std::wstring(kGroup));
        Radio builder(handset, L"Kora.vol");
        const HWND box = builder.WaitForBox(nullptr);
        ASSERT_NE(box, nullptr);
        EXPECT_FALSE(Radio::BoxText(box).empty());
        Radio::Answer(box, IDOK);
        ASSERT_TRUE(builder.WaitUntilGone());
        EXPECT_EQ(builder.ExitCode(), 0u);
        EXPECT_TRUE(handset.TunerCalls().empty());
    }

    static int Rows(const Radio& radio) {
        return static_cast<int>(SendMessageW(radio.ListView(), LVM_GETITEMCOUNT, 0, 0));
    }
};

TEST_F(ChannelList, ShowsTheChannelsOfTheSelectedGroup) {
    Radio radio(handset);
    radio.WaitUntilShown();
    EXPECT_EQ(Rows(radio), 3);
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

TEST_F(ChannelList, AFullScanRefillsTheGroupWithNumberedChannels) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Command(IDC_AUTOSCAN);
    HWND box = radio.WaitForBox(nullptr);
    ASSERT_NE(box, nullptr);
    EXPECT_FALSE(IsWindowEnabled(radio.Window()));
    Radio::Answer(box, IDOK);
    ASSERT_TRUE(WaitForTrace("FM: Start Auto Scan Channels.\n"));
    ASSERT_TRUE(WaitFor([&] { return (box = radio.Box(L"FM")) != nullptr; }, 60000));
    Radio::Answer(box, IDOK);
    ASSERT_TRUE(WaitForTrace("FM: End Auto Scan Channels.\n"));
    ASSERT_TRUE(WaitFor([&] { return IsWindowEnabled(radio.Window()) != FALSE; }));
    EXPECT_EQ(Rows(radio), 3);
    EXPECT_THAT(handset.Trace(), HasSubstr("FM: Scanning Channel: 8750\n"));
    EXPECT_THAT(handset.Trace(), HasSubstr("FM: *** ulastChannel > uCurrentChannel!\n"));
    EXPECT_TRUE(radio.Runs());
}

TEST_F(ChannelList, AScanThatIsNotConfirmedLeavesTheChannelsAndGivesEverythingBack) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Command(IDC_AUTOSCAN);
    const HWND box = radio.WaitForBox(nullptr);
    ASSERT_NE(box, nullptr);
    Radio::Answer(box, IDCANCEL);
    ASSERT_TRUE(WaitFor([&] { return IsWindowEnabled(radio.Window()) != FALSE; }));
    EXPECT_EQ(Rows(radio), 3);
    EXPECT_EQ(Count(handset.TunerCalls(), "SeekNext"), 0);
    EXPECT_TRUE(WaitFor([&] {
        const auto calls = TunerCommands();
        return !calls.empty() && calls.back() == "SetMute 0 -> 0";
    }));
}

TEST_F(ChannelList, ANameOfAStoredFrequencyIsFoundInTheVolume) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Type("985");
    ASSERT_TRUE(WaitForCall("SetChannel 9850 -> 0"));
    // Beta's row is highlighted at the next start, because the list is read before anything is tuned.
    PostMessageW(radio.Window(), WM_CLOSE, 0, 0);
    ASSERT_TRUE(radio.WaitUntilGone());
    Radio again(handset, L"-Rec -Channel 9850");
    again.WaitUntilShown();
    EXPECT_TRUE(WaitForTrace("Current szHighLightChannel 98.5 MHz  ...\n"));
    EXPECT_EQ(static_cast<int>(
                  SendMessageW(again.ListView(), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED)),
              1);
}

TEST_F(ChannelList, TheGroupDialogListsTheGroupsAndSelectsTheSelectedOne) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Command(IDC_CHANNEL_LISTS);
    const HWND dialog = radio.WaitForBox(nullptr);
    ASSERT_NE(dialog, nullptr);
    const HWND list = GetDlgItem(dialog, IDC_GROUP_LIST);
    EXPECT_TRUE(WaitFor([&] { return SendMessageW(list, LB_GETCURSEL, 0, 0) >= 0; }));
    WCHAR name[100] = L"";
    SendMessageW(list, LB_GETTEXT, static_cast<WPARAM>(SendMessageW(list, LB_GETCURSEL, 0, 0)),
                 reinterpret_cast<LPARAM>(name));
    EXPECT_STREQ(name, kGroup);
    PostMessageW(dialog, WM_COMMAND, IDC_GROUP_CANCEL, 0);
    EXPECT_TRUE(WaitFor([&] { return radio.Box(nullptr) == nullptr; }));
}

TEST_F(ChannelList, TheCurrentFrequencyIsAddedThroughTheDialogAndRefusedASecondTime) {
    Radio radio(handset, L"-Rec -Channel 10000");
    radio.WaitUntilShown();
    radio.Command(IDC_ADD_CURRENT);
    HWND dialog = radio.WaitForBox(nullptr);
    ASSERT_NE(dialog, nullptr);
    PostMessageW(dialog, WM_COMMAND, IDC_CHANNEL_EDIT_ACCEPT, 0);
    EXPECT_TRUE(WaitFor([&] { return Rows(radio) == 4; }));

    radio.Command(IDC_ADD_CURRENT);
    ASSERT_TRUE(WaitFor([&] { return (dialog = radio.Box(nullptr)) != nullptr; }));
    PostMessageW(dialog, WM_COMMAND, IDC_CHANNEL_EDIT_ACCEPT, 0);
    const HWND refusal = radio.WaitForBox(L"Error");
    ASSERT_NE(refusal, nullptr);
    Radio::Answer(refusal, IDOK);
    EXPECT_EQ(Rows(radio), 4);
}

}  // namespace
