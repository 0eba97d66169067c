// The power manager through the device's calls.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstddef>
#include <string>

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

TEST_F(Power, AnOffDisplayIsUnattendedWhileAProgramHoldsThatMode) {
    ASSERT_TRUE(PowerPolicyNotify(PPN_UNATTENDEDMODE, TRUE));
    EXPECT_EQ(SetSystemPowerState(nullptr, POWER_STATE_IDLE, 0), static_cast<DWORD>(ERROR_SUCCESS));
    ExpectState(L"unattended", POWER_STATE_IDLE | POWER_STATE_UNATTENDED);
    // By its name it is that state alone.
    SetSystemPowerState(L"unattended", 0, 0);
    ExpectState(L"unattended", POWER_STATE_UNATTENDED);
    SetSystemPowerState(nullptr, POWER_STATE_ON, 0);
    ExpectState(L"on", POWER_STATE_ON);
    PowerPolicyNotify(PPN_UNATTENDEDMODE, FALSE);
    SetSystemPowerState(nullptr, POWER_STATE_IDLE, 0);
    ExpectState(L"idle", POWER_STATE_IDLE);
    SetSystemPowerState(nullptr, POWER_STATE_ON, 0);
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

namespace {

// The queue and the request as the radio makes them.
class PowerNotices : public Power {
  protected:
    PowerNotices() {
        MSGQUEUEOPTIONS options = {sizeof options, MSGQUEUE_NOPRECOMMIT, 4, 536, TRUE};
        queue_ = CreateMsgQueue(nullptr, &options);
        notices_ = RequestPowerNotifications(queue_, PBT_TRANSITION);
    }
    ~PowerNotices() override {
        if (notices_ != nullptr) StopPowerNotifications(notices_);
        CloseMsgQueue(queue_);
        SetSystemPowerState(nullptr, POWER_STATE_ON, 0);
    }
    // The next notice as "kind flags name"; "none" when there is none.
    std::string Next() {
        alignas(POWER_BROADCAST) unsigned char buffer[536];
        DWORD size = 0;
        DWORD flags = 0;
        if (!ReadMsgQueue(queue_, buffer, sizeof buffer, &size, 0, &flags)) return "none";
        const auto* notice = reinterpret_cast<const POWER_BROADCAST*>(buffer);
        const std::wstring name = notice->SystemPowerState;
        EXPECT_EQ(notice->Length, name.size() * sizeof(WCHAR));
        EXPECT_EQ(size, offsetof(POWER_BROADCAST, SystemPowerState) + notice->Length + sizeof(WCHAR));
        char text[32];
        snprintf(text, sizeof text, "%lu %08lx ", notice->Message, notice->Flags);
        return text + std::string(name.begin(), name.end());
    }

    HANDLE queue_;
    HANDLE notices_;
};

}  // namespace

TEST_F(PowerNotices, EveryNewStateIsToldOnceInItsOrder) {
    ASSERT_NE(notices_, nullptr);
    SetSystemPowerState(nullptr, POWER_STATE_IDLE, 0);
    SetSystemPowerState(nullptr, POWER_STATE_IDLE, 0);
    SetSystemPowerState(nullptr, POWER_STATE_ON, 0);
    EXPECT_EQ(WaitForSingleObject(queue_, 0), static_cast<DWORD>(WAIT_OBJECT_0));
    EXPECT_EQ(Next(), "1 00100000 idle");
    EXPECT_EQ(Next(), "1 00010000 on");
    EXPECT_EQ(Next(), "none");
    EXPECT_EQ(WaitForSingleObject(queue_, 0), static_cast<DWORD>(WAIT_TIMEOUT));
}

TEST_F(PowerNotices, AnOffDisplayIsToldAsUnattendedWhileThatModeIsHeld) {
    PowerPolicyNotify(PPN_UNATTENDEDMODE, TRUE);
    SetSystemPowerState(nullptr, POWER_STATE_IDLE, 0);
    PowerPolicyNotify(PPN_UNATTENDEDMODE, FALSE);
    EXPECT_EQ(Next(), "1 00500000 unattended");
    EXPECT_EQ(Next(), "none");
}

TEST_F(PowerNotices, ADarkPhoneIsUnattendedFromTheRequestOn) {
    SetSystemPowerState(nullptr, POWER_STATE_IDLE, 0);
    PowerPolicyNotify(PPN_UNATTENDEDMODE, TRUE);
    PowerPolicyNotify(PPN_UNATTENDEDMODE, FALSE);
    EXPECT_EQ(Next(), "1 00100000 idle");
    EXPECT_EQ(Next(), "1 00500000 unattended");
    EXPECT_EQ(Next(), "none");
}

TEST_F(PowerNotices, TheFirstProgramThatHoldsAnUnattendedPhoneIsToldOfTheStateThatItFinds) {
    SetSystemPowerState(L"unattended", 0, 0);
    EXPECT_EQ(Next(), "1 00400000 unattended");
    PowerPolicyNotify(PPN_UNATTENDEDMODE, TRUE);
    PowerPolicyNotify(PPN_UNATTENDEDMODE, TRUE);
    EXPECT_EQ(Next(), "1 00400000 unattended");
    EXPECT_EQ(Next(), "none");
    for (int hold = 0; hold < 2; ++hold) PowerPolicyNotify(PPN_UNATTENDEDMODE, FALSE);
}

TEST_F(PowerNotices, AFullQueueLosesWhatComesLater) {
    for (int i = 0; i < 3; ++i) {
        SetSystemPowerState(nullptr, POWER_STATE_IDLE, 0);
        SetSystemPowerState(nullptr, POWER_STATE_ON, 0);
    }
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(Next(), "1 00100000 idle");
        EXPECT_EQ(Next(), "1 00010000 on");
    }
    EXPECT_EQ(Next(), "none");
}

