// Where popup menus open.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <utility>

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

HMENU g_outer;
RECT g_entry, g_submenu;

void PressInMenu(HWND window, WPARAM key) {
    PostMessageW(window, WM_KEYDOWN, key, 0);
    PostMessageW(window, WM_KEYUP, key, 0);
}

// Goes down to the last entry of a menu of three, opens its submenu, looks at both and closes them.
LRESULT CALLBACK OpenTheSubmenu(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_ENTERIDLE && wParam == MSGF_MENU) {
        const HWND front = FindWindowW(L"#32768", nullptr);
        const HWND behind = FindWindowExW(nullptr, front, L"#32768", nullptr);
        if (behind == nullptr || !IsWindowVisible(behind)) {
            for (const WPARAM key : {VK_DOWN, VK_DOWN, VK_DOWN, VK_RIGHT}) PressInMenu(window, key);
        } else {
            GetMenuItemRect(nullptr, g_outer, 2, &g_entry);
            GetWindowRect(front, &g_submenu);
            PostMessageW(window, WM_CANCELMODE, 0, 0);
        }
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

// A display that is not as wide as the two together.
TEST_F(Menu, ASubmenuDoesNotCoverTheEntryThatOpenedIt) {
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = OpenTheSubmenu;
    windowClass.lpszClassName = L"SubmenuTest";
    RegisterClassW(&windowClass);
    const PanelStandIn panel({310, 120});
    RECT display;
    HandsetDisplayRect(&display);
    // At the foot, where there is room above, and at the top.
    for (const int y : {315, 30}) {
        SCOPED_TRACE(y);
        g_entry = g_submenu = {};
        const HWND window = CreateWindowExW(0, L"SubmenuTest", L"", WS_VISIBLE, CW_USEDEFAULT, CW_USEDEFAULT,
                                            CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr, nullptr, nullptr);
        g_outer = CreatePopupMenu();
        const HMENU inner = CreatePopupMenu();
        for (UINT id = 1; id <= 4; ++id) AppendMenuW(inner, MF_STRING, id, L"One that is chosen from");
        AppendMenuW(g_outer, MF_STRING, 10, L"An entry of some length");
        AppendMenuW(g_outer, MF_STRING, 11, L"Another one");
        AppendMenuW(g_outer, MF_POPUP, reinterpret_cast<UINT_PTR>(inner), L"More");
        TrackPopupMenuEx(g_outer, TPM_LEFTALIGN | TPM_TOPALIGN | TPM_RETURNCMD, display.right - 5,
                         display.top + y, window, nullptr);
        RECT both = {};
        ExpectInside(g_submenu, display);
        EXPECT_FALSE(IsRectEmpty(&g_entry));
        EXPECT_FALSE(IntersectRect(&both, &g_submenu, &g_entry))
            << "entry " << g_entry.top << " to " << g_entry.bottom << ", submenu " << g_submenu.top << " to "
            << g_submenu.bottom;
        DestroyMenu(g_outer);
        DestroyWindow(window);
    }
}

// What an onlooker sees of the second entry of a menu.
struct Entry {
    RECT place{};
    std::wstring text;
    UINT type = 0;
    ULONG_PTR data = 0;
};

Entry SecondEntry() {
    Entry entry;
    wchar_t text[64] = L"";
    MENUITEMINFOW info = {};
    info.cbSize = sizeof info;
    info.fMask = MIIM_FTYPE | MIIM_DATA;
    GetMenuItemRect(nullptr, g_outer, 1, &entry.place);
    GetMenuStringW(g_outer, 1, text, 64, MF_BYPOSITION);
    GetMenuItemInfoW(g_outer, 1, TRUE, &info);
    entry.text = text;
    entry.type = info.fType;
    entry.data = info.dwItemData;
    return entry;
}

Entry g_open;

// Chooses the second entry when it has looked at it.
LRESULT CALLBACK ChooseTheSecond(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_ENTERIDLE && wParam == MSGF_MENU && IsRectEmpty(&g_open.place)) {
        g_open = SecondEntry();
        for (const WPARAM key : {VK_DOWN, VK_DOWN, VK_RETURN}) PressInMenu(window, key);
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

class MenuSizes : public Menu {
  protected:
    void SetUp() override {
        Menu::SetUp();
        WNDCLASSW windowClass{};
        windowClass.lpfnWndProc = ChooseTheSecond;
        windowClass.lpszClassName = L"MenuSizeTest";
        RegisterClassW(&windowClass);
    }
    // A menu of three on a display of that size; gives the command that was chosen. What it looked like is in
    // g_open, what is left of it in `closed_`.
    UINT ChooseOn(const wchar_t* width, const wchar_t* height) {
        SetState(L"KORA_SCREENWIDTH", width);
        SetState(L"KORA_SCREENHEIGHT", height);
        const PanelStandIn panel({0, 0});
        g_open = {};
        const HWND window = CreateWindowExW(0, L"MenuSizeTest", L"", WS_VISIBLE, CW_USEDEFAULT, CW_USEDEFAULT,
                                            CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr, nullptr, nullptr);
        const auto procedure = GetWindowLongPtrW(window, GWL_WNDPROC);
        g_outer = CreatePopupMenu();
        for (UINT id = 1; id <= 3; ++id) AppendMenuW(g_outer, MF_STRING, id, L"Programme guide");
        MENUITEMINFOW info = {};
        info.cbSize = sizeof info;
        info.fMask = MIIM_DATA;
        info.dwItemData = 77;
        SetMenuItemInfoW(g_outer, 1, TRUE, &info);
        const auto chosen = static_cast<UINT>(
            TrackPopupMenuEx(g_outer, TPM_LEFTALIGN | TPM_TOPALIGN | TPM_RETURNCMD, 20, 60, window, nullptr));
        closed_ = SecondEntry();
        EXPECT_EQ(GetWindowLongPtrW(window, GWL_WNDPROC), procedure);
        DestroyMenu(g_outer);
        DestroyWindow(window);
        return chosen;
    }
    static SIZE SizeOf(const RECT& place) { return {place.right - place.left, place.bottom - place.top}; }
    Entry closed_;
};

TEST_F(MenuSizes, OnADisplayOfTwiceThePixelsEntriesAreTwiceAsLarge) {
    EXPECT_EQ(ChooseOn(L"240", L"320"), 2u);
    const SIZE usual = SizeOf(g_open.place);
    EXPECT_EQ(ChooseOn(L"480", L"640"), 2u);
    const SIZE fine = SizeOf(g_open.place);
    EXPECT_NEAR(fine.cy, 2 * usual.cy, 4);
    EXPECT_NEAR(fine.cx, 2 * usual.cx, 40);
    EXPECT_EQ(ChooseOn(L"640", L"480"), 2u);
    EXPECT_EQ(SizeOf(g_open.place).cy, fine.cy);
}

TEST_F(MenuSizes, OnAnyDisplayAMenuThatWasClosedIsTheOneThatWasOpened) {
    for (const auto& [width, height] : {std::pair{L"240", L"320"}, std::pair{L"480", L"640"}}) {
        ChooseOn(width, height);
        EXPECT_EQ(g_open.text, L"Programme guide");
        EXPECT_EQ(closed_.text, L"Programme guide");
        EXPECT_EQ(closed_.type, UINT{MFT_STRING});
        EXPECT_EQ(closed_.data, 77u);
    }
}

}  // namespace
