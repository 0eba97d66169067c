// The handset's screen and the windows on it.
#include <gtest/gtest.h>
#include <windows.h>

#include "handset/coredll/kernel/platform_call.h"
#include "handset_fixture.h"
#include "panel_stand_in.h"
#include "worker.h"

using Screen = HandsetTest;

namespace {

HWND MakeWindow(DWORD style, int x, int width) {
    return CreateWindowExW(0, L"STATIC", L"Kora", style, x, x == CW_USEDEFAULT ? CW_USEDEFAULT : 30, width,
                           width == CW_USEDEFAULT ? CW_USEDEFAULT : 60, nullptr, nullptr, nullptr, nullptr);
}

RECT RectOf(HWND window) {
    RECT rect{};
    GetWindowRect(window, &rect);
    return rect;
}

void ExpectRect(const RECT& rect, int left, int top, int width, int height) {
    EXPECT_EQ(rect.left, left);
    EXPECT_EQ(rect.top, top);
    EXPECT_EQ(rect.right - rect.left, width);
    EXPECT_EQ(rect.bottom - rect.top, height);
}

}  // namespace

TEST_F(Screen, IsUprightUnlessTheStateSaysOtherwise) {
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), 240);
    EXPECT_EQ(GetSystemMetrics(SM_CYSCREEN), 320);
    SetState(L"KORA_SCREENWIDTH", L"320");
    SetState(L"KORA_SCREENHEIGHT", L"240");
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), 320);
    EXPECT_EQ(GetSystemMetrics(SM_CYSCREEN), 240);
}

TEST_F(Screen, AWindowWithoutASizeFillsItUprightBelowTheShellsBar) {
    const HWND window = MakeWindow(WS_VISIBLE, CW_USEDEFAULT, CW_USEDEFAULT);
    ExpectRect(RectOf(window), 0, 26, 240, 294);
    RECT client;
    GetClientRect(window, &client);
    ExpectRect(client, 0, 0, 240, 294);
    DestroyWindow(window);
}

TEST_F(Screen, AWindowWithoutASizeFillsItOnItsSideBelowTheShellsBar) {
    SetState(L"KORA_SCREENWIDTH", L"320");
    SetState(L"KORA_SCREENHEIGHT", L"240");
    const HWND window = MakeWindow(WS_VISIBLE, CW_USEDEFAULT, CW_USEDEFAULT);
    ExpectRect(RectOf(window), 0, 26, 320, 214);
    DestroyWindow(window);
}

TEST_F(Screen, TheShellsBarHasTwiceTheRowsOnADisplayWithTwiceThePixels) {
    SetState(L"KORA_SCREENWIDTH", L"640");
    SetState(L"KORA_SCREENHEIGHT", L"480");
    const HWND window = MakeWindow(WS_VISIBLE, CW_USEDEFAULT, CW_USEDEFAULT);
    ExpectRect(RectOf(window), 0, 52, 640, 428);
    DestroyWindow(window);
}

TEST_F(Screen, TheWorkAreaIsWhatTheShellsBarLeaves) {
    RECT area{};
    EXPECT_TRUE(SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0));
    ExpectRect(area, 0, 26, 240, 294);
    const PanelStandIn panel({310, 120});
    EXPECT_TRUE(SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0));
    ExpectRect(area, 310, 146, 240, 294);
    EXPECT_FALSE(SystemParametersInfoW(SPI_GETWORKAREA, 0, nullptr, 0));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    UINT lines = 0;
    EXPECT_TRUE(SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0));
    EXPECT_GT(lines, 0u);
}

TEST_F(Screen, LiesInThePanelsDisplay) {
    const PanelStandIn panel({310, 120});
    RECT display;
    HandsetDisplayRect(&display);
    ExpectRect(display, 310, 120, 240, 320);
    const HWND window = MakeWindow(0, CW_USEDEFAULT, CW_USEDEFAULT);
    ExpectRect(RectOf(window), 310, 146, 240, 294);
    DestroyWindow(window);
}

TEST_F(Screen, APanelLeftOfTheFirstMonitorIsUnderstood) {
    const PanelStandIn panel({-300, -20});
    RECT display;
    HandsetDisplayRect(&display);
    ExpectRect(display, -300, -20, 240, 320);
}

TEST_F(Screen, AWindowIsClippedByItsNeighboursAndHasNoCaption) {
    const HWND window = MakeWindow(WS_VISIBLE, CW_USEDEFAULT, CW_USEDEFAULT);
    const auto style = static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE));
    EXPECT_EQ(style & (WS_CLIPCHILDREN | WS_CLIPSIBLINGS),
              static_cast<DWORD>(WS_CLIPCHILDREN | WS_CLIPSIBLINGS));
    EXPECT_EQ(style & WS_CAPTION, 0u);
    DestroyWindow(window);
}

TEST_F(Screen, AWindowKeepsThePlaceThatItIsGiven) {
    const HWND window = MakeWindow(0, 20, 50);
    ExpectRect(RectOf(window), 20, 30, 50, 60);
    DestroyWindow(window);
}

TEST_F(Screen, AChildKeepsItsPlaceInItsParent) {
    const HWND parent = MakeWindow(0, CW_USEDEFAULT, CW_USEDEFAULT);
    const HWND child =
        CreateWindowExW(0, L"STATIC", L"", WS_CHILD, 3, 4, 5, 6, parent, nullptr, nullptr, nullptr);
    EXPECT_EQ(GetParent(child), parent);
    ExpectRect(RectOf(child), 3, 30, 5, 6);
    EXPECT_EQ(static_cast<DWORD>(GetWindowLongW(child, GWL_STYLE)) & WS_POPUP, 0u);
    DestroyWindow(parent);
}

// The window's thread waits for an event meanwhile, as for a worker that it joins.
TEST_F(Screen, WhatAWorkerPaintsIsThereWithoutAMessageToTheWindow) {
    constexpr COLORREF kColour = RGB(10, 200, 30);
    const HWND window = MakeWindow(WS_POPUP | WS_VISIBLE, 20, 50);
    HandleMessages();
    bool shown = false;
    std::function<void()> paint = [&] {
        const HDC dc = GetDC(window);
        const HBRUSH brush = CreateSolidBrush(kColour);
        const RECT whole = {0, 0, 50, 60};
        FillRect(dc, &whole, brush);
        DeleteObject(brush);
        ReleaseDC(window, dc);
        shown = Eventually([kColour] {
            const HDC screen = GetDC(nullptr);
            const COLORREF colour = GetPixel(screen, 40, 50);
            ReleaseDC(nullptr, screen);
            return colour == kColour;
        });
    };
    const HANDLE worker = CreateThread(nullptr, 0, RunBody, &paint, 0, nullptr);
    WaitForSingleObject(worker, INFINITE);
    CloseHandle(worker);
    EXPECT_TRUE(shown);
    DestroyWindow(window);
}
