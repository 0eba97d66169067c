// Where popup menus open.
#include <gtest/gtest.h>
#include <windows.h>

#include "handset/coredll/kernel/platform_call.h"
#include "handset_fixture.h"
#include "panel_stand_in.h"

namespace {

RECT g_place;

// Looks at the menu once it is shown, and closes it.
LRESULT CALLBACK LookAtTheMenu(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_ENTERIDLE && wParam == MSGF_MENU) {
        GetWindowRect(FindWindowW(L"#32768", nullptr), &g_place);
        PostMessageW(window, WM_CANCELMODE, 0, 0);
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

class Menu : public HandsetTest {
  protected:
    void SetUp() override {
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = LookAtTheMenu;
        windowClass.lpszClassName = L"MenuTest";
        RegisterClassW(&windowClass);
    }
    // Opens a menu of five entries at a place of the display, and gives where it stood.
    static RECT OpenAt(const RECT& display, int x, int y) {
        g_place = {};
        const HWND window = CreateWindowExW(0, L"MenuTest", L"", WS_VISIBLE, CW_USEDEFAULT, CW_USEDEFAULT,
                                            CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr, nullptr, nullptr);
        const HMENU menu = CreatePopupMenu();
        for (UINT id = 1; id <= 5; ++id) AppendMenuW(menu, MF_STRING, id, L"An entry of some length");
        TrackPopupMenuEx(menu, TPM_LEFTALIGN | TPM_TOPALIGN | TPM_RETURNCMD, display.left + x,
                         display.top + y, window, nullptr);
        DestroyMenu(menu);
        DestroyWindow(window);
        return g_place;
    }
    static void ExpectInside(const RECT& place, const RECT& display) {
        EXPECT_FALSE(IsRectEmpty(&place));
        EXPECT_GE(place.left, display.left);
        EXPECT_GE(place.top, display.top);
        EXPECT_LE(place.right, display.right);
        EXPECT_LE(place.bottom, display.bottom);
    }
};

TEST_F(Menu, StaysOnTheDisplayOfThePhone) {
    const PanelStandIn panel({310, 120});
    RECT display;
    HandsetDisplayRect(&display);
    for (const POINT corner : {POINT{235, 315}, POINT{2, 310}, POINT{238, 5}, POINT{60, 80}}) {
        ExpectInside(OpenAt(display, corner.x, corner.y), display);
    }
}

TEST_F(Menu, StaysOnTheDisplayOfAPhoneOnItsSide) {
    SetState(L"KORA_SCREENWIDTH", L"320");
    SetState(L"KORA_SCREENHEIGHT", L"240");
    const PanelStandIn panel({310, 120});
    RECT display;
    HandsetDisplayRect(&display);
    for (const POINT corner : {POINT{315, 235}, POINT{2, 230}, POINT{318, 5}}) {
        ExpectInside(OpenAt(display, corner.x, corner.y), display);
    }
}

TEST_F(Menu, OpensWhereItIsAskedForWhenThereIsRoom) {
    const PanelStandIn panel({310, 120});
    RECT display;
    HandsetDisplayRect(&display);
    const RECT place = OpenAt(display, 30, 40);
    EXPECT_EQ(place.left, 340);
    EXPECT_EQ(place.top, 160);
}

}  // namespace
