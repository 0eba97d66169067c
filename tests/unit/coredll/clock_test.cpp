// The handset's clock. The suite holds at any rate; it is run again in programs of its own at higher ones.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>
#include <string>

#include "handset/coredll/kernel/platform_call.h"
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
    wchar_t arguments[] = L"--gtest_filter=Clock.*:ClockThatWasSet.*";
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

// The handset showed this time when the host's clock was so much ahead of now; at rate 1 from there on.
void WriteMomentOf(const std::wstring& stateKey, const SYSTEMTIME& shown, int ahead_s) {
    FILETIME real, handset;
    GetSystemTimeAsFileTime(&real);
    SystemTimeToFileTime(&shown, &handset);
    const auto ticks = [](const FILETIME& time) {
        return static_cast<std::uint64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
    };
    const std::uint64_t moment[] = {ticks(real) + ahead_s * 10000000ull, ticks(handset), 1};
    RegSetKeyValueW(HKEY_CURRENT_USER, stateKey.c_str(), L"ClockMoment", REG_BINARY, moment, sizeof moment);
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

// The ticks that pass around a stretch of the date and time and within it are its bounds; each clock counts
// whole milliseconds of the handset, and the host's date may go in steps of 16 ms.
void ExpectDateKeepsPaceWithTheTicks() {
    const DWORD outerBegin = GetTickCount();
    const std::uint64_t timeBegin = SystemTimeMilliseconds();
    const DWORD innerBegin = GetTickCount();
    RealPause(200);
    const DWORD innerEnd = GetTickCount();
    const std::uint64_t timeEnd = SystemTimeMilliseconds();
    const DWORD outerEnd = GetTickCount();
    const std::uint64_t step = 17 * Rate() + 1;
    EXPECT_GE(timeEnd - timeBegin + step, innerEnd - innerBegin);
    EXPECT_LE(timeEnd - timeBegin, outerEnd - outerBegin + step);
}

TEST(Clock, DateAndTimeKeepPaceWithTheTicks) {
    ExpectDateKeepsPaceWithTheTicks();
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

// Run at higher rates as well, see above.
using ClockThatWasSet = HandsetTest;
using WallClock = HandsetTest;

TEST_F(ClockThatWasSet, KeepsPaceWithTheTicks) {
    SYSTEMTIME set{};
    set.wYear = 2009;
    set.wMonth = 6;
    set.wDay = 15;
    ASSERT_TRUE(SetSystemTime(&set));
    ExpectDateKeepsPaceWithTheTicks();
    SYSTEMTIME now;
    GetSystemTime(&now);
    EXPECT_EQ(now.wYear, 2009);
}

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
    SYSTEMTIME moment{};
    moment.wYear = 2031;
    moment.wMonth = 2;
    moment.wDay = 3;
    WriteMomentOf(stateKey(), moment, 0);
    SYSTEMTIME now;
    GetSystemTime(&now);
    EXPECT_EQ(now.wYear, 2031);
    EXPECT_EQ(now.wMonth, 2);
    EXPECT_EQ(now.wDay, 3);
}

// The host showed an hour more when the clock was set.
TEST_F(WallClock, GoesBackWithAHostWhoseClockIsSetBack) {
    SYSTEMTIME moment{};
    moment.wYear = 2031;
    moment.wMonth = 2;
    moment.wDay = 3;
    moment.wHour = 12;
    WriteMomentOf(stateKey(), moment, 3600);
    SYSTEMTIME now;
    GetSystemTime(&now);
    EXPECT_EQ(now.wDay, 3);
    EXPECT_EQ(now.wHour, 11);
    EXPECT_EQ(now.wMinute, 0);
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
