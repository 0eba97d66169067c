// SHCreateMenuBar and SHFindMenuBar: what a bar is made of, where it stands, and what is refused.
#include <gtest/gtest.h>

#include "tests/unit/aygshell/bar_maker.h"
#include "tests/unit/aygshell/resource_ids.h"
#include "tests/unit/aygshell/test_handset.h"
#include "tests/unit/aygshell/test_window.h"

namespace {

using test::BarRequest;
using test::Key;
using test::KeyCount;
using test::KeyLabel;
using test::KeyMenu;
using test::MakeBar;
using test::PlaceOf;

class MenuBar : public ::testing::Test {
  protected:
    // NULL and FALSE for a request that cannot be met, and no window left behind.
    void ExpectRefused(SHMENUBARINFO info) {
        EXPECT_FALSE(SHCreateMenuBar(&info));
        EXPECT_EQ(info.hwndMB, nullptr);
        EXPECT_EQ(GetWindow(m_window.Get(), GW_CHILD), nullptr);
    }

    test::TestHandset m_handset;
    test::TestWindow m_window;
};

TEST_F(MenuBar, StandsAtTheFootOfItsParentInFullWidth) {
    const HWND bar = MakeBar(m_window.Get(), BAR_TWO_MENUS);
    ASSERT_NE(bar, nullptr);
    EXPECT_EQ(PlaceOf(bar), "0,294 240x26");
    EXPECT_EQ(GetParent(bar), m_window.Get());
    EXPECT_TRUE(IsWindowVisible(bar));
}

TEST_F(MenuBar, IsFoundByItsParentAndItsClass) {
    EXPECT_EQ(SHFindMenuBar(m_window.Get()), nullptr);
    const HWND bar = MakeBar(m_window.Get(), BAR_TWO_MENUS);
    EXPECT_EQ(SHFindMenuBar(m_window.Get()), bar);
    EXPECT_EQ(FindWindowExW(m_window.Get(), nullptr, handset::kMenuBarClass, nullptr), bar);
    EXPECT_EQ(SHFindMenuBar(nullptr), nullptr);
    EXPECT_EQ(SHFindMenuBar(bar), nullptr);
}

TEST_F(MenuBar, GivesTheMenusOfItsKeysToTheToolbarMessages) {
    const HWND bar = MakeBar(m_window.Get(), BAR_TWO_MENUS, SHCMBF_HIDESIPBUTTON);
    ASSERT_EQ(KeyCount(bar), 2);
    EXPECT_EQ(GetMenuItemID(KeyMenu(bar, 0), 1), UINT{COMMAND_SECOND});
    EXPECT_EQ(GetMenuItemCount(KeyMenu(bar, 1)), 2);
    EXPECT_EQ(Key(bar, 0).idCommand, COMMAND_LEFT_KEY);
    EXPECT_EQ(Key(bar, 1).idCommand, COMMAND_RIGHT_KEY);
    EXPECT_EQ(KeyLabel(bar, 0), L"Channels");
    EXPECT_EQ(KeyLabel(bar, 1), L"Menu");
}

TEST_F(MenuBar, HasTwoKeysOfHalfItsWidth) {
    const HWND bar = MakeBar(m_window.Get(), BAR_TWO_MENUS);
    for (int i = 0; i < 2; ++i) {
        RECT key = {};
        ASSERT_TRUE(
            SendMessageW(bar, TB_GETITEMRECT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&key)));
        EXPECT_EQ(key.left, 120 * i);
        EXPECT_EQ(key.right, 120 * (i + 1));
        EXPECT_EQ(key.top, 0);
        EXPECT_EQ(key.bottom, 26);
    }
}

TEST_F(MenuBar, GivesNoMenuForAKeyThatIsACommand) {
    const HWND bar = MakeBar(m_window.Get(), BAR_MENU_AND_COMMAND);
    EXPECT_EQ(KeyMenu(bar, 0), nullptr);
    EXPECT_NE(KeyMenu(bar, 1), nullptr);
    EXPECT_EQ(Key(bar, 0).idCommand, COMMAND_PLAIN);
}

