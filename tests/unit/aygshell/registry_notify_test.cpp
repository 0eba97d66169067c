// RegistryNotifyWindow and RegistryCloseNotification.
#include <gtest/gtest.h>
#include <process.h>

#include <algorithm>

#include "tests/unit/aygshell/registry_notify_fixture.h"

namespace {

TEST_F(RegistryNotify, ReportsTheNewNumberWithTheCallersData) {
    Set(1);
    Watch(nullptr, 0xFEDCBA98);
    Set(0x20000000);
    ASSERT_TRUE(test::WaitFor([this] { return m_window.Count(kChanged) > 0; }));
    EXPECT_EQ(m_window.Of(kChanged)[0].wParam, 0x20000000u);
    EXPECT_EQ(m_window.Of(kChanged)[0].lParam, LPARAM{0xFEDCBA98});
}

TEST_F(RegistryNotify, ReportsWithinASecond) {
    Watch();
    const ULONGLONG start = GetTickCount64();
    Set(9);
    ASSERT_TRUE(test::WaitFor([this] { return m_window.Count(kChanged) > 0; }));
    const ULONGLONG latency_ms = GetTickCount64() - start;
    RecordProperty("latency_ms", static_cast<int>(latency_ms));
    EXPECT_LT(latency_ms, 1000u);
}

TEST_F(RegistryNotify, ReportsEveryStepOfAValue) {
    Watch();
    for (DWORD value = 1; value <= 20; ++value) {
        Set(value);
        EXPECT_EQ(Reported(), Numbers{value});
    }
}

TEST_F(RegistryNotify, ReportsAValueInAKeyThatWasNotThere) {
    HREGNOTIFY notify = nullptr;
    ASSERT_EQ(RegistryNotifyWindow(HKEY_LOCAL_MACHINE, L"\\Not\\There\\Yet", L"Value", m_window.Get(),
                                   kChanged, 0, nullptr, &notify),
              S_OK);
    RegistrySetDWORD(HKEY_LOCAL_MACHINE, L"Not\\There\\Yet", L"Value", 4);
    EXPECT_EQ(Reported(), Numbers{4});
    EXPECT_EQ(RegistryCloseNotification(notify), S_OK);
}

TEST_F(RegistryNotify, ReportsZeroForAValueThatIsGone) {
    Set(5);
    Watch();
    HKEY key = nullptr;
    ASSERT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, kKey, 0, KEY_ALL_ACCESS, &key), ERROR_SUCCESS);
    ASSERT_EQ(RegDeleteValueW(key, kValue), ERROR_SUCCESS);
    RegCloseKey(key);
    EXPECT_EQ(Reported(), Numbers{0});
}

TEST_F(RegistryNotify, ReportsAValueWhoseKeyIsDeletedAndMadeAgain) {
    Set(5);
    Watch();
    ASSERT_EQ(RegDeleteKeyW(HKEY_LOCAL_MACHINE, kKey), ERROR_SUCCESS);
    EXPECT_EQ(Reported(), Numbers{0});
    Set(6);
    EXPECT_EQ(Reported(), Numbers{6});
}

TEST_F(RegistryNotify, ReportsNothingWhenTheSameNumberIsWrittenAgain) {
    Set(5);
    Watch();
    Set(5);
    RegistrySetDWORD(HKEY_LOCAL_MACHINE, kKey, L"Neighbour", 1);
    EXPECT_EQ(Reported(), Numbers{});
}

TEST_F(RegistryNotify, ReportsAChangeMadeByAnotherProcess) {
    Watch();
    const std::wstring key = L"\"HKCU\\" + m_handset.HostKey(L"HKLM") + L"\\" + kKey + L"\"";
    ASSERT_EQ(_wspawnlp(_P_WAIT, L"reg.exe", L"reg.exe", L"add", key.c_str(), L"/v", kValue, L"/t",
                        L"REG_DWORD", L"/d", L"65536", L"/f", nullptr),
              0);
    EXPECT_EQ(Reported(), Numbers{65536});
}

