// SHInitDialog: where a dialog stands, what it looks like, and what happens when the display turns.
#include <gtest/gtest.h>

#include "tests/support/wait.h"
#include "tests/unit/aygshell/bar_maker.h"
#include "tests/unit/aygshell/resource_ids.h"
#include "tests/unit/aygshell/test_handset.h"

namespace {

using test::PlaceOf;

constexpr DWORD kFullScreen = SHIDIF_DONEBUTTON | SHIDIF_SIZEDLGFULLSCREEN | SHIDIF_SIPDOWN;

// What the dialog's procedure has seen.
struct Seen {
    std::vector<SIZE> sizes;
    std::vector<WORD> commands;
} g_seen;

INT_PTR CALLBACK DialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG && lParam >= 0) {
        SHINITDLGINFO info = {SHIDIM_FLAGS, dialog, static_cast<DWORD>(lParam)};
        EXPECT_TRUE(SHInitDialog(&info));
        // Without the focus the dialog is not activated: see TestWindow.
        return FALSE;
    }
    if (message == WM_SIZE) g_seen.sizes.push_back({LOWORD(lParam), HIWORD(lParam)});
    const bool fromEdit = message == WM_COMMAND && LOWORD(wParam) == CONTROL_EDIT;
    if (message == WM_COMMAND && !fromEdit) g_seen.commands.push_back(LOWORD(wParam));
    return FALSE;
}

class Dialog : public ::testing::Test {
  protected:
    Dialog() { g_seen = {}; }
    ~Dialog() override { Close(); }
    // `flags` go to SHInitDialog in WM_INITDIALOG; -1 = it is not called.
    void Open(LPARAM flags) {
        m_dialog = CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(DIALOG_FRAMED), nullptr,
                                      DialogProc, flags);
        ASSERT_NE(m_dialog, nullptr);
        ShowWindow(m_dialog, SW_SHOWNOACTIVATE);
    }
    void Close() {
        if (m_dialog != nullptr) DestroyWindow(m_dialog);
        m_dialog = nullptr;
    }

    test::TestHandset m_handset;
    HWND m_dialog = nullptr;
};

TEST_F(Dialog, FillsTheDisplayBelowTheShellsBarWithoutAFrame) {
    Open(kFullScreen);
    EXPECT_EQ(PlaceOf(m_dialog), "0,26 240x294");
    RECT client = {};
    GetClientRect(m_dialog, &client);
    EXPECT_EQ(client.right, 240);
    EXPECT_EQ(client.bottom, 294);
    EXPECT_EQ(GetWindowLongPtrW(m_dialog, GWL_STYLE) & (WS_CAPTION | WS_SYSMENU), 0);
    wchar_t title[16] = {};
    GetWindowTextW(m_dialog, title, 16);
    EXPECT_STREQ(title, L"Settings");
}

TEST_F(Dialog, FillsALandscapeDisplay) {
    m_handset.SetScreen(320, 240);
    Open(kFullScreen);
    EXPECT_EQ(PlaceOf(m_dialog), "0,26 320x214");
}

TEST_F(Dialog, IsLaidOutAgainWhenTheDisplayTurns) {
    Open(kFullScreen);
    g_seen = {};
    m_handset.SetScreen(320, 240);
    test::SendDisplayChange(m_dialog);
    EXPECT_EQ(PlaceOf(m_dialog), "0,26 320x214");
    ASSERT_EQ(g_seen.sizes.size(), 1u);
    EXPECT_EQ(g_seen.sizes[0].cx, 320);
    EXPECT_EQ(g_seen.sizes[0].cy, 214);
}

TEST_F(Dialog, StaysAsItIsOnOtherSettingChanges) {
    Open(kFullScreen);
    m_handset.SetScreen(320, 240);
    SendMessageW(m_dialog, WM_SETTINGCHANGE, SPI_SETWORKAREA, 0);
    EXPECT_EQ(PlaceOf(m_dialog), "0,26 240x294");
}

TEST_F(Dialog, TakesItsBarAlongWhenTheDisplayTurns) {
    Open(kFullScreen | SHIDIF_EMPTYMENU);
    const HWND bar = test::MakeBar(m_dialog, MENU_TWO_COMMANDS, SHCMBF_HIDESIPBUTTON | SHCMBF_HMENU);
    EXPECT_EQ(PlaceOf(bar), "0,294 240x26");
    m_handset.SetScreen(320, 240);
    test::SendDisplayChange(m_dialog);
    EXPECT_EQ(PlaceOf(bar), "0,214 320x26");
}