TEST_F(MenuBar, MakesKeysOfAMenuResource) {
    const HWND bar = MakeBar(m_window.Get(), MENU_TWO_COMMANDS, SHCMBF_HIDESIPBUTTON | SHCMBF_HMENU);
    ASSERT_EQ(KeyCount(bar), 2);
    EXPECT_EQ(Key(bar, 0).idCommand, COMMAND_FIRST);
    EXPECT_EQ(Key(bar, 1).idCommand, COMMAND_SECOND);
    EXPECT_EQ(KeyLabel(bar, 0), L"&OK");
    EXPECT_EQ(KeyMenu(bar, 0), nullptr);
}

TEST_F(MenuBar, MakesDropDownAndGreyedKeysOfAMenuResource) {
    const HWND bar = MakeBar(m_window.Get(), MENU_POPUP_AND_COMMAND, SHCMBF_HMENU);
    ASSERT_EQ(KeyCount(bar), 2);
    EXPECT_EQ(GetMenuItemID(KeyMenu(bar, 0), 0), UINT{COMMAND_FIRST});
    EXPECT_EQ(KeyLabel(bar, 0), L"Tools");
    EXPECT_NE(Key(bar, 0).fsState & TBSTATE_ENABLED, 0);
    EXPECT_EQ(Key(bar, 1).fsState & TBSTATE_ENABLED, 0);
}

TEST_F(MenuBar, TakesTheStateOfAKeyFromItsResource) {
    const HWND bar = MakeBar(m_window.Get(), BAR_DISABLED_KEY);
    EXPECT_EQ(Key(bar, 0).fsState & TBSTATE_ENABLED, 0);
    EXPECT_EQ(SendMessageW(bar, TB_ISBUTTONENABLED, COMMAND_PLAIN, 0), 0);
    SendMessageW(bar, TB_ENABLEBUTTON, COMMAND_PLAIN, TRUE);
    EXPECT_NE(Key(bar, 0).fsState & TBSTATE_ENABLED, 0);
}

TEST_F(MenuBar, IsEmptyWhenAskedForOrWhenNoMenuIsNamed) {
    const HWND empty = MakeBar(m_window.Get(), NO_SUCH_RESOURCE, SHCMBF_EMPTYBAR);
    ASSERT_NE(empty, nullptr);
    EXPECT_EQ(KeyCount(empty), 0);
    const HWND unnamed = MakeBar(m_window.Get(), 0, SHCMBF_HIDESIPBUTTON | SHCMBF_HMENU);
    ASSERT_NE(unnamed, nullptr);
    EXPECT_EQ(KeyCount(unnamed), 0);
}

TEST_F(MenuBar, StaysHiddenUntilItIsShown) {
    const HWND bar = MakeBar(m_window.Get(), BAR_TWO_MENUS, SHCMBF_HIDDEN);
    ASSERT_NE(bar, nullptr);
    EXPECT_FALSE(IsWindowVisible(bar));
    ShowWindow(bar, SW_SHOW);
    EXPECT_TRUE(IsWindowVisible(bar));
    EXPECT_EQ(PlaceOf(bar), "0,294 240x26");
}

TEST_F(MenuBar, FollowsTheSizeOfItsParent) {
    const HWND bar = MakeBar(m_window.Get(), BAR_TWO_MENUS);
    MoveWindow(m_window.Get(), 0, 0, 321, 240, TRUE);
    EXPECT_EQ(PlaceOf(bar), "0,214 321x26");
    RECT right = {};
    SendMessageW(bar, TB_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&right));
    EXPECT_EQ(right.left, 160);
    EXPECT_EQ(right.right, 321);
}

TEST_F(MenuBar, StaysAboveTheOtherChildrenOfItsParent) {
    const HWND list = CreateWindowExW(0, L"STATIC", nullptr, WS_CHILD | WS_VISIBLE, 0, 0, 240, 320,
                                      m_window.Get(), nullptr, nullptr, nullptr);
    const HWND bar = MakeBar(m_window.Get(), BAR_TWO_MENUS);
    EXPECT_EQ(GetWindow(m_window.Get(), GW_CHILD), bar);
    EXPECT_EQ(GetWindow(bar, GW_HWNDNEXT), list);
}

