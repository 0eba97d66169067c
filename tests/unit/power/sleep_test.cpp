// The suspended phone holds its programs.
#include "tests/unit/power/phone_under_test.h"

namespace {

class SleepingPhone : public test::PhoneTest {
  protected:
    ~SleepingPhone() override { handset::ChangePowerState(L"on"); }
};

TEST_F(SleepingPhone, AProgramIsHeldUntilThePhoneIsWoken) {
    StartProgram(L"");
    handset::ChangePowerState(L"suspend");
    EXPECT_TRUE(StandsStill());
    handset::WakePhone();
    EXPECT_EQ(State(), L"on");
    EXPECT_TRUE(Works());
}

TEST_F(SleepingPhone, EveryThreadOfEveryProgramIsHeld) {
    StartProgram(L"wait");
    StartProgram(L"");
    for (int i = 0; i < 3; ++i) {
        handset::ChangePowerState(L"suspend");
        EXPECT_TRUE(StandsStill());
        handset::ChangePowerState(L"on");
        EXPECT_TRUE(Works());
    }
}

TEST_F(SleepingPhone, AProgramIsToldOfTheSleepAndOfTheEndOfIt) {
    StartProgram(L"listen");
    handset::ChangePowerState(L"suspend");
    EXPECT_TRUE(StandsStill());
    handset::WakePhone();
    const std::vector<std::string> wanted = {"1 00200000 suspend", "2 00010000 ", "1 00010000 on"};
    EXPECT_TRUE(test::WaitFor([&] { return Notices() == wanted; }));
    EXPECT_EQ(Notices(), wanted);
}

TEST_F(SleepingPhone, APhoneThatIsAwakeIsNotWoken) {
    handset::ChangePowerState(handset::kPowerIdle);
    handset::WakePhone();
    EXPECT_EQ(State(), L"idle");
}

// Its threads are woken one after the other; the first may end the program before the last is.
TEST_F(SleepingPhone, AProgramThatEndsWhileItIsWokenEnds) {
    for (int i = 0; i < 3; ++i) StartProgram(L"leave");
    handset::ChangePowerState(L"suspend");
    EXPECT_TRUE(StandsStill());
    PutFile(L"leave.txt");
    handset::WakePhone();
    EXPECT_TRUE(ProgramsEnd());
}

TEST_F(SleepingPhone, AProgramThatIsKilledInItsSleepIsNoHindrance) {
    StartProgram(L"listen hold");
    handset::ChangePowerState(L"suspend");
    EXPECT_TRUE(StandsStill());
    KillPrograms();
    handset::WakePhone();
    StartProgram(L"");
    EXPECT_TRUE(Works());
}

}  // namespace