TEST_F(RegistryNotify, ReportsWhatTheHandsetsCommandLineChanges) {
    Watch();
    wchar_t program[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    const std::wstring folder = std::wstring(program).substr(0, std::wstring(program).rfind(L'\\'));
    const std::wstring handset = folder + L"\\handset.exe";
    const auto run = [&handset](const wchar_t* verb, const wchar_t* word) {
        return _wspawnl(_P_WAIT, handset.c_str(), L"handset.exe", verb, word, nullptr);
    };
    ASSERT_EQ(run(L"call", L"incoming"), 0);
    EXPECT_EQ(Reported(), Numbers{0x00010000});
    HREGNOTIFY headset = nullptr;
    ASSERT_EQ(run(L"headset", L"on"), 0);
    ASSERT_EQ(RegistryNotifyWindow(HKEY_LOCAL_MACHINE, L"System\\State\\Hardware", L"Headset", m_window.Get(),
                                   kChanged, 0, nullptr, &headset),
              S_OK);
    ASSERT_EQ(run(L"headset", L"off"), 0);
    EXPECT_EQ(Reported(), Numbers{0});
    ASSERT_EQ(_wspawnl(_P_WAIT, handset.c_str(), L"handset.exe", L"reg", L"set",
                       L"HKLM\\System\\State\\Hardware", L"Headset", L"dword", L"7", nullptr),
              0);
    EXPECT_EQ(Reported(), Numbers{7});
    EXPECT_EQ(RegistryCloseNotification(headset), S_OK);
}

TEST_F(RegistryNotify, ReportsATextAsZero) {
    Watch();
    RegistrySetString(HKEY_LOCAL_MACHINE, kKey, kValue, L"text");
    EXPECT_EQ(Reported(), Numbers{0});
}

TEST_F(RegistryNotify, WatchesAKeyThatTheCallerOpenedAndClosed) {
    HKEY key = nullptr;
    ASSERT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"System\\State", 0, KEY_ALL_ACCESS, &key), ERROR_SUCCESS);
    ASSERT_EQ(RegistryNotifyWindow(key, L"Phone", kValue, m_window.Get(), kChanged, 0, nullptr, &m_notify),
              S_OK);
    RegCloseKey(key);
    Set(3);
    EXPECT_EQ(Reported(), Numbers{3});
}

TEST_F(RegistryNotify, SaysNothingAfterItIsClosed) {
    Watch();
    for (DWORD round = 1; round <= 50; ++round) {
        Set(round);
        ASSERT_EQ(RegistryCloseNotification(m_notify), S_OK);
        m_notify = nullptr;
        // What was posted before the close is still in the queue; nothing may be added to it now.
        MSG message;
        while (PeekMessageW(&message, m_window.Get(), kChanged, kChanged, PM_REMOVE)) {
        }
        m_window.Forget();
        Set(round + 1000);
        EXPECT_EQ(Reported(), Numbers{});
        Watch();
    }
}

TEST_F(RegistryNotify, ServesAHundredAtOnceAndClosesThem) {
    constexpr int kCount = 100;
    std::vector<HREGNOTIFY> notifications(kCount);
    for (int i = 0; i < kCount; ++i) {
        const std::wstring key = std::wstring(kKey) + L"\\" + std::to_wstring(i);
        ASSERT_EQ(
            RegistryNotifyWindow(HKEY_LOCAL_MACHINE, key.c_str(), kValue, m_window.Get(), kChanged,
                                 static_cast<DWORD>(i), nullptr, &notifications[static_cast<std::size_t>(i)]),
            S_OK);
    }
    for (int i = 0; i < kCount; ++i) {
        const std::wstring key = std::wstring(kKey) + L"\\" + std::to_wstring(i);
        RegistrySetDWORD(HKEY_LOCAL_MACHINE, key.c_str(), kValue, static_cast<DWORD>(1000 + i));
    }
    Numbers numbers = Reported();
    std::sort(numbers.begin(), numbers.end());
    ASSERT_EQ(numbers.size(), std::size_t{kCount});
    for (std::size_t i = 0; i < kCount; ++i) EXPECT_EQ(numbers[i], 1000 + i);
    for (const HREGNOTIFY notify : notifications) EXPECT_EQ(RegistryCloseNotification(notify), S_OK);
    Set(1);
    EXPECT_EQ(Reported(), Numbers{});
}

