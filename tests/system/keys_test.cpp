// Hardware keys: digits tune, arrows change the volume and the focus, Return darkens the display.
#include "resources/resource_ids.h"
#include "tests/support/screen_picture.h"
#include "tests/support/window_thread.h"
#include "tests/system/radio_test.h"

namespace {

using test::PictureOf;
using test::Radio;
using test::WaitFor;
using testing::HasSubstr;

constexpr UINT kSetPosition = 0x8004;
constexpr UINT kGetPosition = 0x8005;
constexpr RECT kFrequency = {123, 30, 240, 50};
constexpr int kVolumeSliderEnd = 62;  // 80 pixels of track less 18 of thumb

class Keys : public test::RadioTest {
  protected:
    static std::wstring FocusOf(const Radio& radio) {
        WCHAR name[64] = L"";
        GetClassNameW(test::FocusIn(radio.Window()), name, 64);
        return name;
    }
};

TEST_F(Keys, ThreeDigitsTuneBelow100MHz) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Type("875");
    EXPECT_TRUE(WaitForCall("SetChannel 8750 -> 0"));
}

TEST_F(Keys, FourDigitsTuneFrom100MHz) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Type("1080");
    EXPECT_TRUE(WaitForCall("SetChannel 10800 -> 0"));
}

TEST_F(Keys, ADigitAfterAnAbandonedEntryLeavesTheScreenToo) {
    Hurry(10);
    Radio radio(handset, L"-Rec -Channel 9850");
    radio.WaitUntilShown();
    const test::ScreenPicture tuned = test::SettledPicture(radio, kFrequency);
    radio.Type("8");
    EXPECT_TRUE(WaitFor([&] { return PictureOf(radio, kFrequency) != tuned; }));
    ASSERT_TRUE(WaitFor([&] { return PictureOf(radio, kFrequency) == tuned; })) << "the entry stays";
    radio.Type("7");
    EXPECT_TRUE(WaitFor([&] { return PictureOf(radio, kFrequency) != tuned; }));
    EXPECT_TRUE(WaitFor([&] { return PictureOf(radio, kFrequency) == tuned; })) << "the second digit stays";
}

TEST_F(Keys, EveryKeyIsTraced) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Key(VK_F5);
    EXPECT_TRUE(WaitForTrace("FM: ui.cpp: WndProc: WM_KEYDOWN\n"));
}

TEST_F(Keys, LeftAtVolumePosition3Sets0) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Send(kSetPosition, SKIN_VOLUME, 3);
    radio.Key(VK_LEFT);
    EXPECT_TRUE(WaitForCall("SetVolume 0 -> 0"));
    EXPECT_EQ(radio.Send(kGetPosition, SKIN_VOLUME), 0);
}

TEST_F(Keys, RightNearTheMaximumSetsTheMaximum) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Send(kSetPosition, SKIN_VOLUME, kVolumeSliderEnd - 2);
    radio.Key(VK_RIGHT);
    EXPECT_TRUE(WaitForCall("SetVolume 100 -> 0"));
    EXPECT_EQ(radio.Send(kGetPosition, SKIN_VOLUME), kVolumeSliderEnd);
}

TEST_F(Keys, UpAndDownGiveTheFocusToTheList) {
    Radio radio(handset);
    radio.WaitUntilShown();
    for (const WPARAM key : {VK_UP, VK_DOWN}) {
        PostMessageW(radio.ListView(), WM_KEYDOWN, VK_LEFT, 1);  // the list hands the focus to the window
        ASSERT_TRUE(WaitFor([&] { return FocusOf(radio) == L"Kora"; }));
        radio.Key(key);
        EXPECT_TRUE(WaitFor([&] { return FocusOf(radio) == L"SysListView32"; }));
    }
}

TEST_F(Keys, VolumeKeysAndReturnWorkWhileTheListHasTheFocus) {
    Radio radio(handset);
    radio.WaitUntilShown();
    const LRESULT before = radio.Send(kGetPosition, SKIN_VOLUME);
    PostMessageW(radio.ListView(), WM_KEYDOWN, VK_RIGHT, 1);
    EXPECT_TRUE(WaitFor([&] { return radio.Send(kGetPosition, SKIN_VOLUME) == before + 5; }));
    PostMessageW(radio.ListView(), WM_KEYDOWN, VK_RETURN, 1);
    EXPECT_TRUE(WaitForConsole("********3.Screen OFF**********\n"));
}

TEST_F(Keys, DigitsTuneWhileTheListHasTheFocus) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Key(VK_DOWN);
    ASSERT_TRUE(WaitFor([&] { return FocusOf(radio) == L"SysListView32"; }));
    for (const WPARAM digit : {'9', '8', '5'}) PostMessageW(radio.ListView(), WM_KEYDOWN, digit, 1);
    EXPECT_TRUE(WaitForCall("SetChannel 9850 -> 0"));
}

TEST_F(Keys, DigitsOfADesktopsNumberPadTuneToo) {
    Radio radio(handset);
    radio.WaitUntilShown();
    for (const WPARAM digit : {VK_NUMPAD8, VK_NUMPAD7, VK_NUMPAD6}) radio.Key(digit);
    EXPECT_TRUE(WaitForCall("SetChannel 8760 -> 0"));
}

TEST_F(Keys, WithTheDisplayOffDigitsAndArrowsAreIgnoredAndReturnTurnsItOn) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Key(VK_RETURN);
    ASSERT_TRUE(WaitForConsole("********3.Screen OFF**********\n"));
    const std::size_t before = handset.TunerCalls().size();
    const LRESULT volume = radio.Send(kGetPosition, SKIN_VOLUME);

    radio.Type("875");
    radio.Key(VK_RIGHT);
    ASSERT_TRUE(WaitFor([&] {
        const auto lines = test::Lines(handset.Console());
        return Count(lines, "********2.Screen OFF**********") == 4;
    }));
    EXPECT_TRUE(TunerCommands(before).empty());
    EXPECT_EQ(radio.Send(kGetPosition, SKIN_VOLUME), volume);

    radio.Key(VK_RETURN);
    ASSERT_TRUE(WaitForConsole("********1.Screen ON**********\n"));
    EXPECT_TRUE(WaitFor([&] { return FocusOf(radio) == L"SysListView32"; }));
    radio.Key(VK_RIGHT);
    EXPECT_TRUE(WaitForConsole("********4.Screen ON**********\n"));
}

TEST_F(Keys, WithTheDisplayOffAShortcutStartsNothing) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Key(VK_RETURN);
    ASSERT_TRUE(WaitForConsole("********3.Screen OFF**********\n"));
    radio.Shortcut(IDC_SETTINGS);
    radio.Shortcut(static_cast<WORD>(IDC_EXIT));
    ASSERT_TRUE(WaitForConsole("********2.Screen OFF**********\n********2.Screen OFF**********\n"));
    radio.Send(WM_NULL);
    EXPECT_EQ(radio.Box(nullptr), nullptr);
    EXPECT_TRUE(radio.Runs());
    radio.Key(VK_RETURN);
    ASSERT_TRUE(WaitForConsole("********1.Screen ON**********\n"));
    radio.Shortcut(IDC_SETTINGS);
    EXPECT_NE(radio.WaitForBox(nullptr), nullptr);
}

}  // namespace
