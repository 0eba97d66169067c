// Pressing soft keys: commands, menus, and what keeps a key from acting.
#include <gtest/gtest.h>

#include "tests/support/wait.h"
#include "tests/unit/aygshell/bar_maker.h"
#include "tests/unit/aygshell/resource_ids.h"
#include "tests/unit/aygshell/test_handset.h"
#include "tests/unit/aygshell/test_window.h"

namespace {

using test::KeyMenu;
using test::MakeBar;
using test::PressSoftKey;
using test::Received;
using test::WaitFor;

class SoftKey : public ::testing::Test {
  protected:
    std::vector<WORD> Commands() const {
        std::vector<WORD> commands;
        for (const Received& received : m_window.Of(WM_COMMAND)) commands.push_back(LOWORD(received.wParam));
        return commands;
    }
    // Handles everything that has been posted so far.
    static void Settle() {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    }
    // Runs `look` as soon as a menu waits for input, and closes the menu.
    void LookAtTheMenu(HWND bar, int key, const std::function<void(HWND)>& look) {
        bool looked = false;
        m_window.onMessage = [&](const Received& received) {
            if (received.message != WM_ENTERIDLE || looked) return;
            looked = true;
            look(reinterpret_cast<HWND>(received.lParam));
            EndMenu();
        };
        PressSoftKey(bar, key);
        EXPECT_TRUE(WaitFor([&] { return looked && m_window.Count(WM_EXITMENULOOP) > 0; }));
        m_window.onMessage = nullptr;
    }
    // Opens the right key's menu and its submenu with the keyboard; the places of both.
    std::vector<RECT> MenusWithSubmenuOpen(HWND bar) {
        int step = 0;
        std::vector<RECT> places;
        m_window.onMessage = [&](const Received& received) {
            if (received.message != WM_ENTERIDLE) return;
            const std::vector<HWND> menus = test::OpenMenus();
            if (menus.size() == 2 && places.empty()) {
                for (const HWND menu : menus) {
                    places.emplace_back();
                    GetWindowRect(menu, &places.back());
                }
                EndMenu();
            }
            const WPARAM keys[] = {VK_DOWN, VK_RIGHT};
            if (step < 2) PostMessageW(m_window.Get(), WM_KEYDOWN, keys[step++], 0);
        };
        PressSoftKey(bar, 1);
        EXPECT_TRUE(WaitFor([&] { return places.size() == 2 && m_window.Count(WM_EXITMENULOOP) > 0; }));
        m_window.onMessage = nullptr;
        return places;
    }
    void ClickKey(HWND bar, int index) {
        const HWND toolbar = GetWindow(bar, GW_CHILD);
        const LPARAM position = MAKELPARAM(60 + 120 * index, 13);
        PostMessageW(toolbar, WM_LBUTTONDOWN, MK_LBUTTON, position);
        PostMessageW(toolbar, WM_LBUTTONUP, 0, position);
    }

