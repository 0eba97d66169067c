// The soft-key menus as the user sees them on the screen.
#include <algorithm>
#include <cstdlib>
#include <initializer_list>

#include "resources/resource_ids.h"
#include "tests/system/channels_on_radio.h"

namespace {

using test::Radio;
using test::WaitFor;

constexpr int kMarkColumn = 16;  // pixels in front of the texts

// The popup menus that are open, uppermost first.
std::vector<HWND> OpenMenus() {
    std::vector<HWND> menus;
    for (HWND menu = nullptr; (menu = FindWindowExW(nullptr, menu, L"#32768", nullptr)) != nullptr;) {
        if (IsWindowVisible(menu)) menus.push_back(menu);
    }
    return menus;
}

// How many pixels of each row's mark column are not its background, from the top down.
std::vector<int> Marks(HWND menu, int rows) {
    RECT place = {};
    GetWindowRect(menu, &place);
    RECT client = {};
    GetClientRect(menu, &client);
    const HDC screen = GetDC(nullptr);
    std::vector<int> marks;
    POINT corner = {0, 0};
    ClientToScreen(menu, &corner);
    for (int row = 0; row < rows; ++row) {
        const LONG top = corner.y + client.bottom * row / rows + 4;
        const LONG bottom = corner.y + client.bottom * (row + 1) / rows - 3;
        const COLORREF background = GetPixel(screen, corner.x + 2, top);
        int count = 0;
        for (LONG y = top; y < bottom; ++y) {
            for (LONG x = corner.x + 2; x < corner.x + kMarkColumn; ++x)
                count += GetPixel(screen, x, y) != background ? 1 : 0;
        }
        marks.push_back(count);
    }
    ReleaseDC(nullptr, screen);
    return marks;
}

class Menus : public test::RadioTest {
  protected:
    // Opens the menu of the n-th entry below the right soft key, as keys do; null when it does not come.
    static HWND OpenSubmenu(const Radio& radio, int entry) {
        EXPECT_EQ(test::RunProgram(L"handset.exe", L"softkey right"), 0u);
        EXPECT_TRUE(WaitFor([] { return OpenMenus().size() == 1; })) << "no menu";
        const std::vector<HWND> first = OpenMenus();
        for (int down = 0; down < entry; ++down) radio.Key(VK_DOWN);
        radio.Key(VK_RIGHT);
        EXPECT_TRUE(WaitFor([] { return OpenMenus().size() == 2; })) << "no submenu";
        for (const HWND menu : OpenMenus()) {
            if (std::find(first.begin(), first.end(), menu) == first.end()) return menu;
        }
        return nullptr;
    }
    static HWND OpenSleepMenu(const Radio& radio) { return OpenSubmenu(radio, 3); }
    static void LeaveMenus(const Radio& radio) {
        for (int level = 0; level < 2; ++level) radio.Key(VK_ESCAPE);
        ASSERT_TRUE(WaitFor([] { return OpenMenus().empty(); }));
    }
};

TEST_F(Menus, TheChosenSleepTimeIsTheOnlyOneWithACheckMark) {
    constexpr WORD kTimes[] = {IDC_SLEEP_OFF, IDC_SLEEP_15, IDC_SLEEP_30, IDC_SLEEP_60};
    constexpr int kRows = static_cast<int>(std::size(kTimes));
    Radio radio(handset);
    radio.WaitUntilShown();
    for (const int chosen : {2, 0}) {
        radio.Command(kTimes[chosen]);
        radio.Send(WM_NULL);
        const HWND menu = OpenSleepMenu(radio);
        ASSERT_NE(menu, nullptr);
        // The last row is the lit one then, and says nothing.
        for (int down = 1; down < kRows; ++down) radio.Key(VK_DOWN);
        const auto checked = [&] {
            std::vector<int> rows;
            const std::vector<int> marks = Marks(menu, kRows);
            for (int row = 0; row + 1 < kRows; ++row) {
                if (marks[static_cast<std::size_t>(row)] > 0) rows.push_back(row);
            }
            return rows;
        };
        EXPECT_TRUE(WaitFor([&] { return checked() == std::vector<int>{chosen}; }))
            << chosen << ": " << testing::PrintToString(Marks(menu, kRows));
        LeaveMenus(radio);
    }
}

// The entries of the menu that has the buttons of the screen, in their order.
enum class Button {
    kRecord,
    kMute,
    kLoudspeaker,
    kSeekDown,
    kSeekUp,
    kStepDown,
    kStepUp,
    kAlternatives,
    kServices,
};
constexpr int kButtonRows = 11;  // with two separators

class ButtonMenu : public Menus {
  protected:
    void SetUp() override {
        handset.WriteBand(
            "[9850]\nlevel=45\nps=KORA ONE\naf=101.1 103.4\n[10110]\nlevel=30\n[10340]\nlevel=50\n");
    }
    static HWND Open(const Radio& radio) { return OpenSubmenu(radio, 4); }
    void Choose(const Radio& radio, Button button) const {
        ASSERT_NE(Open(radio), nullptr);
        for (int down = 0; down < static_cast<int>(button); ++down) radio.Key(VK_DOWN);
        radio.Key(VK_RETURN);
        ASSERT_TRUE(WaitFor([] { return OpenMenus().empty(); }));
    }
    int Calls(const char* call) const { return Count(handset.TunerCalls(), call); }
};

TEST_F(ButtonMenu, KeysAloneDoWhatATapOnEachButtonDoes) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Type("985");
    ASSERT_TRUE(WaitForCall("SetChannel 9850 -> 0"));
    Choose(radio, Button::kStepUp);
    EXPECT_TRUE(WaitForCall("SetChannel 9860 -> 0"));
    Choose(radio, Button::kStepDown);
    EXPECT_TRUE(WaitFor([&] { return Calls("SetChannel 9850 -> 0") == 2; }));
    Choose(radio, Button::kSeekUp);
    EXPECT_TRUE(WaitForCall("SeekNext -> 0"));
    Choose(radio, Button::kSeekDown);
    EXPECT_TRUE(WaitForCall("SeekPrev -> 0"));
    Choose(radio, Button::kMute);
    EXPECT_TRUE(WaitForCall("SetMute 1 -> 0"));
    Choose(radio, Button::kMute);
    EXPECT_TRUE(WaitForCall("SetMute 0 -> 0"));
    Choose(radio, Button::kLoudspeaker);
    EXPECT_TRUE(WaitForCall("SetSpeaker 1 -> 0"));
    Choose(radio, Button::kLoudspeaker);
    EXPECT_TRUE(WaitForCall("SetSpeaker 0 -> 0"));
    ASSERT_TRUE(WaitUntilKeysCome(radio));
    // No key of the skin is held: it would go on.
    EXPECT_EQ(Calls("SeekNext"), 1);
    EXPECT_EQ(Calls("SeekPrev"), 1);
    EXPECT_EQ(Calls("SetChannel 9860"), 1);
}

