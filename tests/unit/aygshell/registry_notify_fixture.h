// A window with a watched registry value, and what has been reported about it.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "handset/include/regext.h"
#include "tests/support/wait.h"
#include "tests/unit/aygshell/test_handset.h"
#include "tests/unit/aygshell/test_window.h"

inline constexpr wchar_t kKey[] = L"System\\State\\Phone";
inline constexpr wchar_t kValue[] = L"Status";
inline constexpr UINT kChanged = 0xA403;
// A second value, changed after the one under test, to know when the other's message would be here.
inline constexpr UINT kMarker = 0xA4FF;
inline constexpr wchar_t kMarkerValue[] = L"Marker";

using Numbers = std::vector<WPARAM>;

class RegistryNotify : public ::testing::Test {
  protected:
    RegistryNotify() {
        EXPECT_EQ(RegistryNotifyWindow(HKEY_LOCAL_MACHINE, kKey, kMarkerValue, m_window.Get(), kMarker, 0,
                                       nullptr, &m_markerNotify),
                  S_OK);
    }
    ~RegistryNotify() override {
        EXPECT_EQ(RegistryCloseNotification(m_markerNotify), S_OK);
        if (m_notify != nullptr) {
            EXPECT_EQ(RegistryCloseNotification(m_notify), S_OK);
        }
    }
    void Watch(NOTIFICATIONCONDITION* condition = nullptr, DWORD userData = 0) {
        ASSERT_EQ(RegistryNotifyWindow(HKEY_LOCAL_MACHINE, kKey, kValue, m_window.Get(), kChanged, userData,
                                       condition, &m_notify),
                  S_OK);
        ASSERT_NE(m_notify, nullptr);
    }
    static void Set(DWORD value) {
        ASSERT_EQ(RegistrySetDWORD(HKEY_LOCAL_MACHINE, kKey, kValue, value), S_OK);
    }
    // The numbers reported since the last call, after everything that has happened has been reported. Two
    // rounds: the marker may be the first of several changes that are reported together.
    std::vector<WPARAM> Reported() {
        AwaitMarker();
        AwaitMarker();
        std::vector<WPARAM> numbers;
        for (const test::Received& received : m_window.Of(kChanged)) numbers.push_back(received.wParam);
        m_window.Forget();
        return numbers;
    }

    void AwaitMarker() {
        RegistrySetDWORD(HKEY_LOCAL_MACHINE, kKey, kMarkerValue, ++m_marker);
        EXPECT_TRUE(test::WaitFor([this] {
            for (const test::Received& received : m_window.Of(kMarker)) {
                if (received.wParam == m_marker) return true;
            }
            return false;
        }));
    }

    test::TestHandset m_handset;
    test::TestWindow m_window;
    HREGNOTIFY m_notify = nullptr;
    HREGNOTIFY m_markerNotify = nullptr;
    DWORD m_marker = 0;
};