    test::TestHandset m_handset;
    test::TestWindow m_window;
};

TEST_F(SoftKey, OfACommandSendsItToTheParent) {
    const HWND bar = MakeBar(m_window.Get(), BAR_MENU_AND_COMMAND);
    PressSoftKey(bar, 0);
    ASSERT_TRUE(WaitFor([&] { return m_window.Count(WM_COMMAND) > 0; }));
    Settle();
    EXPECT_EQ(Commands(), std::vector<WORD>{COMMAND_PLAIN});
    EXPECT_EQ(HIWORD(m_window.Of(WM_COMMAND)[0].wParam), 0);
}

TEST_F(SoftKey, OfACommandIsPressedByTheStylusToo) {
    const HWND bar = MakeBar(m_window.Get(), MENU_TWO_COMMANDS, SHCMBF_HMENU);
    ClickKey(bar, 1);
    ASSERT_TRUE(WaitFor([&] { return m_window.Count(WM_COMMAND) > 0; }));
    Settle();
    EXPECT_EQ(Commands(), std::vector<WORD>{COMMAND_SECOND});
}

TEST_F(SoftKey, OpensItsMenuAboveTheBarOnItsOwnSide) {
    const HWND bar = MakeBar(m_window.Get(), BAR_TWO_MENUS);
    RECT left = {};
    RECT right = {};
    LookAtTheMenu(bar, 0, [&](HWND menu) { GetWindowRect(menu, &left); });
    m_window.Forget();
    LookAtTheMenu(bar, 1, [&](HWND menu) { GetWindowRect(menu, &right); });
    EXPECT_EQ(left.left, 0);
    EXPECT_EQ(left.bottom, 294);
    EXPECT_EQ(right.right, 240);
    EXPECT_EQ(right.bottom, 294);
}

TEST_F(SoftKey, LetsTheParentPrepareItsMenu) {
    const HWND bar = MakeBar(m_window.Get(), BAR_TWO_MENUS);
    LookAtTheMenu(bar, 0, [](HWND) {});
    const auto prepared = m_window.Of(WM_INITMENUPOPUP);
    ASSERT_EQ(prepared.size(), 1u);
    EXPECT_EQ(reinterpret_cast<HMENU>(prepared[0].wParam), KeyMenu(bar, 0));
}

TEST_F(SoftKey, OpensItsMenuForTheStylusToo) {
    const HWND bar = MakeBar(m_window.Get(), BAR_TWO_MENUS);
    bool open = false;
    m_window.onMessage = [&](const Received& received) {
        if (received.message != WM_ENTERIDLE) return;
        open = true;
        EndMenu();
    };
    ClickKey(bar, 1);
    EXPECT_TRUE(WaitFor([&] { return open && m_window.Count(WM_EXITMENULOOP) > 0; }));
    const auto prepared = m_window.Of(WM_INITMENUPOPUP);
    ASSERT_EQ(prepared.size(), 1u);
    EXPECT_EQ(reinterpret_cast<HMENU>(prepared[0].wParam), KeyMenu(bar, 1));
}

TEST_F(SoftKey, SendsTheChosenMenuCommandToTheParent) {
    const HWND bar = MakeBar(m_window.Get(), BAR_TWO_MENUS);
    int step = 0;
    m_window.onMessage = [&](const Received& received) {
        if (received.message != WM_ENTERIDLE) return;
        const WPARAM keys[] = {VK_DOWN, VK_DOWN, VK_RETURN};
        if (step < 3) PostMessageW(m_window.Get(), WM_KEYDOWN, keys[step++], 0);
    };
    PressSoftKey(bar, 0);
    EXPECT_TRUE(WaitFor([&] { return m_window.Count(WM_COMMAND) > 0; }));
    EXPECT_EQ(Commands(), std::vector<WORD>{COMMAND_SECOND});
}

TEST_F(SoftKey, LooksPressedWhileItsMenuIsOpen) {
    const HWND bar = MakeBar(m_window.Get(), BAR_TWO_MENUS);
    BYTE whileOpen = 0;
    LookAtTheMenu(bar, 0, [&](HWND) { whileOpen = test::Key(bar, 0).fsState; });
    Settle();
    EXPECT_NE(whileOpen & TBSTATE_PRESSED, 0);
    EXPECT_EQ(test::Key(bar, 0).fsState & TBSTATE_PRESSED, 0);
}

TEST_F(SoftKey, KeepsItsSubmenusOnTheDisplay) {
    const HWND bar = MakeBar(m_window.Get(), BAR_TWO_MENUS);
    for (const RECT& place : MenusWithSubmenuOpen(bar)) {
        EXPECT_GE(place.left, 0);
        EXPECT_GE(place.top, 0);
        EXPECT_LE(place.right, 240);
        EXPECT_LE(place.bottom, 320);
    }
}

TEST_F(SoftKey, OpensNoSubmenuUnderTheStylus) {
    const HWND bar = MakeBar(m_window.Get(), BAR_TWO_MENUS);
    const POINT stylus = {160, 266};
    SetCursorPos(stylus.x, stylus.y);
    int underStylus = 0;
    for (const RECT& place : MenusWithSubmenuOpen(bar)) underStylus += PtInRect(&place, stylus);
    EXPECT_EQ(underStylus, 1);
    SetCursorPos(500, 500);
}

TEST_F(SoftKey, PressedAgainClosesItsMenu) {
    const HWND bar = MakeBar(m_window.Get(), BAR_TWO_MENUS);
    bool pressedAgain = false;
    m_window.onMessage = [&](const Received& received) {
        if (received.message == WM_ENTERIDLE && !pressedAgain) {
            pressedAgain = true;
            PressSoftKey(bar, 0);
        }
    };
    PressSoftKey(bar, 0);
    EXPECT_TRUE(WaitFor([&] { return m_window.Count(WM_EXITMENULOOP) > 0; }));
    Settle();
    EXPECT_TRUE(test::OpenMenus().empty());
    EXPECT_EQ(m_window.Count(WM_INITMENUPOPUP), 1u);
}

TEST_F(SoftKey, ThatIsGreyedDoesNothing) {
    const HWND bar = MakeBar(m_window.Get(), BAR_DISABLED_KEY);
    PressSoftKey(bar, 0);
    PressSoftKey(bar, 1);
    ClickKey(bar, 0);
    ClickKey(bar, 1);
    Settle();
    EXPECT_EQ(m_window.Count(WM_COMMAND), 0u);
    EXPECT_EQ(m_window.Count(WM_INITMENUPOPUP), 0u);
}

TEST_F(SoftKey, DoesNothingWhileTheParentIsDisabled) {
    const HWND bar = MakeBar(m_window.Get(), BAR_MENU_AND_COMMAND);
    EnableWindow(m_window.Get(), FALSE);
    PressSoftKey(bar, 0);
    PressSoftKey(bar, 1);
    Settle();
    EXPECT_EQ(m_window.Count(WM_COMMAND), 0u);
    EXPECT_EQ(m_window.Count(WM_INITMENUPOPUP), 0u);
}

TEST_F(SoftKey, ThatDoesNotExistDoesNothing) {
    const HWND bar = MakeBar(m_window.Get(), 0, SHCMBF_HMENU);
    PressSoftKey(bar, 0);
    PressSoftKey(bar, 1);
    PressSoftKey(bar, 99);
    Settle();
    EXPECT_EQ(m_window.Count(WM_COMMAND), 0u);
}

TEST_F(SoftKey, SurvivesTheEndOfItsWindowWhileTheMenuIsOpen) {
    const HWND bar = MakeBar(m_window.Get(), BAR_TWO_MENUS);
    bool destroyed = false;
    m_window.onMessage = [&](const Received& received) {
        if (received.message != WM_ENTERIDLE || destroyed) return;
        destroyed = true;
        m_window.Destroy();
    };
    PressSoftKey(bar, 0);
    EXPECT_TRUE(WaitFor([&] { return destroyed && !IsWindow(bar); }));
    Settle();
    EXPECT_TRUE(test::OpenMenus().empty());
}

}  // namespace
