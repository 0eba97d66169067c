// The power manager in its simple form.
#include <gtest/gtest.h>
#include <windows.h>

#include "handset_fixture.h"

using Power = HandsetTest;

namespace {

struct State {
    DWORD result;
    wchar_t name[100];
    DWORD flags;
};

State Current() {
    State state{ERROR_SUCCESS, L"", 0};
    state.result = GetSystemPowerState(state.name, 100, &state.flags);
    return state;
}

void ExpectState(const wchar_t* name, DWORD flags) {
    const State state = Current();
    EXPECT_EQ(state.result, static_cast<DWORD>(ERROR_SUCCESS));
    EXPECT_STREQ(state.name, name);
    EXPECT_EQ(state.flags, flags);
}

}  // namespace

TEST_F(Power, IsOnUnlessTheStateSaysOtherwise) {
    ExpectState(L"on", POWER_STATE_ON);
    SetState(L"KORA_POWERSTATE", L"unattended");
    ExpectState(L"unattended", POWER_STATE_UNATTENDED);
}

TEST_F(Power, IsSetByFlagsOrByName) {
    EXPECT_EQ(SetSystemPowerState(nullptr, POWER_STATE_IDLE, 0), static_cast<DWORD>(ERROR_SUCCESS));
    ExpectState(L"idle", POWER_STATE_IDLE);
    EXPECT_EQ(SetSystemPowerState(L"unattended", 0, 0), static_cast<DWORD>(ERROR_SUCCESS));
    ExpectState(L"unattended", POWER_STATE_UNATTENDED);
    EXPECT_EQ(SetSystemPowerState(nullptr, POWER_STATE_ON, 0), static_cast<DWORD>(ERROR_SUCCESS));
    ExpectState(L"on", POWER_STATE_ON);
}

TEST_F(Power, AStateThatDoesNotExistIsRefused) {
    EXPECT_EQ(SetSystemPowerState(L"no such state", 0, 0), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    EXPECT_EQ(SetSystemPowerState(nullptr, 0x12345, 0), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    ExpectState(L"on", POWER_STATE_ON);
}

TEST_F(Power, TheNameMustFit) {
    wchar_t name[3];
    DWORD flags = 0;
    EXPECT_EQ(GetSystemPowerState(name, 2, &flags), static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
    EXPECT_EQ(GetSystemPowerState(name, 3, &flags), static_cast<DWORD>(ERROR_SUCCESS));
    EXPECT_EQ(GetSystemPowerState(nullptr, 3, &flags), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    EXPECT_EQ(GetSystemPowerState(name, 3, nullptr), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
}

TEST_F(Power, AllKeysIsRecordedInTheState) {
    EXPECT_TRUE(AllKeys(TRUE));
    EXPECT_EQ(StateDword(L"AllKeys", 9), 1u);
    EXPECT_TRUE(AllKeys(FALSE));
    EXPECT_EQ(StateDword(L"AllKeys", 9), 0u);
}

TEST_F(Power, ResetsOfTheIdleTimerAreCounted) {
    SystemIdleTimerReset();
    SystemIdleTimerReset();
    EXPECT_EQ(StateDword(L"IdleTimerResets", 0), 2u);
}

TEST_F(Power, RequestsForUnattendedModeAreCounted) {
    EXPECT_TRUE(PowerPolicyNotify(PPN_UNATTENDEDMODE, TRUE));
    EXPECT_TRUE(PowerPolicyNotify(PPN_UNATTENDEDMODE, TRUE));
    EXPECT_TRUE(PowerPolicyNotify(PPN_UNATTENDEDMODE, FALSE));
    EXPECT_EQ(StateDword(L"UnattendedRequests", 9), 1u);
    EXPECT_TRUE(PowerPolicyNotify(PPN_UNATTENDEDMODE, FALSE));
    EXPECT_TRUE(PowerPolicyNotify(PPN_UNATTENDEDMODE, FALSE));
    EXPECT_EQ(StateDword(L"UnattendedRequests", 9), 0u);
    EXPECT_FALSE(PowerPolicyNotify(77, TRUE));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
}
