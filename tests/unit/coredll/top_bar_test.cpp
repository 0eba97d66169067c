// The shell's bar at the top of the display, which a program's window brings along.
#include <gtest/gtest.h>
#include <windows.h>

#include <functional>
#include <vector>

#include "handset_fixture.h"
#include "panel_stand_in.h"

namespace {

constexpr wchar_t kBarClass[] = L"HHTaskBar";
constexpr WPARAM kDisplayTurned = 0x3002;  // SETTINGCHANGE_RESET
constexpr COLORREF kCallColour = RGB(141, 194, 31);

using Picture = std::vector<DWORD>;

class TopBar : public HandsetTest {
  protected:
    ~TopBar() override {
        if (main_ != nullptr) DestroyWindow(main_);
        EXPECT_TRUE(Comes([] { return Bar() == nullptr; })) << "the bar stays";
    }
    // A program's main window, with the display's place and size.
    void OpenMain() {
        main_ = CreateWindowExW(0, L"STATIC", L"Radio", WS_VISIBLE, CW_USEDEFAULT, CW_USEDEFAULT,
                                CW_USEDEFAULT, CW_USEDEFAULT, nullptr, nullptr, nullptr, nullptr);
        ASSERT_NE(main_, nullptr);
        ASSERT_NE(Bar(), nullptr);
    }
    static HWND OpenOver(const wchar_t* title, const RECT& place) {
        return CreateWindowExW(0, L"STATIC", title, WS_VISIBLE | WS_POPUP, place.left, place.top,
                               place.right - place.left, place.bottom - place.top, nullptr, nullptr, nullptr,
                               nullptr);
    }
    static HWND Bar() { return FindWindowW(kBarClass, nullptr); }
    static RECT Place(HWND window) {
        RECT place{};
        GetWindowRect(window, &place);
        return place;
    }
    static bool IsAt(HWND window, const RECT& expected) {
        const RECT place = Place(window);
        return EqualRect(&place, &expected) != FALSE;
    }
    static std::wstring Title() {
        wchar_t title[64] = L"";
        GetWindowTextW(Bar(), title, 64);
        return title;
    }
    static bool Comes(const std::function<bool()>& condition) {
        return Eventually([&] {
            HandleMessages();
            return condition();
        });
    }
    static bool Shows(const wchar_t* title) {
        return Comes([&] { return Title() == title; });
    }
    // The bar as it stands on the screen.
    static Picture Look() {
        const RECT place = Place(Bar());
        const int width = place.right - place.left, height = place.bottom - place.top;
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = -height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        const HDC screen = GetDC(nullptr);
        const HDC memory = CreateCompatibleDC(screen);
        void* bits = nullptr;
        const HBITMAP bitmap = CreateDIBSection(screen, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        const HGDIOBJ previous = SelectObject(memory, bitmap);
        BitBlt(memory, 0, 0, width, height, screen, place.left, place.top, SRCCOPY);
        Picture picture(static_cast<DWORD*>(bits), static_cast<DWORD*>(bits) + width * height);
        for (DWORD& pixel : picture) pixel &= 0xFFFFFF;
        SelectObject(memory, previous);
        DeleteObject(bitmap);
        DeleteDC(memory);
        ReleaseDC(nullptr, screen);
        return picture;
    }
    // The picture once it differs from that one; empty when it never does.
    static Picture OtherThan(const Picture& before) {
        Picture now;
        const bool differs = Comes([&] {
            now = Look();
            return now != before;
        });
        return differs ? now : Picture();
    }
    // Once it has been painted and rests, with the clock at noon.
    Picture LookAtNoon() {
        SetClock(12, 0);
        Picture picture;
        int same = 0;
        EXPECT_TRUE(Comes([&] {
            Picture now = Look();
            same = now == picture ? same + 1 : 0;
            picture = std::move(now);
            RealPause(10);
            return same >= 60;
        }));
        return picture;
    }
    static void SetClock(WORD hour, WORD minute) {
        SYSTEMTIME time{};
        time.wYear = 2026;
        time.wMonth = 11;
        time.wDay = 22;
        time.wHour = hour;
        time.wMinute = minute;
        EXPECT_TRUE(SetLocalTime(&time));
    }
    static void Publish(const wchar_t* key, const wchar_t* name, DWORD value) {
        HKEY opened = nullptr;
        ASSERT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, key, 0, nullptr, 0, 0, nullptr, &opened, nullptr), 0);
        RegSetValueExW(opened, name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value), sizeof value);
        RegCloseKey(opened);
    }
    // Publishes a value, then the former one: what the bar shows in between.
    Picture ShownFor(const wchar_t* key, const wchar_t* name, DWORD before, DWORD meanwhile) {
        Publish(key, name, before);
        const Picture first = LookAtNoon();
        Publish(key, name, meanwhile);
        Picture shown = OtherThan(first);
        EXPECT_FALSE(shown.empty()) << "nothing changed";
        Publish(key, name, before);
        SetClock(12, 0);
        EXPECT_TRUE(Comes([&] { return Look() == first; })) << "it does not go back";
        return shown;
    }
    static std::size_t Count(const Picture& picture, COLORREF colour) {
        const auto stored = static_cast<DWORD>(RGB(GetBValue(colour), GetGValue(colour), GetRValue(colour)));
        std::size_t count = 0;
        for (const DWORD pixel : picture) count += pixel == stored ? 1 : 0;
        return count;
    }

    HWND main_ = nullptr;
};

