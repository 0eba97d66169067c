// The count of live drawing objects.
#include <gtest/gtest.h>
#include <windows.h>

#include "handset/coredll/kernel/platform_call.h"
#include "handset_fixture.h"

using GdiCount = HandsetTest;

TEST_F(GdiCount, RisesWithEachObjectAndFallsWhenItGoes) {
    const DWORD before = HandsetGdiObjectCount();
    const HDC window = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(window);
    const HBITMAP bitmap = CreateCompatibleBitmap(window, 8, 8);
    const HBRUSH brush = CreateSolidBrush(0x123456);
    const HPEN pen = CreatePen(PS_SOLID, 1, 0);
    LOGFONTW font{};
    const HFONT text = CreateFontIndirectW(&font);
    EXPECT_EQ(HandsetGdiObjectCount(), before + 6);
    EXPECT_TRUE(DeleteObject(text));
    EXPECT_TRUE(DeleteObject(pen));
    EXPECT_TRUE(DeleteObject(brush));
    EXPECT_TRUE(DeleteObject(bitmap));
    EXPECT_TRUE(DeleteDC(memory));
    EXPECT_EQ(ReleaseDC(nullptr, window), 1);
    EXPECT_EQ(HandsetGdiObjectCount(), before);
}

TEST_F(GdiCount, DoesNotCountWhatCouldNotBeMade) {
    const DWORD before = HandsetGdiObjectCount();
    EXPECT_EQ(LoadBitmapW(nullptr, MAKEINTRESOURCEW(31999)), nullptr);
    EXPECT_EQ(HandsetGdiObjectCount(), before);
}

TEST_F(GdiCount, DoesNotFallWithAnObjectThatItNeverSaw) {
    const DWORD before = HandsetGdiObjectCount();
    const auto make = HostFunction<HBRUSH WINAPI(COLORREF)>("gdi32.dll", "CreateSolidBrush");
    EXPECT_TRUE(DeleteObject(make(0)));
    EXPECT_EQ(HandsetGdiObjectCount(), before);
}

TEST_F(GdiCount, ReturnsToWhereItWasAfterATransparentCopy) {
    const HDC screen = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(screen);
    const HBITMAP target = CreateCompatibleBitmap(screen, 8, 8);
    const HBITMAP source = CreateCompatibleBitmap(screen, 8, 8);
    const HGDIOBJ previous = SelectObject(memory, target);
    const DWORD before = HandsetGdiObjectCount();
    EXPECT_TRUE(TransparentImage(memory, 0, 0, 8, 8, source, 0, 0, 8, 8, RGB(255, 0, 255)));
    EXPECT_FALSE(TransparentImage(memory, 0, 0, 8, 8, GetStockObject(WHITE_BRUSH), 0, 0, 8, 8, 0));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_HANDLE));
    EXPECT_EQ(HandsetGdiObjectCount(), before);
    SelectObject(memory, previous);
    DeleteObject(source);
    DeleteObject(target);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
}

TEST_F(GdiCount, CountsWhatAnotherDllOfTheHandsetMadeForTheProgram) {
    const DWORD before = HandsetGdiObjectCount();
    const auto make = HostFunction<HBRUSH WINAPI(COLORREF)>("gdi32.dll", "CreateSolidBrush");
    const HBRUSH brush = make(0);
    HandsetGdiObjectMade(brush);
    EXPECT_EQ(HandsetGdiObjectCount(), before + 1);
    DeleteObject(brush);
    EXPECT_EQ(HandsetGdiObjectCount(), before);
}