TEST_F(PowerNotices, NothingIsToldAfterTheyAreStopped) {
    EXPECT_EQ(StopPowerNotifications(notices_), static_cast<DWORD>(ERROR_SUCCESS));
    EXPECT_EQ(StopPowerNotifications(notices_), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    notices_ = nullptr;
    SetSystemPowerState(nullptr, POWER_STATE_IDLE, 0);
    EXPECT_EQ(Next(), "none");
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_PIPE_NOT_CONNECTED));
}

TEST_F(PowerNotices, OnlyAnEndToReadWillDo) {
    MSGQUEUEOPTIONS options = {sizeof options, 0, 0, 0, FALSE};
    const HANDLE writer = OpenMsgQueue(GetCurrentProcess(), queue_, &options);
    for (const HANDLE queue : {writer, static_cast<HANDLE>(nullptr)}) {
        EXPECT_EQ(RequestPowerNotifications(queue, PBT_TRANSITION), nullptr);
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_HANDLE));
    }
    EXPECT_EQ(RequestPowerNotifications(queue_, 0), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    CloseMsgQueue(writer);
}

TEST_F(PowerNotices, TheFaultRefusesThem) {
    SetState(L"KORA_FAULT", L"power-notify");
    EXPECT_EQ(RequestPowerNotifications(queue_, PBT_TRANSITION), nullptr);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ACCESS_DENIED));
    SetState(L"KORA_FAULT", L"");
}

TEST_F(Power, TheFaultLetsThePowerKeysBeReadOnly) {
    constexpr wchar_t kKey[] = L"\\System\\CurrentControlSet\\Control\\Power\\State\\ScreenOff";
    HKEY key = nullptr;
    ASSERT_EQ(
        RegCreateKeyExW(HKEY_LOCAL_MACHINE, kKey, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr),
        ERROR_SUCCESS);
    RegCloseKey(key);
    SetState(L"KORA_FAULT", L"registry-rights");
    EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, kKey, 0, KEY_ALL_ACCESS, &key), ERROR_ACCESS_DENIED);
    EXPECT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, kKey, 0, KEY_READ, &key), ERROR_SUCCESS);
    RegCloseKey(key);
    SetState(L"KORA_FAULT", L"");
}