TEST_F(Dialog, GetsAnEmptyBarThatItsOwnReplaces) {
    Open(SHIDIF_SIZEDLGFULLSCREEN | SHIDIF_EMPTYMENU);
    const HWND empty = SHFindMenuBar(m_dialog);
    ASSERT_NE(empty, nullptr);
    EXPECT_EQ(test::KeyCount(empty), 0);
    EXPECT_EQ(PlaceOf(empty), "0,294 240x26");
    const HWND own = test::MakeBar(m_dialog, MENU_TWO_COMMANDS, SHCMBF_HMENU);
    ASSERT_NE(own, nullptr);
    EXPECT_FALSE(IsWindow(empty));
    EXPECT_EQ(SHFindMenuBar(m_dialog), own);
}

TEST_F(Dialog, HasNoBarUnlessAskedFor) {
    Open(kFullScreen);
    EXPECT_EQ(SHFindMenuBar(m_dialog), nullptr);
}

TEST_F(Dialog, WithADoneButtonShowsItOnABarWithoutKeys) {
    Open(kFullScreen);
    const HWND bar = test::MakeBar(m_dialog, 0, SHCMBF_HIDESIPBUTTON | SHCMBF_HMENU);
    ASSERT_EQ(test::KeyCount(bar), 1);
    test::PressSoftKey(bar, 0);
    ASSERT_TRUE(test::WaitFor([] { return !g_seen.commands.empty(); }));
    EXPECT_EQ(g_seen.commands, std::vector<WORD>{IDOK});
}

TEST_F(Dialog, WithADoneButtonTakesReturnForOk) {
    Open(kFullScreen);
    SetFocus(GetDlgItem(m_dialog, CONTROL_EDIT));
    MSG key = {};
    key.hwnd = GetDlgItem(m_dialog, CONTROL_EDIT);
    key.message = WM_KEYDOWN;
    key.wParam = VK_RETURN;
    EXPECT_TRUE(IsDialogMessageW(m_dialog, &key));
    EXPECT_FALSE(g_seen.commands.empty());
    EXPECT_EQ(g_seen.commands.back(), IDOK);
}

TEST_F(Dialog, OfItsOwnSizeIsCentredBelowTheShellsBar) {
    Open(SHIDIF_SIZEDLG);
    RECT place = {};
    GetWindowRect(m_dialog, &place);
    EXPECT_NEAR(place.left, 240 - place.right, 1);
    EXPECT_NEAR(place.top - 26, 320 - place.bottom, 1);
    EXPECT_NE(GetWindowLongPtrW(m_dialog, GWL_STYLE) & WS_CAPTION, 0);
    m_handset.SetScreen(320, 240);
    test::SendDisplayChange(m_dialog);
    GetWindowRect(m_dialog, &place);
    EXPECT_NEAR(place.left, 320 - place.right, 1);
    EXPECT_NEAR(place.top - 26, 240 - place.bottom, 1);
}

TEST_F(Dialog, ThatIsLargerThanTheDisplayBeginsAtTheCornerBelowTheBar) {
    Open(SHIDIF_SIZEDLG);
    SetWindowPos(m_dialog, nullptr, 5, 5, 400, 400, SWP_NOZORDER | SWP_NOACTIVATE);
    test::SendDisplayChange(m_dialog);
    RECT place = {};
    GetWindowRect(m_dialog, &place);
    EXPECT_EQ(place.left, 0);
    EXPECT_EQ(place.top, 26);
}

TEST_F(Dialog, IsRefusedWithoutARecordOrAWindow) {
    EXPECT_FALSE(SHInitDialog(nullptr));
    SHINITDLGINFO info = {SHIDIM_FLAGS, nullptr, kFullScreen};
    EXPECT_FALSE(SHInitDialog(&info));
    Open(-1);
    info.hDlg = m_dialog;
    const HWND gone = m_dialog;
    Close();
    info.hDlg = gone;
    EXPECT_FALSE(SHInitDialog(&info));
}

}  // namespace