TEST_F(RegistryNotify, LeavesNoHandleBehind) {
    const auto handles = [] {
        DWORD count = 0;
        GetProcessHandleCount(GetCurrentProcess(), &count);
        return count;
    };
    // Closing the last one ends the worker; the first round makes what stays for good.
    const auto round = [this] {
        ASSERT_EQ(RegistryCloseNotification(m_markerNotify), S_OK);
        Watch();
        ASSERT_EQ(RegistryCloseNotification(m_notify), S_OK);
        m_notify = nullptr;
        ASSERT_EQ(RegistryNotifyWindow(HKEY_LOCAL_MACHINE, kKey, kMarkerValue, m_window.Get(), kMarker, 0,
                                       nullptr, &m_markerNotify),
                  S_OK);
        Reported();
    };
    round();
    const DWORD before = handles();
    for (int i = 0; i < 20; ++i) round();
    EXPECT_LE(handles(), before + 2);
}

TEST_F(RegistryNotify, OutlivesItsWindow) {
    test::TestWindow other;
    HREGNOTIFY notify = nullptr;
    ASSERT_EQ(
        RegistryNotifyWindow(HKEY_LOCAL_MACHINE, kKey, kValue, other.Get(), kChanged, 0, nullptr, &notify),
        S_OK);
    Watch();
    other.Destroy();
    Set(8);
    EXPECT_EQ(Reported(), Numbers{8});
    EXPECT_EQ(RegistryCloseNotification(notify), S_OK);
}

TEST_F(RegistryNotify, RefusesWhatItCannotServe) {
    HREGNOTIFY notify = m_markerNotify;
    EXPECT_EQ(RegistryNotifyWindow(nullptr, kKey, kValue, m_window.Get(), kChanged, 0, nullptr, &notify),
              E_INVALIDARG);
    EXPECT_EQ(notify, nullptr);
    EXPECT_EQ(RegistryNotifyWindow(HKEY_LOCAL_MACHINE, kKey, kValue, nullptr, kChanged, 0, nullptr, &notify),
              E_INVALIDARG);
    EXPECT_EQ(
        RegistryNotifyWindow(HKEY_LOCAL_MACHINE, kKey, kValue, m_window.Get(), kChanged, 0, nullptr, nullptr),
        E_INVALIDARG);
    NOTIFICATIONCONDITION condition = {};
    condition.ctComparisonType = REG_CT_CONTAINS;
    EXPECT_EQ(RegistryNotifyWindow(HKEY_LOCAL_MACHINE, kKey, kValue, m_window.Get(), kChanged, 0, &condition,
                                   &notify),
              E_INVALIDARG);
    condition.ctComparisonType = static_cast<REGISTRYCOMPARISONTYPE>(REG_CT_ANYCHANGE + 1);
    EXPECT_EQ(RegistryNotifyWindow(HKEY_LOCAL_MACHINE, kKey, kValue, m_window.Get(), kChanged, 0, &condition,
                                   &notify),
              E_INVALIDARG);
}

TEST_F(RegistryNotify, IsClosedOnlyOnce) {
    Watch();
    EXPECT_EQ(RegistryCloseNotification(m_notify), S_OK);
    EXPECT_EQ(RegistryCloseNotification(m_notify), E_INVALIDARG);
    EXPECT_EQ(RegistryCloseNotification(nullptr), E_INVALIDARG);
    m_notify = nullptr;
}

}  // namespace