TEST_F(MenuBar, IsRefusedForAWrongRecord) {
    EXPECT_FALSE(SHCreateMenuBar(nullptr));
    SHMENUBARINFO info = BarRequest(m_window.Get(), BAR_TWO_MENUS, 0);
    info.cbSize -= 4;
    ExpectRefused(info);
    info = BarRequest(nullptr, BAR_TWO_MENUS, 0);
    info.hwndMB = m_window.Get();
    ExpectRefused(info);
}

TEST_F(MenuBar, IsRefusedWhenAResourceIsNotThereOrBroken) {
    for (const UINT resource :
         {NO_SUCH_RESOURCE, BAR_CUT_SHORT, BAR_WITHOUT_ITS_MENU, BAR_WRONG_SUBMENU, 0}) {
        SCOPED_TRACE(resource);
        ExpectRefused(BarRequest(m_window.Get(), resource, 0));
    }
    ExpectRefused(BarRequest(m_window.Get(), NO_SUCH_RESOURCE, SHCMBF_HMENU));
}

TEST_F(MenuBar, TakesItsMenusWithIt) {
    const HWND bar = MakeBar(m_window.Get(), BAR_TWO_MENUS);
    const HMENU left = KeyMenu(bar, 0);
    const HMENU right = KeyMenu(bar, 1);
    const HWND toolbar = GetWindow(bar, GW_CHILD);
    ASSERT_TRUE(IsMenu(left) && IsMenu(right) && IsWindow(toolbar));
    DestroyWindow(bar);
    EXPECT_FALSE(IsMenu(left));
    EXPECT_FALSE(IsMenu(right));
    EXPECT_FALSE(IsWindow(toolbar));
    EXPECT_EQ(SHFindMenuBar(m_window.Get()), nullptr);
    MoveWindow(m_window.Get(), 0, 0, 320, 240, TRUE);
}

TEST_F(MenuBar, LeavesNoDrawingObjectBehind) {
    using CountProc = LONG(WINAPI*)();
    const auto count = reinterpret_cast<CountProc>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"COREDLL.dll"), "HandsetGdiObjectCount")));
    ASSERT_NE(count, nullptr);
    const LONG before = count();
    const HWND bar = MakeBar(m_window.Get(), BAR_TWO_MENUS);
    RedrawWindow(bar, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    EXPECT_GT(count(), before);
    DestroyWindow(bar);
    EXPECT_EQ(count(), before);
}

TEST_F(MenuBar, GoesWithItsParent) {
    const HWND bar = MakeBar(m_window.Get(), BAR_TWO_MENUS);
    const HMENU menu = KeyMenu(bar, 0);
    m_window.Destroy();
    EXPECT_FALSE(IsWindow(bar));
    EXPECT_FALSE(IsMenu(menu));
}

TEST_F(MenuBar, MayBeDestroyedWhileItsParentIs) {
    const HWND bar = MakeBar(m_window.Get(), BAR_TWO_MENUS);
    m_window.onMessage = [bar](const test::Received& received) {
        if (received.message == WM_DESTROY) DestroyWindow(bar);
    };
    m_window.Destroy();
    EXPECT_FALSE(IsWindow(bar));
}

TEST_F(MenuBar, ShowsItsKeysInLightLettersOnADarkGround) {
    const HWND bar = MakeBar(m_window.Get(), BAR_TWO_MENUS);
    RedrawWindow(bar, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    const HWND toolbar = GetWindow(bar, GW_CHILD);
    const HDC dc = GetDC(toolbar);
    int dark = 0;
    int light = 0;
    for (int y = 2; y < 26; ++y) {
        for (int x = 2; x < 118; ++x) {
            const COLORREF colour = GetPixel(dc, x, y);
            const int sum = GetRValue(colour) + GetGValue(colour) + GetBValue(colour);
            dark += sum < 3 * 40;
            light += sum > 3 * 200;
        }
    }
    ReleaseDC(toolbar, dc);
    EXPECT_GT(dark, 24 * 116 * 3 / 4);
    EXPECT_GT(light, 50);
}

TEST_F(MenuBar, CallsTheExtraControlsReadyAsOftenAsAsked) {
    EXPECT_TRUE(SHInitExtraControls());
    EXPECT_TRUE(SHInitExtraControls());
}

}  // namespace
