// What a dialog, a box or a menu has covered has to be painted again when it goes, and nothing else.
#include <gtest/gtest.h>
#include <windows.h>

#include <functional>

#include "handset_fixture.h"

namespace {

constexpr UINT_PTR kLookId = 5;
constexpr RECT kScreen = {0, 0, 240, 320};

// Windows as the radio has them: a main window with a list in it.
class Uncovering : public HandsetTest {
  protected:
    Uncovering() {
        main_ = MakeWindow(kScreen);
        list_ = CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE, 0, 100, 240, 120, main_, nullptr,
                                nullptr, nullptr);
    }
    ~Uncovering() override { DestroyWindow(main_); }

    static HWND MakeWindow(const RECT& place) {
        const HWND window = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, place.left, place.top,
                                            place.right - place.left, place.bottom - place.top, nullptr,
                                            nullptr, nullptr, nullptr);
        HandleMessages();
        return window;
    }
    // What of a window has to be painted, on the screen; empty when nothing has.
    static RECT ToPaint(HWND window) {
        RECT area{};
        if (!GetUpdateRect(window, &area, FALSE)) return {};
        POINT corner = {0, 0};
        ClientToScreen(window, &corner);
        OffsetRect(&area, corner.x, corner.y);
        return area;
    }
    // Shows what `show` shows, notes its place, lets `leave` end it; its place.
    static RECT Show(const wchar_t* name, const std::function<void()>& show,
                     const std::function<void(HWND)>& leave) {
        static const wchar_t* wanted;
        static const std::function<void(HWND)>* leaving;
        static RECT place;
        wanted = name;
        leaving = &leave;
        place = {};
        const TIMERPROC look = [](HWND, UINT, UINT_PTR id, DWORD) {
            const HWND shown = FindWindowW(wanted, nullptr);
            if (shown == nullptr || !IsWindowVisible(shown)) return;
            KillTimer(nullptr, id);
            GetWindowRect(shown, &place);
            // What its coming made invalid is painted before it goes.
            for (HWND below = GetTopWindow(nullptr); below != nullptr;
                 below = GetWindow(below, GW_HWNDNEXT)) {
                RedrawWindow(below, nullptr, nullptr, RDW_VALIDATE | RDW_ALLCHILDREN);
            }
            (*leaving)(shown);
        };
        const UINT_PTR timer = SetTimer(nullptr, kLookId, 10, look);
        show();
        KillTimer(nullptr, timer);
        return place;
    }
    RECT ShowBox() const {
        return Show(
            L"#32770", [this] { MessageBoxW(main_, L"Said.", L"FM", MB_OK); },
            [](HWND box) { PostMessageW(box, WM_COMMAND, IDOK, 0); });
    }
    static void ExpectEqual(const RECT& one, const RECT& other) {
        EXPECT_TRUE(EqualRect(&one, &other))
            << one.left << ' ' << one.top << ' ' << one.right << ' ' << one.bottom << " is not " << other.left
            << ' ' << other.top << ' ' << other.right << ' ' << other.bottom;
    }
    static RECT Common(const RECT& one, const RECT& other) {
        RECT common{};
        IntersectRect(&common, &one, &other);
        return common;
    }
    RECT ListPlace() const {
        RECT place{};
        GetWindowRect(list_, &place);
        return place;
    }

    HWND main_ = nullptr;
    HWND list_ = nullptr;
};

}  // namespace

TEST_F(Uncovering, ABoxThatWasAnsweredLeavesItsPlaceToBePaintedTheListsPartIncluded) {
    const RECT box = ShowBox();
    ASSERT_FALSE(IsRectEmpty(&box));
    ExpectEqual(ToPaint(main_), box);
    ExpectEqual(ToPaint(list_), Common(box, ListPlace()));
}

TEST_F(Uncovering, ADialogThatEndsLeavesItsPlaceToBePainted) {
    struct {
        DLGTEMPLATE layout = {WS_POPUP | WS_VISIBLE, 0, 0, 20, 30, 60, 50};
        WORD none[3] = {};  // menu, class, title
    } const empty;
    const RECT dialog = Show(
        L"#32770",
        [&] {
            DialogBoxIndirectParamW(
                nullptr, &empty.layout, main_,
                [](HWND, UINT message, WPARAM, LPARAM) -> INT_PTR { return message == WM_INITDIALOG; }, 0);
        },
        [](HWND shown) { EndDialog(shown, 1); });
    ASSERT_FALSE(IsRectEmpty(&dialog));
    ExpectEqual(ToPaint(main_), dialog);
}

TEST_F(Uncovering, AMenuThatWasLeftLeavesItsPlaceToBePainted) {
    const HMENU menu = CreatePopupMenu();
    AppendMenuW(menu, MF_STRING, 1, L"One");
    AppendMenuW(menu, MF_STRING, 2, L"Two");
    const RECT place = Show(
        L"#32768", [&] { TrackPopupMenuEx(menu, TPM_RETURNCMD, 50, 60, main_, nullptr); },
        [this](HWND) {
            PostMessageW(main_, WM_KEYDOWN, VK_ESCAPE, 1);
            PostMessageW(main_, WM_KEYUP, VK_ESCAPE, 1);
        });
    DestroyMenu(menu);
    ASSERT_FALSE(IsRectEmpty(&place));
    ExpectEqual(ToPaint(main_), Common(place, kScreen));
}

TEST_F(Uncovering, WhatAnotherWindowStillCoversIsNotPainted) {
    const HWND upper = MakeWindow(kScreen);
    const RECT box = ShowBox();
    ExpectEqual(ToPaint(upper), box);
    ExpectEqual(ToPaint(main_), RECT{});
    DestroyWindow(upper);
    ExpectEqual(ToPaint(main_), kScreen);
}

TEST_F(Uncovering, AWindowThatWasNeverShownHasCoveredNothing) {
    const HWND hidden =
        CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 100, 100, main_, nullptr, nullptr, nullptr);
    DestroyWindow(hidden);
    ExpectEqual(ToPaint(main_), RECT{});
}
