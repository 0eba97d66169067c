// The soft-key menus as the user sees them on the screen.
#include <algorithm>

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
    // Opens the sleep timer's menu below the right soft key; null when it does not come.
    static HWND OpenSleepMenu(const Radio& radio) {
        EXPECT_EQ(test::RunProgram(L"handset.exe", L"softkey right"), 0u);
        EXPECT_TRUE(WaitFor([] { return OpenMenus().size() == 1; })) << "no menu";
        const std::vector<HWND> first = OpenMenus();
        for (int down = 0; down < 3; ++down) radio.Key(VK_DOWN);
        radio.Key(VK_RIGHT);
        EXPECT_TRUE(WaitFor([] { return OpenMenus().size() == 2; })) << "no sleep timer";
        for (const HWND menu : OpenMenus()) {
            if (std::find(first.begin(), first.end(), menu) == first.end()) return menu;
        }
        return nullptr;
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
        for (int level = 0; level < 2; ++level) radio.Key(VK_ESCAPE);
        ASSERT_TRUE(WaitFor([] { return OpenMenus().empty(); }));
    }
}

class MenuOfChannels : public test::ThreeChannelsOnRadio {
  protected:
    // Chooses the second entry of the left soft key's menu, as keys do.
    void ChooseAddCurrent(const Radio& radio) const {
        EXPECT_EQ(test::RunProgram(L"handset.exe", L"softkey left"), 0u);
        ASSERT_TRUE(WaitFor([] { return OpenMenus().size() == 1; })) << "no menu";
        for (int down = 0; down < 2; ++down) radio.Key(VK_DOWN);
        radio.Key(VK_RETURN);
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

}  // namespace
