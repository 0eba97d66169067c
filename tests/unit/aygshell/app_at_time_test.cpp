// RunAppAtTimeEx and StopAppAtTimeEx: bookings that stay until they are taken back.
#include <gtest/gtest.h>

#include <atomic>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "handset/include/aygshell.h"
#include "handset/include/regext.h"
#include "tests/unit/aygshell/test_handset.h"

namespace {

constexpr wchar_t kBookings[] = L"System\\Notifications";
constexpr wchar_t kProgram[] = L"\\Windows\\UI.exe";
constexpr wchar_t kLine[] = L"-Rec -Channel 8750 -Duration 60";

SYSTEMTIME Monday() {
    SYSTEMTIME time = {};
    time.wYear = 2026;
    time.wMonth = 11;
    time.wDay = 23;
    time.wHour = 10;
    time.wDayOfWeek = 1;
    return time;
}

class AppAtTime : public ::testing::Test {
  protected:
    std::wstring Book(SYSTEMTIME time = Monday(), DWORD repeat = RUNAPP_EVERY_WEEK) {
        wchar_t name[50] = L"before";
        EXPECT_EQ(RunAppAtTimeEx(kProgram, kLine, &time, repeat, name, 50), S_OK);
        return name;
    }
    static std::wstring Stored(const std::wstring& name, const wchar_t* value) {
        wchar_t text[128] = L"(none)";
        RegistryGetString(HKEY_LOCAL_MACHINE, (kBookings + (L"\\" + name)).c_str(), value, text, 128);
        return text;
    }
    static bool IsStored(const std::wstring& name) { return Stored(name, L"Start") != L"(none)"; }

