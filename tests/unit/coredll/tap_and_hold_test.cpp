// The stylus held on a list asks its parent for a context menu.
#include <gtest/gtest.h>
#include <windows.h>

#include <commctrl.h>

#include <vector>

#include "handset_fixture.h"

namespace {

std::vector<LPARAM> g_menus;

LRESULT CALLBACK ParentProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_CONTEXTMENU) return DefWindowProcW(window, message, wParam, lParam);
    g_menus.push_back(lParam);
    return 0;
}

class TapAndHold : public HandsetTest {
  protected:
    TapAndHold() {
        g_menus.clear();
        WNDCLASSW windowClass = {};
        windowClass.lpfnWndProc = ParentProc;
        windowClass.lpszClassName = L"TapAndHoldParent";
        RegisterClassW(&windowClass);
        parent = CreateWindowExW(0, L"TapAndHoldParent", L"", WS_VISIBLE, 0, 0, 200, 200, nullptr, nullptr,
                                 nullptr, nullptr);
        list = CreateWindowExW(0, WC_LISTVIEWW, L"", WS_CHILD | WS_VISIBLE | LVS_REPORT, 10, 20, 100, 100,
                               parent, nullptr, nullptr, nullptr);
    }
    ~TapAndHold() override { DestroyWindow(parent); }

    void Down(HWND window) { PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(30, 40)); }
    // Whether a menu was asked for by the time that a held stylus would have brought one.
    bool MenuComes() {
        const ULONGLONG end = GetTickCount64() + 1500;
        return Eventually([&] {
                   HandleMessages();
                   return !g_menus.empty() || GetTickCount64() > end;
               }) &&
               !g_menus.empty();
    }

    HWND parent = nullptr;
    HWND list = nullptr;
};

TEST_F(TapAndHold, AStylusHeldOnAListAsksItsParentForTheMenuAtThatPlace) {
    Down(list);
    ASSERT_TRUE(MenuComes());
    POINT place = {30, 40};
    ClientToScreen(list, &place);
    EXPECT_EQ(static_cast<short>(LOWORD(g_menus[0])), place.x);
    EXPECT_EQ(static_cast<short>(HIWORD(g_menus[0])), place.y);
}

TEST_F(TapAndHold, ATapAsksForNoMenu) {
    Down(list);
    PostMessageW(list, WM_LBUTTONUP, 0, MAKELPARAM(30, 40));
    EXPECT_FALSE(MenuComes());
}

TEST_F(TapAndHold, AStylusThatMovesAwayAsksForNoMenu) {
    Down(list);
    PostMessageW(list, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(30, 60));
    EXPECT_FALSE(MenuComes());
}

TEST_F(TapAndHold, AStylusHeldOnAnotherWindowAsksForNoMenu) {
    Down(parent);
    EXPECT_FALSE(MenuComes());
}

}  // namespace
