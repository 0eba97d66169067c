// Power notifications and unattended mode across programs.
#include <gmock/gmock.h>

#include "tests/unit/power/phone_under_test.h"

namespace {

using testing::ElementsAre;

class PowerOfThePhone : public test::PhoneTest {
  protected:
    ~PowerOfThePhone() override { handset::ChangePowerState(L"on"); }
    bool NoticesAre(const std::vector<std::string>& wanted) {
        const bool are = test::WaitFor([&] { return Notices() == wanted; });
        EXPECT_EQ(Notices(), wanted);
        return are;
    }
};

TEST_F(PowerOfThePhone, AChangeFromOutsideReachesAProgramThatListens) {
    StartProgram(L"listen");
    handset::ChangePowerState(handset::kPowerIdle);
    handset::ChangePowerState(handset::kPowerOn);
    EXPECT_TRUE(NoticesAre({"1 00100000 idle", "1 00010000 on"}));
}

TEST_F(PowerOfThePhone, UnattendedModeOfOneProgramCountsForAll) {
    StartProgram(L"hold");
    EXPECT_EQ(handset::UnattendedHolders(), 1u);
    handset::ChangePowerState(handset::kPowerIdle);
    EXPECT_EQ(State(), L"unattended");
}

TEST_F(PowerOfThePhone, AProgramThatEndsLetsGoOfUnattendedMode) {
    StartProgram(L"hold");
    ASSERT_EQ(handset::StateDword(L"UnattendedRequests", 9), 1u);
    KillPrograms();
    EXPECT_TRUE(test::WaitFor([] { return handset::UnattendedHolders() == 0; }));
    EXPECT_EQ(handset::StateDword(L"UnattendedRequests", 9), 0u);
    handset::ChangePowerState(handset::kPowerIdle);
    EXPECT_EQ(State(), L"idle");
}

TEST_F(PowerOfThePhone, AProgramThatEndsNoLongerWantsEveryKey) {
    StartProgram(L"keys");
    EXPECT_TRUE(handset::AllKeysWanted());
    EXPECT_EQ(handset::StateDword(L"AllKeys", 9), 1u);
    KillPrograms();
    EXPECT_TRUE(test::WaitFor([] { return !handset::AllKeysWanted(); }));
    EXPECT_EQ(handset::StateDword(L"AllKeys", 9), 0u);
}

TEST_F(PowerOfThePhone, TheKeyDarkensTheDisplayOfAPhoneThatIsHeldAwakeAndPutsAnotherToSleep) {
    StartProgram(L"hold");
    handset::PressPowerKey();
    EXPECT_EQ(State(), L"unattended");
    handset::PressPowerKey();
    EXPECT_EQ(State(), L"on");
    KillPrograms();
    ASSERT_TRUE(test::WaitFor([] { return handset::UnattendedHolders() == 0; }));
    handset::PressPowerKey();
    EXPECT_EQ(State(), L"suspend");
    handset::PressPowerKey();
    EXPECT_EQ(State(), L"on");
}

TEST_F(PowerOfThePhone, ProgramsThatWereKilledDoNotKeepAnyoneFromListening) {
    for (int i = 0; i < 3; ++i) {
        StartProgram(L"listen hold");
        KillPrograms();
    }
    StartProgram(L"listen");
    handset::ChangePowerState(L"unattended");
    EXPECT_TRUE(NoticesAre({"1 00400000 unattended"}));
}

}  // namespace
