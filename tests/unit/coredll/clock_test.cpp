// The handset's clock. The suite holds at any rate; it is run again in programs of its own at higher ones.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>
#include <string>

#include "handset/coredll/platform_call.h"
#include "handset_fixture.h"

namespace {

// What a busy machine may add to a real pause.
constexpr std::uint64_t kLate_ms = 3000;

DWORD Rate() {
    wchar_t value[16] = L"";
    return GetEnvironmentVariableW(L"KORA_CLOCKRATE", value, 16) != 0 ? std::stoul(value) : 1;
}

std::uint64_t SystemTimeMilliseconds() {
    SYSTEMTIME time;
    GetSystemTime(&time);
    FILETIME ticks;
    SystemTimeToFileTime(&time, &ticks);
    return (static_cast<std::uint64_t>(ticks.dwHighDateTime) << 32 | ticks.dwLowDateTime) / 10000;
}

// The suite "Clock" in a program of its own, at another rate. Gives its exit code.
DWORD RunClockTestsAt(const wchar_t* rate) {
    wchar_t program[MAX_PATH];
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    SetEnvironmentVariableW(L"KORA_CLOCKRATE", rate);
    wchar_t arguments[] = L"--gtest_filter=Clock.*";
    PROCESS_INFORMATION process{};
    const BOOL started =
        CreateProcessW(program, arguments, nullptr, nullptr, FALSE, 0, nullptr, nullptr, nullptr, &process);
    SetEnvironmentVariableW(L"KORA_CLOCKRATE", nullptr);
    if (!started) return GetLastError() | 0x80000000;
    DWORD code = STILL_ACTIVE;
    WaitForSingleObject(process.hProcess, 60000);
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return code;
}

}  // namespace

TEST(Clock, RunsAtTheRateOfTheState) {
    EXPECT_EQ(HandsetClockRate(), Rate());
}

TEST(Clock, TicksKeepPaceWithTheRate) {
    const std::uint64_t outerBegin = RealMilliseconds();
    const DWORD begin = GetTickCount();
    const std::uint64_t innerBegin = RealMilliseconds();
    RealPause(100);
    const std::uint64_t innerEnd = RealMilliseconds();
    const DWORD passed = GetTickCount() - begin;
    const std::uint64_t outerEnd = RealMilliseconds();
    EXPECT_GE(passed, (innerEnd - innerBegin - 1) * Rate());
    EXPECT_LE(passed, (outerEnd - outerBegin + 1) * Rate());
}

TEST(Clock, SleepTakesItsTimeOnTheHandset) {
    const std::uint64_t realBegin = RealMilliseconds();
    const DWORD begin = GetTickCount();
    Sleep(50 * Rate());
    EXPECT_GE(GetTickCount() - begin + Rate(), 50 * Rate());
    EXPECT_LT(RealMilliseconds() - realBegin, 50 + kLate_ms);
}

TEST(Clock, WaitsTimeOutOnTheHandset) {
    const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    const std::uint64_t realBegin = RealMilliseconds();
    const DWORD begin = GetTickCount();
    EXPECT_EQ(WaitForSingleObject(event, 30 * Rate()), static_cast<DWORD>(WAIT_TIMEOUT));
    EXPECT_EQ(WaitForMultipleObjects(1, &event, FALSE, 30 * Rate()), static_cast<DWORD>(WAIT_TIMEOUT));
    EXPECT_EQ(MsgWaitForMultipleObjectsEx(1, &event, 30 * Rate(), 0, 0), static_cast<DWORD>(WAIT_TIMEOUT));
    EXPECT_GE(GetTickCount() - begin + 3 * Rate(), 90 * Rate());
    EXPECT_LT(RealMilliseconds() - realBegin, 90 + kLate_ms);
    CloseHandle(event);
}

TEST(Clock, AReadOfAnEmptyQueueTimesOutOnTheHandset) {
    MSGQUEUEOPTIONS options = {sizeof options, MSGQUEUE_ALLOW_BROKEN, 1, 4, TRUE};
    const HANDLE queue = CreateMsgQueue(nullptr, &options);
    const std::uint64_t realBegin = RealMilliseconds();
    const DWORD begin = GetTickCount();
    char buffer[4];
    DWORD size = 0;
    EXPECT_FALSE(ReadMsgQueue(queue, buffer, sizeof buffer, &size, 150 * Rate(), nullptr));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_TIMEOUT));
    // The host counts this time in ticks of up to 16 ms.
    EXPECT_GE(GetTickCount() - begin + 17 * Rate(), 150 * Rate());
    EXPECT_LT(RealMilliseconds() - realBegin, 150 + kLate_ms);
    EXPECT_TRUE(CloseMsgQueue(queue));
}

