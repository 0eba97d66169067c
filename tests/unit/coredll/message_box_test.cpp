// Message boxes stand inside the handset's display.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdlib>
#include <string>
#include <utility>

#include "handset_fixture.h"
#include "panel_stand_in.h"
#include "worker.h"

namespace {

constexpr int kTextId = 0xFFFF;

// What an onlooker sees of a message box before answering it.
struct Seen {
    bool found = false;
    RECT box{};
    RECT buttons{};  // around all of them
    RECT text{};
    RECT title{};  // where it is a control of the box's; empty where the host draws it
    bool hostsTitle = false;
    bool closeBox = false;
    int answer;
};

BOOL CALLBACK AddButton(HWND child, LPARAM data) {
    wchar_t name[16] = L"";
    GetClassNameW(child, name, 16);
    RECT rect;
    if (lstrcmpiW(name, L"Button") == 0 && IsWindowVisible(child) && GetWindowRect(child, &rect)) {
        auto* all = reinterpret_cast<RECT*>(data);
        UnionRect(all, all, &rect);
    }
    return TRUE;
}

BOOL CALLBACK FindText(HWND child, LPARAM data) {
    if (GetDlgCtrlID(child) == kTextId) GetWindowRect(child, reinterpret_cast<RECT*>(data));
    return TRUE;
}

DWORD WINAPI Onlooker(void* data) {
    auto* seen = static_cast<Seen*>(data);
    HWND box = nullptr;
    seen->found = Eventually([&box] {
        box = FindWindowW(L"#32770", L"FM test box");
        return box != nullptr && IsWindowVisible(box);
    });
    if (!seen->found) return 0;
    GetWindowRect(box, &seen->box);
    seen->closeBox = (GetWindowLongPtrW(box, GWL_STYLE) & WS_SYSMENU) != 0;
    seen->hostsTitle = (GetWindowLongPtrW(box, GWL_STYLE) & WS_CAPTION) == WS_CAPTION;
    const HWND title = FindWindowExW(box, nullptr, L"KoraHandset.BoxTitle", L"FM test box");
    if (title != nullptr) GetWindowRect(title, &seen->title);
    EnumChildWindows(box, AddButton, reinterpret_cast<LPARAM>(&seen->buttons));
    EnumChildWindows(box, FindText, reinterpret_cast<LPARAM>(&seen->text));
    PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(seen->answer), 0);
    return 0;
}

std::string Text(const RECT& rect) {
    return std::to_string(rect.left) + " " + std::to_string(rect.top) + " " + std::to_string(rect.right) +
           " " + std::to_string(rect.bottom);
}

class MessageBoxes : public HandsetTest {
  protected:
    // Shows a box and answers it. Gives the box's own result.
    int Show(const std::wstring& text, UINT type, int answer, HWND owner = nullptr) {
        seen_.answer = answer;
        const HANDLE onlooker = CreateThread(nullptr, 0, Onlooker, &seen_, 0, nullptr);
        const int result = MessageBoxW(owner, text.c_str(), L"FM test box", type);
        WaitForSingleObject(onlooker, 20000);
        CloseHandle(onlooker);
        return result;
    }
    void ExpectInside(int left, int top, int width, int height) const {
        ASSERT_TRUE(seen_.found);
        EXPECT_GE(seen_.box.left, left);
        EXPECT_GE(seen_.box.top, top);
        EXPECT_LE(seen_.box.right, left + width);
        EXPECT_LE(seen_.box.bottom, top + height);
        RECT common;
        IntersectRect(&common, &seen_.box, &seen_.buttons);
        EXPECT_TRUE(EqualRect(&common, &seen_.buttons))
            << "a button is cut off: box " << Text(seen_.box) << ", buttons " << Text(seen_.buttons);
    }
    Seen seen_;
};

const std::wstring kLongText =
    L"The file \\My Documents\\My Music\\A station with a rather long name-0001.amr is there already. Shall "
    L"it "
    L"be overwritten by the recording that is about to begin?";