    test::TestHandset m_handset;
};

TEST_F(AppAtTime, ABookingIsKeptWithAllThatItTakesToServeIt) {
    const std::wstring name = Book();
    EXPECT_GE(name.size(), 20u);
    EXPECT_EQ(Stored(name, L"Application"), kProgram);
    EXPECT_EQ(Stored(name, L"CommandLine"), kLine);
    EXPECT_EQ(Stored(name, L"Start"), L"2026-11-23 10:00:00");
    EXPECT_EQ(Stored(name, L"Started"), L"(none)");
    DWORD repeat = 0;
    EXPECT_EQ(RegistryGetDWORD(HKEY_LOCAL_MACHINE, (kBookings + (L"\\" + name)).c_str(), L"Repeat", &repeat),
              S_OK);
    EXPECT_EQ(repeat, 2u);
}

TEST_F(AppAtTime, ANameIsNeverGivenTwice) {
    std::set<std::wstring> names;
    for (int i = 0; i < 5; ++i) {
        const std::wstring name = Book();
        EXPECT_TRUE(names.insert(name).second);
        EXPECT_EQ(StopAppAtTimeEx(name.c_str()), S_OK);
    }
}

TEST_F(AppAtTime, ALostNumberLeadsToNoNameThatIsInUse) {
    const std::wstring first = Book();
    const std::wstring second = Book();
    EXPECT_EQ(RegistrySetDWORD(HKEY_LOCAL_MACHINE, kBookings, L"LastNumber", 0), S_OK);
    const std::wstring third = Book();
    EXPECT_NE(third, first);
    EXPECT_NE(third, second);
    EXPECT_TRUE(IsStored(first) && IsStored(second) && IsStored(third));
}

TEST_F(AppAtTime, NamesGoOnWhenTheKeyOfTheBookingsIsDeleted) {
    const std::wstring first = Book();
    const std::wstring second = Book();
    ASSERT_EQ(StopAppAtTimeEx(first.c_str()), S_OK);
    ASSERT_EQ(StopAppAtTimeEx(second.c_str()), S_OK);
    ASSERT_EQ(RegDeleteKeyW(HKEY_LOCAL_MACHINE, kBookings), ERROR_SUCCESS);
    const std::wstring third = Book();
    EXPECT_GT(third, second);
    // Who still knows the old ones takes back nothing.
    EXPECT_EQ(StopAppAtTimeEx(first.c_str()), E_FAIL);
    EXPECT_TRUE(IsStored(third));
}

TEST_F(AppAtTime, OneThatIsTakenBackIsGoneAndTheOthersStay) {
    const std::wstring first = Book();
    const std::wstring second = Book();
    EXPECT_EQ(StopAppAtTimeEx(first.c_str()), S_OK);
    EXPECT_FALSE(IsStored(first));
    EXPECT_TRUE(IsStored(second));
    EXPECT_EQ(StopAppAtTimeEx(first.c_str()), E_FAIL);
}

TEST_F(AppAtTime, OnlyANameOfABookingTakesOneBack) {
    const std::wstring name = Book();
    EXPECT_EQ(StopAppAtTimeEx(nullptr), E_INVALIDARG);
    for (const wchar_t* wrong : {L"", L"Selected", L"\\", L".", L"RunAppAtTime-9999999999"}) {
        EXPECT_EQ(StopAppAtTimeEx(wrong), E_FAIL) << testing::PrintToString(std::wstring(wrong));
    }
    EXPECT_EQ(StopAppAtTimeEx((L"..\\Notifications\\" + name).c_str()), E_FAIL);
    EXPECT_TRUE(IsStored(name));
}

TEST_F(AppAtTime, WhatCannotBeServedIsRefusedAndLeavesNoName) {
    wchar_t name[50] = L"before";
    SYSTEMTIME time = Monday();
    const auto refused = [&](HRESULT result) {
        EXPECT_EQ(result, E_INVALIDARG);
        EXPECT_STREQ(name, L"");
        name[0] = L'x';
    };
    refused(RunAppAtTimeEx(nullptr, kLine, &time, 2, name, 50));
    refused(RunAppAtTimeEx(kProgram, kLine, nullptr, 2, name, 50));
    refused(RunAppAtTimeEx(kProgram, kLine, &time, 3, name, 50));
    time.wDay = 31;
    refused(RunAppAtTimeEx(kProgram, kLine, &time, 2, name, 50));
    time = Monday();
    time.wHour = 24;
    refused(RunAppAtTimeEx(kProgram, kLine, &time, 2, name, 50));
    time = Monday();
    EXPECT_EQ(RunAppAtTimeEx(kProgram, kLine, &time, 2, nullptr, 50), E_INVALIDARG);
    EXPECT_EQ(RunAppAtTimeEx(kProgram, kLine, &time, 2, name, 10),
              HRESULT_FROM_WIN32(ERROR_INSUFFICIENT_BUFFER));
    EXPECT_EQ(RunAppAtTimeEx(kProgram, kLine, &time, 2, name, 0),
              HRESULT_FROM_WIN32(ERROR_INSUFFICIENT_BUFFER));
    HKEY key = nullptr;
    EXPECT_NE(RegOpenKeyExW(HKEY_CURRENT_USER, (m_handset.HostKey(L"HKLM") + L"\\" + kBookings).c_str(), 0,
                            KEY_READ, &key),
              ERROR_SUCCESS);
}

TEST_F(AppAtTime, ACommandLineMayBeLeftOut) {
    wchar_t name[50] = L"";
    SYSTEMTIME time = Monday();
    EXPECT_EQ(RunAppAtTimeEx(kProgram, nullptr, &time, RUNAPP_ONCE, name, 50), S_OK);
    EXPECT_EQ(Stored(name, L"CommandLine"), L"");
}

TEST_F(AppAtTime, ThreadsThatBookAtTheSameTimeGetNamesOfTheirOwn) {
    constexpr int kThreads = 4, kEach = 10;
    std::vector<std::wstring> names(kThreads * kEach);
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&, thread] {
            for (int i = 0; i < kEach; ++i) names[static_cast<std::size_t>(thread * kEach + i)] = Book();
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(std::set<std::wstring>(names.begin(), names.end()).size(), names.size());
    for (const std::wstring& name : names) EXPECT_TRUE(IsStored(name));
}

}  // namespace