TEST_F(ButtonMenu, KeysAloneOpenTheAlternativesAndTheServices) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Type("985");
    ASSERT_TRUE(WaitForCall("SetChannel 9850 -> 0"));
    ASSERT_TRUE(WaitForAlternatives("KORA ONE"));
    Choose(radio, Button::kAlternatives);
    const HWND list = radio.WaitForBox(nullptr);
    ASSERT_NE(list, nullptr);
    EXPECT_NE(GetDlgItem(list, IDC_AF_MEASURE), nullptr);
    PostMessageW(list, WM_COMMAND, IDC_AF_CLOSE, 0);
    ASSERT_TRUE(WaitFor([&] { return radio.Box(nullptr) == nullptr; }));
    Choose(radio, Button::kServices);
    const HWND services = radio.WaitForBox(nullptr);
    ASSERT_NE(services, nullptr);
    EXPECT_THAT(radio.BoxText(services), testing::HasSubstr(L"FM 98.5 MHz"));
    PostMessageW(services, WM_COMMAND, IDOK, 0);
    EXPECT_TRUE(WaitFor([&] { return radio.Box(nullptr) == nullptr; }));
}

TEST_F(ButtonMenu, AToggleThatIsOnIsChecked) {
    Radio radio(handset);
    radio.WaitUntilShown();
    const auto expectChecked = [&](const std::vector<int>& expected) {
        const HWND menu = Open(radio);
        // The lit row says nothing.
        for (int down = 0; down < static_cast<int>(Button::kServices); ++down) radio.Key(VK_DOWN);
        const auto checked = [&] {
            std::vector<int> rows;
            const std::vector<int> marks = Marks(menu, kButtonRows);
            for (int row = 0; row <= static_cast<int>(Button::kLoudspeaker); ++row) {
                if (marks[static_cast<std::size_t>(row)] > 0) rows.push_back(row);
            }
            return rows;
        };
        EXPECT_TRUE(WaitFor([&] { return checked() == expected; })) << testing::PrintToString(checked());
        LeaveMenus(radio);
    };
    expectChecked({});
    Choose(radio, Button::kMute);
    ASSERT_TRUE(WaitForCall("SetMute 1 -> 0"));
    expectChecked({static_cast<int>(Button::kMute)});
    Choose(radio, Button::kMute);
    ASSERT_TRUE(WaitForCall("SetMute 0 -> 0"));
    expectChecked({});
}

