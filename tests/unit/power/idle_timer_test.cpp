// The idle timer: what darkens the display and puts the phone to sleep when nobody minds.
#include <algorithm>

#include "tests/unit/power/phone_under_test.h"

namespace {

// Counts end after a real second at the soonest.
constexpr ULONGLONG kCount_ms = handset::kShortestCount_ms;

class IdlePhone : public test::PhoneTest {
  protected:
    IdlePhone() {
        SetTimeout(handset::kSuspendValue, 1);
        SetTimeout(handset::kUserIdleValue, 0);
    }
    ~IdlePhone() override { handset::ChangePowerState(L"on"); }
    static bool Becomes(const std::wstring& state) {
        return test::WaitFor([&] { return State() == state; });
    }
};

TEST_F(IdlePhone, AnUnattendedPhoneThatNobodyKeepsAwakeFallsAsleep) {
    StartProgram(L"hold");
    const ULONGLONG began = GetTickCount64();
    handset::ChangePowerState(handset::kPowerIdle);
    ASSERT_EQ(State(), L"unattended");
    EXPECT_TRUE(Becomes(L"suspend"));
    // The host's ticks are 16 ms apart.
    EXPECT_GE(GetTickCount64() - began + 16, kCount_ms);
    EXPECT_TRUE(StandsStill());
}

TEST_F(IdlePhone, ResetsKeepItAwake) {
    StartProgram(L"hold reset");
    handset::ChangePowerState(handset::kPowerIdle);
    const ULONGLONG end = GetTickCount64() + 3 * kCount_ms;
    EXPECT_FALSE(test::WaitFor([&] { return State() != L"unattended" || GetTickCount64() >= end; }) &&
                 State() != L"unattended");
    EXPECT_TRUE(Works());
    KillPrograms();
    StartProgram(L"");
    EXPECT_TRUE(Becomes(L"suspend"));
}

TEST_F(IdlePhone, ADarkDisplayWithoutUnattendedModeEndsInSleepAsWell) {
    StartProgram(L"");
    handset::ChangePowerState(handset::kPowerIdle);
    ASSERT_EQ(State(), L"idle");
    EXPECT_TRUE(Becomes(L"suspend"));
}

TEST_F(IdlePhone, APhoneThatIsHeldAwakeIsUnattendedFirstWhateverItsStateIsCalled) {
    StartProgram(L"hold listen");
    handset::ChangePowerState(L"screenoff");
    const std::vector<std::string> wanted = {"1 00100000 screenoff", "1 00500000 unattended",
                                             "1 00200000 suspend"};
    EXPECT_TRUE(Becomes(L"suspend"));
    handset::WakePhone();
    EXPECT_TRUE(test::WaitFor([&] { return Notices().size() >= wanted.size(); }));
    const auto notices = Notices();
    EXPECT_TRUE(std::equal(wanted.begin(), wanted.end(), notices.begin()));
}

TEST_F(IdlePhone, ALitDisplayStaysLitUnlessTheRegistryLimitsIt) {
    StartProgram(L"hold reset");
    EXPECT_EQ(State(), L"on");
    SetTimeout(handset::kUserIdleValue, 1);
    // Programs read the registry when something changes or a count ends.
    handset::ChangePowerState(L"useridle");
    handset::ChangePowerState(L"on");
    EXPECT_TRUE(Becomes(L"unattended"));
}

TEST_F(IdlePhone, AKeyKeepsTheDisplayLit) {
    StartProgram(L"hold reset");
    SetTimeout(handset::kUserIdleValue, 2);
    handset::ChangePowerState(L"useridle");
    handset::ChangePowerState(L"on");
    const ULONGLONG end = GetTickCount64() + 3000;
    EXPECT_TRUE(test::WaitFor([&] {
        handset::NoteUserActivity();
        return State() != L"on" || GetTickCount64() >= end;
    }));
    EXPECT_EQ(State(), L"on");
    EXPECT_TRUE(Becomes(L"unattended"));
}

TEST_F(IdlePhone, ZeroSecondsAreNever) {
    SetTimeout(handset::kSuspendValue, 0);
    StartProgram(L"");
    handset::ChangePowerState(handset::kPowerIdle);
    EXPECT_EQ(handset::StepIdleTimer(), INFINITE);
}

TEST_F(IdlePhone, TheCountRunsOnTheHandsetsClockButNeverInAnInstant) {
    SetTimeout(handset::kSuspendValue, 600);
    handset::SetStateDword(L"ClockRate", 100);
    handset::ChangePowerState(handset::kPowerIdle);
    EXPECT_NEAR(handset::StepIdleTimer(), 6000, 500);
    handset::SetStateDword(L"ClockRate", 3600);
    EXPECT_NEAR(handset::StepIdleTimer(), kCount_ms, 500);
}

}  // namespace