TEST(Clock, TimeoutsOfNothingAndOfEverKeepTheirMeaning) {
    EXPECT_EQ(HandsetRealTimeout(0), 0u);
    EXPECT_EQ(HandsetRealTimeout(1), 1u);
    EXPECT_EQ(HandsetRealTimeout(INFINITE), INFINITE);
    EXPECT_EQ(HandsetRealTimeout(7200 * 1000), 7200 * 1000 / Rate());
}

TEST(Clock, DateAndTimeKeepPaceWithTheTicks) {
    const DWORD begin = GetTickCount();
    const std::uint64_t timeBegin = SystemTimeMilliseconds();
    RealPause(100);
    const std::uint64_t timePassed = SystemTimeMilliseconds() - timeBegin;
    const DWORD passed = GetTickCount() - begin;
    EXPECT_GE(timePassed + kLate_ms * Rate(), passed);
    EXPECT_LE(timePassed, passed + 20 * Rate());
}

TEST(ClockRates, EverythingHoldsAt60) {
    EXPECT_EQ(RunClockTestsAt(L"60"), 0u);
}
TEST(ClockRates, EverythingHoldsAt3600) {
    EXPECT_EQ(RunClockTestsAt(L"3600"), 0u);
}

TEST(Waits, TheDeviceRefusesToWaitForAllObjects) {
    const HANDLE event = CreateEventW(nullptr, TRUE, TRUE, nullptr);
    EXPECT_EQ(WaitForMultipleObjects(1, &event, TRUE, 0), WAIT_FAILED);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    CloseHandle(event);
}

using WallClock = HandsetTest;

TEST_F(WallClock, GoesOnFromTheTimeThatIsSet) {
    SYSTEMTIME set{};
    set.wYear = 2009;
    set.wMonth = 6;
    set.wDay = 15;
    set.wHour = 12;
    ASSERT_TRUE(SetLocalTime(&set));
    SYSTEMTIME now;
    GetLocalTime(&now);
    EXPECT_EQ(now.wYear, 2009);
    EXPECT_EQ(now.wMonth, 6);
    EXPECT_EQ(now.wDay, 15);
    EXPECT_EQ(now.wHour, 12);
    EXPECT_EQ(now.wMinute, 0);
}

TEST_F(WallClock, IsSharedByEveryProcessThroughTheState) {
    FILETIME real;
    GetSystemTimeAsFileTime(&real);
    SYSTEMTIME moment{};
    moment.wYear = 2031;
    moment.wMonth = 2;
    moment.wDay = 3;
    FILETIME handset;
    SystemTimeToFileTime(&moment, &handset);
    RegSetKeyValueW(HKEY_CURRENT_USER, stateKey().c_str(), L"ClockBaseReal", REG_QWORD, &real, sizeof real);
    RegSetKeyValueW(HKEY_CURRENT_USER, stateKey().c_str(), L"ClockBaseHandset", REG_QWORD, &handset,
                    sizeof handset);
    SYSTEMTIME now;
    GetSystemTime(&now);
    EXPECT_EQ(now.wYear, 2031);
    EXPECT_EQ(now.wMonth, 2);
    EXPECT_EQ(now.wDay, 3);
}

TEST_F(WallClock, RefusesADayThatDoesNotExist) {
    SYSTEMTIME set{};
    set.wYear = 2009;
    set.wMonth = 13;
    set.wDay = 1;
    EXPECT_FALSE(SetSystemTime(&set));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
}

TEST_F(WallClock, FollowsTheTimeZonesRulesForTheDateThatItShows) {
    const wchar_t zone[] = L"W. Europe Standard Time";
    RegSetKeyValueW(HKEY_CURRENT_USER, stateKey().c_str(), L"TimeZone", REG_SZ, zone, sizeof zone);
    for (const auto& [month, ahead] : {std::pair<WORD, WORD>{1, 1}, {7, 2}}) {
        SYSTEMTIME set{};
        set.wYear = 2027;
        set.wMonth = month;
        set.wDay = 15;
        set.wHour = 12;
        ASSERT_TRUE(SetLocalTime(&set));
        SYSTEMTIME local, universal;
        GetLocalTime(&local);
        GetSystemTime(&universal);
        EXPECT_EQ(local.wHour, 12) << month;
        EXPECT_EQ(universal.wHour, 12 - ahead) << month;
    }
}