// While it records, keys are ignored; the soft keys are not.
TEST_F(ButtonMenu, ARecordingBeginsAndEndsByKeysAloneAndSeekingRestsMeanwhile) {
    Radio radio(handset);
    radio.WaitUntilShown();
    Choose(radio, Button::kRecord);
    ASSERT_TRUE(WaitForTrace("[FM_EnCoder]iIndex : 2\n"));
    ASSERT_TRUE(WaitFor([&] { return !IsWindowVisible(radio.ListView()); }));
    Choose(radio, Button::kSeekUp);
    Choose(radio, Button::kLoudspeaker);
    ASSERT_TRUE(WaitForCall("SetSpeaker 1 -> 0"));
    EXPECT_EQ(Calls("SeekNext"), 0);
    Choose(radio, Button::kRecord);
    const HWND box = radio.WaitForBox(L"FM");
    ASSERT_NE(box, nullptr);
    EXPECT_THAT(radio.BoxText(box), testing::HasSubstr(L"saved"));
    Radio::Answer(box, IDOK);
    EXPECT_TRUE(WaitFor([&] { return IsWindowVisible(radio.ListView()); }));
}

class MenuOfChannels : public test::ThreeChannelsOnRadio {
  protected:
    // Chooses the n-th entry of the left soft key's menu, as keys do.
    void Choose(const Radio& radio, int entry) const {
        EXPECT_EQ(test::RunProgram(L"handset.exe", L"softkey left"), 0u);
        ASSERT_TRUE(WaitFor([] { return OpenMenus().size() == 1; })) << "no menu";
        for (int down = 0; down < entry; ++down) radio.Key(VK_DOWN);
        radio.Key(VK_RETURN);
    }
    void ChooseAddCurrent(const Radio& radio) const {
        Choose(radio, 2);
        // What cannot be chosen closes the menu, too; an Escape would be the dialog's that a choice opens.
        ASSERT_TRUE(WaitFor([] { return OpenMenus().empty(); }));
    }
};

TEST_F(MenuOfChannels, AddCurrentChannelCannotBeChosenForAFrequencyThatTheListHasAndCanForAnother) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Type("985");
    ASSERT_TRUE(WaitForCall("SetChannel 9850 -> 0"));
    ChooseAddCurrent(radio);
    // With a dialog open, no key would come.
    ASSERT_TRUE(WaitUntilKeysCome(radio));
    EXPECT_EQ(radio.Box(nullptr), nullptr);
    radio.Type("1005");
    ASSERT_TRUE(WaitForCall("SetChannel 10050 -> 0"));
    ChooseAddCurrent(radio);
    EXPECT_NE(radio.WaitForBox(L"Channel"), nullptr) << testing::PrintToString(TunerCommands());
}

TEST_F(MenuOfChannels, KeysAloneOpenTheMenuOfTheSelectedChannelOverItsRow) {
    Radio radio(handset);
    radio.WaitUntilShown();
    for (int down = 0; down < 2; ++down) PostMessageW(radio.ListView(), WM_KEYDOWN, VK_DOWN, 1);
    ASSERT_TRUE(WaitFor([&] { return test::SelectedRow(radio.ListView()) == 1; }));
    Choose(radio, 3);
    RECT menu = {}, list = {};
    GetWindowRect(radio.ListView(), &list);
    // Its foot is at the middle of the second row of 15 pixels; the soft key's menu is still there at first.
    ASSERT_TRUE(WaitFor([&] {
        const std::vector<HWND> menus = OpenMenus();
        return menus.size() == 1 && GetWindowRect(menus.front(), &menu) &&
               std::abs(menu.bottom - (list.top + 22)) <= 4;
    })) << menu.bottom
        << " " << list.top;
    EXPECT_GE(menu.left, list.left);
    EXPECT_LE(menu.right, list.right);
    for (int down = 0; down < 3; ++down) radio.Key(VK_DOWN);
    radio.Key(VK_RETURN);
    const HWND dialog = radio.WaitForBox(L"Channel");
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(test::TextOf(dialog, IDC_CHANNEL_NAME), L"Beta");
}

}  // namespace
