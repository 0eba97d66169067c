// The clock's rate changes while programs run.
#include <map>
#include <set>
#include <sstream>

#include "handset/state/handset_clock.h"
#include "tests/unit/power/phone_under_test.h"

namespace {

constexpr std::uint32_t kHours_s = 4 * 3600;
const std::set<std::string> kWays = {"call", "input", "object", "objects", "queue", "sleep", "timer"};

class RunningPrograms : public test::PhoneTest {
  protected:
    // How long each way of waiting took, in the handset's seconds.
    std::map<std::string, std::uint32_t> Waited() const {
        std::map<std::string, std::uint32_t> waited;
        for (const std::string& line : LinesOf(L"hours.txt")) {
            std::istringstream words(line);
            std::string way;
            words >> way >> waited[way];
        }
        return waited;
    }
    // Nobody came too early. One that had been given its real time once and for all would have.
    void ExpectAllToComeInTime() {
        std::set<std::string> came;
        test::WaitFor([&] {
            for (const auto& [way, seconds] : Waited()) came.insert(way);
            return came == kWays;
        });
        EXPECT_EQ(came, kWays);
        for (const auto& [way, seconds] : Waited()) EXPECT_GE(seconds, kHours_s - 1) << way;
    }
    static void LetPass(ULONGLONG real_ms) {
        const ULONGLONG end = GetTickCount64() + real_ms;
        EXPECT_TRUE(test::WaitFor([end] { return GetTickCount64() >= end; }));
    }
};

TEST_F(RunningPrograms, WhoWaitsForHoursIsThereInSecondsOnceTheClockGoesFast) {
    StartProgram(L"hours");
    EXPECT_TRUE(Waited().empty());
    ASSERT_TRUE(handset::SetClockRate(3600));
    ExpectAllToComeInTime();
}

// Four hours are four seconds at first.
TEST_F(RunningPrograms, WhoWaitsOnAFastClockWaitsOnWhenItGoesSlow) {
    ASSERT_TRUE(handset::SetClockRate(3600));
    StartProgram(L"hours");
    ASSERT_TRUE(handset::SetClockRate(1));
    LetPass(5000);
    ASSERT_TRUE(handset::SetClockRate(3600));
    ExpectAllToComeInTime();
}

TEST_F(RunningPrograms, ARateThatTheServiceTakesOverReachesThemAsWell) {
    StartProgram(L"hours");
    handset::SetStateDword(L"ClockRate", 3600);
    ASSERT_TRUE(handset::FixClock());
    ExpectAllToComeInTime();
}

TEST_F(RunningPrograms, ResetTheClockGoesAtThePaceOfLife) {
    ASSERT_TRUE(handset::SetClockRate(3600));
    StartProgram(L"hours");
    ASSERT_TRUE(handset::ResetClock());
    LetPass(5000);
    ASSERT_TRUE(handset::SetClockRate(3600));
    ExpectAllToComeInTime();
}

TEST_F(RunningPrograms, AnIdleCountThatIsUnderWayGoesOnAtTheNewRate) {
    SetTimeout(handset::kSuspendValue, 20000);
    ASSERT_TRUE(handset::SetClockRate(1000));
    handset::ChangePowerState(handset::kPowerIdle);
    LetPass(3000);
    ASSERT_TRUE(handset::SetClockRate(100));
    // What is left of it, not all of it again but for these three seconds.
    const DWORD left_ms = handset::StepIdleTimer();
    EXPECT_LE(left_ms, 170000u);
    EXPECT_GT(left_ms, 1000u);
}

}  // namespace