TEST_F(TopBar, ComesWithAProgramsWindowAndGoesWithIt) {
    EXPECT_EQ(Bar(), nullptr);
    OpenMain();
    EXPECT_TRUE(IsWindowVisible(Bar()));
    EXPECT_TRUE(IsAt(Bar(), {0, 0, 240, 26}));
    EXPECT_TRUE(IsAt(main_, {0, 26, 240, 320}));
    DestroyWindow(main_);
    main_ = nullptr;
    EXPECT_TRUE(Comes([] { return Bar() == nullptr; }));
}

TEST_F(TopBar, ComesAtOnceWithAWindowThatTakesAnothersPlace) {
    OpenMain();
    DestroyWindow(main_);
    SetState(L"KORA_SCREENWIDTH", L"320");
    SetState(L"KORA_SCREENHEIGHT", L"240");
    OpenMain();
    EXPECT_TRUE(IsAt(Bar(), {0, 0, 320, 26}));
}

TEST_F(TopBar, DoesNotComeWithAWindowThatHasAPlaceOfItsOwn) {
    const HWND window = OpenOver(L"Elsewhere", {10, 40, 60, 90});
    HandleMessages();
    EXPECT_EQ(Bar(), nullptr);
    DestroyWindow(window);
}

TEST_F(TopBar, StandsInThePanelsDisplay) {
    const PanelStandIn panel({310, 120});
    OpenMain();
    EXPECT_TRUE(IsAt(Bar(), {310, 120, 550, 146}));
}

TEST_F(TopBar, TurnsWithTheDisplayAndGrowsWithIt) {
    OpenMain();
    SetState(L"KORA_SCREENWIDTH", L"320");
    SetState(L"KORA_SCREENHEIGHT", L"240");
    SendMessageW(Bar(), WM_SETTINGCHANGE, kDisplayTurned, 0);
    EXPECT_TRUE(IsAt(Bar(), {0, 0, 320, 26}));
    SetState(L"KORA_SCREENWIDTH", L"480");
    SetState(L"KORA_SCREENHEIGHT", L"640");
    SendMessageW(Bar(), WM_SETTINGCHANGE, kDisplayTurned, 0);
    EXPECT_TRUE(IsAt(Bar(), {0, 0, 480, 52}));
}

TEST_F(TopBar, ShowsTheTitleOfTheWindowInFrontThatFillsTheDisplay) {
    OpenMain();
    EXPECT_TRUE(Shows(L"Radio"));
    const HWND dialog = OpenOver(L"Settings", {0, 26, 240, 320});
    EXPECT_TRUE(Shows(L"Settings"));
    const HWND box = OpenOver(L"Question", {20, 100, 220, 200});
    SetWindowTextW(dialog, L"Settings of the radio");
    EXPECT_TRUE(Shows(L"Settings of the radio"));
    DestroyWindow(box);
    DestroyWindow(dialog);
    EXPECT_TRUE(Shows(L"Radio"));
}

TEST_F(TopBar, TakesNeitherTheActivationNorTheStylusAndIsNotClosed) {
    OpenMain();
    SetForegroundWindow(main_);
    EXPECT_TRUE(Comes([&] { return GetActiveWindow() == main_; }));
    EXPECT_FALSE(IsWindowEnabled(Bar()));
    SendMessageW(Bar(), WM_CLOSE, 0, 0);
    EXPECT_NE(Bar(), nullptr);
    EXPECT_EQ(GetActiveWindow(), main_);
}

TEST_F(TopBar, ShowsTheHandsetsClock) {
    OpenMain();
    const Picture noon = LookAtNoon();
    SetClock(17, 38);
    EXPECT_FALSE(OtherThan(noon).empty());
    SetClock(12, 0);
    EXPECT_TRUE(Comes([&] { return Look() == noon; }));
}

TEST_F(TopBar, ShowsWhereTheSoundGoes) {
    OpenMain();
    ShownFor(L"System\\State\\Hardware", L"Headset", 1, 0);
}

TEST_F(TopBar, ShowsHowWellTheNetworkIsReceivedInFourSteps) {
    OpenMain();
    const Picture full = LookAtNoon();
    const Picture none = ShownFor(L"System\\State\\Phone", L"Signal Strength", 100, 0);
    Picture before = none;
    for (const DWORD percent : {1u, 26u, 51u}) {
        SCOPED_TRACE(percent);
        const Picture shown = ShownFor(L"System\\State\\Phone", L"Signal Strength", 100, percent);
        EXPECT_TRUE(shown != before);
        EXPECT_TRUE(shown != full);
        before = shown;
    }
    Publish(L"System\\State\\Phone", L"Signal Strength", 76);
    EXPECT_TRUE(LookAtNoon() == full);
    Publish(L"System\\State\\Phone", L"Signal Strength", 4000000000u);
    EXPECT_TRUE(LookAtNoon() == full);
}

TEST_F(TopBar, ShowsACallFromItsFirstRingToItsEnd) {
    OpenMain();
    const std::size_t without = Count(LookAtNoon(), kCallColour);
    for (const DWORD status : {0x00010000u, 0x00020000u, 0x20000000u}) {
        SCOPED_TRACE(status);
        EXPECT_GT(Count(ShownFor(L"System\\State\\Phone", L"Status", 0, status), kCallColour), without);
    }
}

}  // namespace
