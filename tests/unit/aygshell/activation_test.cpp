// SHHandleWMActivate and SHHandleWMSettingChange.
#include <gtest/gtest.h>

#include "handset/include/aygshell.h"
#include "handset/state/handset_protocol.h"
#include "tests/unit/aygshell/test_handset.h"
#include "tests/unit/aygshell/test_window.h"

namespace {

class Activation : public ::testing::Test {
  protected:
    Activation() : m_first(MakeEdit(0)), m_second(MakeEdit(40)) {
        SetActiveWindow(m_window.Get());
        m_window.onMessage = [this](const test::Received& received) {
            if (received.message != WM_ACTIVATE) return;
            SHHandleWMActivate(m_window.Get(), received.wParam, received.lParam, &m_info, 0);
        };
    }
    HWND MakeEdit(int y) const {
        return CreateWindowExW(0, L"EDIT", nullptr, WS_CHILD | WS_VISIBLE, 0, y, 100, 20, m_window.Get(),
                               nullptr, nullptr, nullptr);
    }

    test::TestHandset m_handset;
    test::TestWindow m_window;
    SHACTIVATEINFO m_info = {sizeof(SHACTIVATEINFO), nullptr, 0, 0, 0, 0};
    HWND m_first;
    HWND m_second;
};

TEST_F(Activation, BringsTheFocusBackToTheControlThatHadIt) {
    SetFocus(m_second);
    test::TestWindow other;
    SetActiveWindow(other.Get());
    ASSERT_EQ(m_info.hwndLastFocus, m_second);
    EXPECT_EQ(m_info.fActive, 0u);
    SetActiveWindow(m_window.Get());
    EXPECT_EQ(GetFocus(), m_second);
    EXPECT_EQ(m_info.fActive, 1u);
}

TEST_F(Activation, LeavesTheFocusAloneWhenTheControlIsGone) {
    SetFocus(m_second);
    test::TestWindow other;
    SetActiveWindow(other.Get());
    DestroyWindow(m_second);
    SetActiveWindow(m_window.Get());
    EXPECT_EQ(GetFocus(), m_window.Get());
}

TEST_F(Activation, DoesNotRememberAnotherWindowsFocus) {
    const test::TestWindow other;
    SetFocus(other.Get());
    m_info.hwndLastFocus = nullptr;
    EXPECT_TRUE(SHHandleWMActivate(m_window.Get(), WA_INACTIVE, 0, &m_info, 0));
    EXPECT_EQ(m_info.hwndLastFocus, nullptr);
}

TEST_F(Activation, IsRefusedWithoutARecordOrAWindow) {
    EXPECT_FALSE(SHHandleWMActivate(m_window.Get(), WA_ACTIVE, 0, nullptr, 0));
    EXPECT_FALSE(SHHandleWMActivate(nullptr, WA_ACTIVE, 0, &m_info, 0));
    EXPECT_TRUE(SHHandleWMActivate(m_window.Get(), WA_ACTIVE, 0, &m_info, 0));
}

TEST_F(Activation, RefusesARecordThatDoesNotSayItsSize) {
    for (const DWORD size :
         {DWORD{0}, static_cast<DWORD>(sizeof m_info) - 4, static_cast<DWORD>(sizeof m_info) + 4}) {
        SHACTIVATEINFO info = {};
        info.cbSize = size;
        SetLastError(ERROR_SUCCESS);
        EXPECT_FALSE(SHHandleWMActivate(m_window.Get(), WA_ACTIVE, 0, &info, 0)) << size;
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
        EXPECT_FALSE(SHHandleWMSettingChange(m_window.Get(), handset::kSettingChangeReset, 0, &info)) << size;
        EXPECT_EQ(info.fActive, 0u);
    }
}

TEST_F(Activation, FitsTheWindowToADisplayThatHasTurned) {
    m_handset.SetScreen(320, 240);
    EXPECT_TRUE(SHHandleWMSettingChange(m_window.Get(), handset::kSettingChangeReset, 0, &m_info));
    EXPECT_EQ(test::PlaceOf(m_window.Get()), "0,26 320x214");
    m_handset.SetScreen(480, 640);
    EXPECT_TRUE(SHHandleWMSettingChange(m_window.Get(), handset::kSettingChangeReset, 0, &m_info));
    EXPECT_EQ(test::PlaceOf(m_window.Get()), "0,52 480x588");
}

TEST_F(Activation, LeavesTheWindowAloneOnOtherSettingChanges) {
    m_handset.SetScreen(320, 240);
    EXPECT_TRUE(SHHandleWMSettingChange(m_window.Get(), SPI_SETWORKAREA, 0, &m_info));
    EXPECT_EQ(test::PlaceOf(m_window.Get()), "0,0 240x320");
}

TEST_F(Activation, RefusesSettingChangesWithoutARecordOrAWindow) {
    EXPECT_FALSE(SHHandleWMSettingChange(m_window.Get(), handset::kSettingChangeReset, 0, nullptr));
    EXPECT_FALSE(SHHandleWMSettingChange(nullptr, handset::kSettingChangeReset, 0, &m_info));
}

}  // namespace