TEST_F(MessageBoxes, OnADisplayOfTwiceThePixelsTheTitleIsTwiceAsLargeAboveTheText) {
    Show(L"Question", MB_OK, IDOK);
    EXPECT_TRUE(seen_.hostsTitle);
    EXPECT_TRUE(IsRectEmpty(&seen_.title));
    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    for (const auto& [width, height] : {std::pair{L"480", L"640"}, std::pair{L"640", L"480"}}) {
        SetState(L"KORA_SCREENWIDTH", width);
        SetState(L"KORA_SCREENHEIGHT", height);
        seen_ = {};
        Show(kLongText, MB_YESNO, IDNO);
        EXPECT_FALSE(seen_.hostsTitle);
        EXPECT_GE(seen_.title.bottom - seen_.title.top, 2 * std::abs(metrics.lfCaptionFont.lfHeight));
        EXPECT_GE(seen_.text.top, seen_.title.bottom);
        EXPECT_GE(seen_.buttons.top, seen_.text.bottom);
        EXPECT_GT(seen_.box.bottom, seen_.buttons.bottom);
        // From edge to edge within the frame.
        EXPECT_LE(seen_.title.left - seen_.box.left, 6);
        EXPECT_LE(seen_.box.right - seen_.title.right, 6);
    }
}

TEST_F(MessageBoxes, AnOwnerIsEnabledAgainOnlyWhenItWasEnabledBefore) {
    const HWND owner = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr,
                                       nullptr, nullptr, nullptr);
    Show(L"Question", MB_OK, IDOK, owner);
    EXPECT_TRUE(IsWindowEnabled(owner));
    EnableWindow(owner, FALSE);
    Show(L"Question", MB_OK, IDOK, owner);
    EXPECT_FALSE(IsWindowEnabled(owner));
    DestroyWindow(owner);
}

// A worker thread shows the box, as a scan does.
TEST_F(MessageBoxes, ADisabledOwnerIsNotActivatedWhenTheBoxCloses) {
    const HWND owner = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr,
                                       nullptr, nullptr, nullptr);
    SetForegroundWindow(owner);
    ASSERT_EQ(GetActiveWindow(), owner);
    EnableWindow(owner, FALSE);
    {
        const Worker worker([&] { Show(L"Question", MB_OK, IDOK, owner); });
    }
    HandleMessages();
    EXPECT_TRUE(seen_.found);
    EXPECT_NE(GetActiveWindow(), owner);
    EnableWindow(owner, TRUE);
    SetForegroundWindow(owner);
    EXPECT_EQ(GetActiveWindow(), owner);
    DestroyWindow(owner);
}

}  // namespace

TEST_F(MessageBoxes, AShortOneStandsInTheMiddleBelowTheShellsBar) {
    EXPECT_EQ(Show(L"Short.", MB_OK, IDOK), IDOK);
    ExpectInside(0, 26, 240, 294);
    EXPECT_NEAR(seen_.box.left, 240 - seen_.box.right, 1);
    EXPECT_NEAR(seen_.box.top - 26, 320 - seen_.box.bottom, 1);
}

TEST_F(MessageBoxes, HaveNoCloseBoxAsOnTheDevice) {
    Show(L"Scanned.", MB_OK, IDOK);
    ASSERT_TRUE(seen_.found);
    EXPECT_FALSE(seen_.closeBox);
}

TEST_F(MessageBoxes, ALongOneIsBrokenIntoLinesThatFit) {
    EXPECT_EQ(Show(kLongText, MB_YESNO | MB_ICONQUESTION, IDYES), IDYES);
    ExpectInside(0, 26, 240, 294);
}

TEST_F(MessageBoxes, ALongOneHasNoRoomForAPictureThatItDoesNotShow) {
    EXPECT_EQ(Show(kLongText, MB_OK, IDOK), IDOK);
    ASSERT_TRUE(seen_.found);
    EXPECT_LT(seen_.text.left - seen_.box.left, 12);
    EXPECT_EQ(Show(kLongText, MB_OK | MB_ICONQUESTION, IDOK), IDOK);
    EXPECT_GT(seen_.text.left - seen_.box.left, 30);
}

TEST_F(MessageBoxes, ThreeButtonsFitAsWell) {
    EXPECT_EQ(Show(kLongText, MB_YESNOCANCEL | MB_ICONEXCLAMATION, IDNO), IDNO);
    ExpectInside(0, 26, 240, 294);
}

TEST_F(MessageBoxes, StandInThePanelsDisplay) {
    const PanelStandIn panel({400, 200});
    SetState(L"KORA_SCREENWIDTH", L"320");
    SetState(L"KORA_SCREENHEIGHT", L"240");
    EXPECT_EQ(Show(kLongText, MB_OK, IDOK), IDOK);
    ExpectInside(400, 226, 320, 214);
}
