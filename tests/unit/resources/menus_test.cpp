// The menus, menu bars and keyboard shortcuts: which command stands where.
#include <gtest/gtest.h>
#include <windows.h>

#include <commctrl.h>

#include <cstring>
#include <map>
#include <set>
#include <vector>

#include "resources/resource_ids.h"
#include "tests/unit/resources/resource_bytes.h"

namespace {

class Menu {
  public:
    explicit Menu(unsigned id) : menu_(LoadMenuW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id))) {}
    ~Menu() { DestroyMenu(menu_); }
    Menu(const Menu&) = delete;
    Menu& operator=(const Menu&) = delete;
    HMENU Get() const { return menu_; }

  private:
    HMENU menu_;
};

// Every command in a menu and in the popups below it; separators left out.
std::set<UINT> Commands(HMENU menu) {
    std::set<UINT> commands;
    for (int item = 0; item < GetMenuItemCount(menu); ++item) {
        if (const HMENU popup = GetSubMenu(menu, item); popup != nullptr) {
            commands.merge(Commands(popup));
        } else if (const UINT id = GetMenuItemID(menu, item); id != 0) {
            commands.insert(id);
        }
    }
    return commands;
}

// Two entries, each a command with a text: the soft keys of a dialog.
void ExpectSoftKeys(unsigned menuId, UINT left, UINT right) {
    const Menu menu(menuId);
    ASSERT_NE(menu.Get(), nullptr) << menuId;
    ASSERT_EQ(GetMenuItemCount(menu.Get()), 2) << menuId;
    EXPECT_EQ(GetMenuItemID(menu.Get(), 0), left) << menuId;
    EXPECT_EQ(GetMenuItemID(menu.Get(), 1), right) << menuId;
    for (UINT at = 0; at < 2; ++at)
        EXPECT_GT(GetMenuStringW(menu.Get(), at, nullptr, 0, MF_BYPOSITION), 0) << menuId;
}

std::vector<ACCEL> Accelerators() {
    const HACCEL table = LoadAcceleratorsW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDA_MAIN));
    std::vector<ACCEL> keys(static_cast<std::size_t>(CopyAcceleratorTableW(table, nullptr, 0)));
    CopyAcceleratorTableW(table, keys.data(), static_cast<int>(keys.size()));
    return keys;
}

}  // namespace

TEST(Menus, TheLeftSoftKeyDropsTheChannelCommands) {
    const Menu menu(IDM_MAIN);
    const std::set<UINT> expected = {0x8005, 0x8006, 0x801E, 0x8040, 0x8008};
    EXPECT_EQ(Commands(GetSubMenu(menu.Get(), 0)), expected);
}

TEST(Menus, TheRightSoftKeyDropsSettingsScheduleSleepTimerEveryButtonAndExit) {
    const Menu menu(IDM_MAIN);
    std::set<UINT> expected = {0x8007, 0x8019, 0x8013, 0x8014, 0x8015, 0x8016, 40000};
    for (const UINT button : {200u, 201u, 202u, 207u, 208u, 215u, 216u, 224u, 225u})
        expected.insert(0x8100 + button);
    EXPECT_EQ(Commands(GetSubMenu(menu.Get(), 1)), expected);
}

TEST(Menus, ASleepTimerItemCanBeCheckedThroughTheRightSoftKeysMenu) {
    const Menu menu(IDM_MAIN);
    const HMENU right = GetSubMenu(menu.Get(), 1);
    for (const UINT id : {0x8013u, 0x8014u, 0x8015u, 0x8016u}) {
        EXPECT_EQ(CheckMenuItem(right, id, MF_CHECKED), static_cast<DWORD>(MF_UNCHECKED)) << id;
        EXPECT_EQ(GetMenuState(right, id, MF_BYCOMMAND) & MF_CHECKED, static_cast<UINT>(MF_CHECKED)) << id;
    }
}

TEST(Menus, TheMainBarHasTwoDropDownKeysForTheMainMenusPopups) {
    const ResourceBytes bytes = FindBytes(RT_RCDATA, IDM_MAIN);
    ASSERT_EQ(bytes.size, 16 * sizeof(WORD));
    WORD words[16];
    std::memcpy(words, bytes.data, sizeof words);
    EXPECT_EQ(words[0], IDM_MAIN);
    EXPECT_EQ(words[1], 2);
    for (int key = 0; key < 2; ++key) {
        const WORD* button = words + 2 + 7 * key;
        EXPECT_EQ(button[0], static_cast<WORD>(I_IMAGENONE)) << key;
        EXPECT_NE(button[1], 0) << key;
        EXPECT_EQ(button[2], TBSTATE_ENABLED) << key;
        EXPECT_EQ(button[3], 0x18) << key;
        WCHAR text[40];
        EXPECT_GT(LoadStringW(nullptr, button[4], text, ARRAYSIZE(text)), 0) << key;
        EXPECT_EQ(button[5], 0) << key;
        EXPECT_EQ(button[6], key);
    }
}

TEST(Menus, EachDialogsBarHasItsTwoCommands) {
    ExpectSoftKeys(134, 0x800E, 0x800C);
    ExpectSoftKeys(136, 0x8011, 0x8010);
    ExpectSoftKeys(144, 0x801D, 0x801C);
    ExpectSoftKeys(147, IDOK, 0x8041);
}

// They store each choice at once, or change nothing.
TEST(Menus, ADialogWithNothingToCancelHasOneSoftKeyWhichSaysClose) {
    const std::map<unsigned, UINT> bars = {{133, 0x800A}, {146, IDOK}};
    for (const auto& [bar, command] : bars) {
        const Menu menu(bar);
        ASSERT_EQ(GetMenuItemCount(menu.Get()), 1) << bar;
        EXPECT_EQ(GetMenuItemID(menu.Get(), 0), command) << bar;
        WCHAR text[16] = L"";
        GetMenuStringW(menu.Get(), 0, text, ARRAYSIZE(text), MF_BYPOSITION);
        EXPECT_STREQ(text, L"Close") << bar;
    }
}

bool IsDigit(const ACCEL& key) {
    return (key.fVirt & FCONTROL) == 0;
}

TEST(Menus, EachDigitOfThePhoneAndOfANumberPadIsADigitCommand) {
    std::map<WORD, int> digits;
    for (const ACCEL& key : Accelerators()) {
        if (IsDigit(key)) digits[key.key] = key.cmd - IDC_DIGIT_0;
    }
    ASSERT_EQ(digits.size(), 20u);
    for (WORD digit = 0; digit < 10; ++digit) {
        EXPECT_EQ(digits['0' + digit], digit);
        EXPECT_EQ(digits[static_cast<WORD>(VK_NUMPAD0 + digit)], digit);
    }
}

TEST(Menus, EveryOtherShortcutIsALetterWithCtrlSoThatArrowsAndReturnStayKeys) {
    for (const ACCEL& key : Accelerators()) {
        if (IsDigit(key)) continue;
        EXPECT_GE(key.key, 'A') << key.cmd;
        EXPECT_LE(key.key, 'Z') << key.cmd;
    }
}

TEST(Menus, EveryLetterIsACommandOfTheMainMenuAndNoKeyIsUsedTwice) {
    const Menu menu(IDM_MAIN);
    const std::set<UINT> commands = Commands(menu.Get());
    std::set<WORD> used;
    for (const ACCEL& key : Accelerators()) {
        EXPECT_TRUE(IsDigit(key) || commands.count(key.cmd)) << key.cmd;
        EXPECT_TRUE(used.insert(key.key).second) << key.key;
    }
}
