// The switches, through the command line, as the platform's programs find them.
#include "handset/controls/switches.h"

#include <algorithm>

#include "handset/controls/device_registry.h"
#include "handset/controls/handset_clock.h"
#include "handset/controls/telephone.h"
#include "handset/controls/wait.h"
#include "handset/phone/switch_column.h"
#include "handset/state/handset_state.h"
#include "handset/state/power_manager.h"
#include "tests/unit/handset/handset_fixture.h"

namespace panel {
namespace {

using Switches = HandsetTest;

constexpr wchar_t kHardware[] = L"HKLM\\System\\State\\Hardware";
constexpr wchar_t kPhone[] = L"HKLM\\System\\State\\Phone";

using Labels = std::vector<std::wstring>;

// The panel's switches of a group that are lit now.
Labels Lit(const std::wstring& title) {
    const Snapshot now = TakeSnapshot();
    Labels lit;
    for (const SwitchGroup& group : SwitchGroups()) {
        if (group.title != title) continue;
        for (const SwitchRow& row : group.rows) {
            if (row.isOn(now)) lit.emplace_back(row.label);
        }
    }
    return lit;
}

TEST_F(Switches, TheHeadsetIsAValueOfTheDevicesRegistry) {
    EXPECT_EQ(Run({L"headset", L"on"}), kDone);
    EXPECT_EQ(DeviceDword(kHardware, L"Headset", 9), 1u);
    EXPECT_EQ(Run({L"headset", L"off"}), kDone);
    EXPECT_EQ(DeviceDword(kHardware, L"Headset", 9), 0u);
}

TEST_F(Switches, ThePulledCardIsOutUntilItIsInserted) {
    EXPECT_TRUE(handset::StorageCardPresent());
    EXPECT_EQ(Run({L"card", L"out"}), kDone);
    EXPECT_FALSE(handset::StorageCardPresent());
    EXPECT_EQ(Run({L"card", L"in"}), kDone);
    EXPECT_TRUE(handset::StorageCardPresent());
}

TEST_F(Switches, EveryPowerStateCanBeSetAndMostDarkenTheDisplay) {
    for (const handset::PowerStateRow& row : handset::PowerStates()) {
        EXPECT_EQ(Run({L"power", row.name}), kDone);
        EXPECT_EQ(PowerState(), row.name);
        const std::wstring name = row.name;
        EXPECT_EQ(DisplayLit(), name == L"on" || name == L"useridle" || name == L"backlightoff");
    }
}

TEST_F(Switches, TheDisplayIsSwitchedOffAsAProgramOrThePowerKeyDoesIt) {
    EXPECT_EQ(Run({L"power", L"off"}), kDone);
    EXPECT_EQ(PowerState(), L"idle");
    EXPECT_EQ(Run({L"power", L"key"}), kDone);
    EXPECT_EQ(PowerState(), L"on");
    EXPECT_EQ(Run({L"power", L"key"}), kDone);
    EXPECT_EQ(PowerState(), L"suspend");
    EXPECT_TRUE(PhoneSleeps());
}

TEST_F(Switches, ACallWakesASleepingPhone) {
    for (const wchar_t* call : {L"incoming", L"outgoing"}) {
        Run({L"power", L"suspend"});
        EXPECT_EQ(Run({L"call", call}), kDone);
        EXPECT_EQ(PowerState(), L"on");
    }
}

TEST_F(Switches, TurningTheScreenExchangesItsSides) {
    EXPECT_EQ(Run({L"orientation", L"landscape"}), kDone);
    EXPECT_EQ(handset::StateDword(L"ScreenWidth", 0), 320u);
    EXPECT_EQ(handset::StateDword(L"ScreenHeight", 0), 240u);
    EXPECT_EQ(Run({L"orientation", L"landscape"}), kDone);
    EXPECT_EQ(handset::StateDword(L"ScreenWidth", 0), 320u);
    EXPECT_EQ(Run({L"orientation", L"portrait"}), kDone);
    EXPECT_EQ(handset::StateDword(L"ScreenWidth", 0), 240u);
    EXPECT_EQ(handset::StateDword(L"ScreenHeight", 0), 320u);
}

TEST_F(Switches, AScreenOfOtherPixelsKeepsThemWhenItIsTurned) {
    EXPECT_EQ(Run({L"orientation", L"480x640"}), kDone);
    EXPECT_EQ(Run({L"orientation", L"landscape"}), kDone);
    EXPECT_EQ(handset::StateDword(L"ScreenWidth", 0), 640u);
    EXPECT_EQ(handset::StateDword(L"ScreenHeight", 0), 480u);
}

TEST_F(Switches, AnyScreenBecomesTheUsualOneAgain) {
    EXPECT_EQ(Run({L"orientation", L"640x480"}), kDone);
    EXPECT_EQ(Run({L"orientation", L"usual"}), kDone);
    EXPECT_EQ(handset::StateDword(L"ScreenWidth", 0), 240u);
    EXPECT_EQ(handset::StateDword(L"ScreenHeight", 0), 320u);
}

TEST_F(Switches, BluetoothBitsAreKept) {
    EXPECT_EQ(Run({L"bluetooth", L"0x19"}), kDone);
    EXPECT_EQ(BluetoothBits(), 0x19u);
    EXPECT_EQ(DeviceDword(kHardware, L"Bluetooth", 0), 0x19u);
}

TEST_F(Switches, TheSignalLimitIsAStateValueUntilItIsNormalAgain) {
    EXPECT_EQ(Run({L"signal", L"12"}), kDone);
    EXPECT_EQ(handset::StateDword(L"SignalLimit", 99), 12u);
    EXPECT_EQ(handset::StateDword(L"SignalLimitChannel", 99), 0u);
    EXPECT_EQ(Run({L"signal", L"normal"}), kDone);
    EXPECT_FALSE(handset::StateQword(L"SignalLimit").has_value());
    EXPECT_EQ(Run({L"signal", L"normal"}), kDone);
}

TEST_F(Switches, TheSignalLimitMayBeForOneStation) {
    EXPECT_EQ(Run({L"signal", L"12", L"98.5"}), kDone);
    EXPECT_EQ(handset::StateDword(L"SignalLimitChannel", 0), 9850u);
    handset::SetStateDword(L"TunedChannel", 10110);
    EXPECT_EQ(Run({L"signal", L"9", L"tuned"}), kDone);
    EXPECT_EQ(handset::StateDword(L"SignalLimitChannel", 0), 10110u);
    EXPECT_EQ(handset::StateDword(L"SignalLimit", 99), 9u);
    Run({L"status"});
    EXPECT_NE(console_.Said().find(L"Signal        no better than 9 at 101.1\n"), std::wstring::npos);
    EXPECT_EQ(Run({L"signal", L"normal"}), kDone);
    EXPECT_FALSE(SignalLimit().has_value());
}

TEST_F(Switches, EveryOperationOfTheTunerMayBeToldToCrash) {
    EXPECT_EQ(Run({L"fault", L"crash:GetSignal", L"crash:GetPTYText", L"power-notify"}), kDone);
    EXPECT_TRUE(handset::FaultInjected(L"crash:GetPTYText"));
    EXPECT_EQ(Run({L"fault", L"crash:GetSignals"}), kBadUsage);
    EXPECT_TRUE(handset::FaultInjected(L"power-notify"));
}

TEST_F(Switches, AFaultMayBeGivenWithHowOftenItComes) {
    EXPECT_EQ(Run({L"fault", L"seek", L"suspend:12"}), kDone);
    EXPECT_EQ(handset::FaultCount(L"suspend"), 12u);
    EXPECT_EQ(Run({L"fault", L"suspend"}), kDone);
    EXPECT_EQ(handset::FaultCount(L"suspend"), 1u);
    EXPECT_EQ(handset::FaultCount(L"seek"), 0u);
    for (const wchar_t* wrong : {L"suspend:", L"suspend:x", L"suspend:-1", L"seek:2"})
        EXPECT_EQ(Run({L"fault", wrong}), kBadUsage) << wrong;
    EXPECT_EQ(handset::FaultCount(L"suspend"), 1u);
}

TEST_F(Switches, FaultsReplaceThoseBeforeAndNoneTakesThemAway) {
    EXPECT_EQ(Run({L"fault", L"seek", L"database-write"}), kDone);
    EXPECT_TRUE(handset::FaultInjected(L"seek"));
    EXPECT_TRUE(handset::FaultInjected(L"database-write"));
    EXPECT_EQ(Run({L"fault", L"create"}), kDone);
    EXPECT_FALSE(handset::FaultInjected(L"seek"));
    EXPECT_TRUE(handset::FaultInjected(L"create"));
    EXPECT_EQ(Run({L"fault", L"none"}), kDone);
    EXPECT_FALSE(handset::FaultInjected(L"create"));
}

TEST_F(Switches, ACallRingsIsAnsweredAndEnds) {
    EXPECT_EQ(Run({L"call", L"incoming", L"+44 20 7946 0018"}), kDone);
    EXPECT_EQ(DeviceDword(kPhone, L"Status", 0), 0x00010000u);
    EXPECT_EQ(DeviceString(kPhone, L"Caller Number", L""), L"+44 20 7946 0018");
    EXPECT_EQ(Run({L"call", L"talk"}), kDone);
    EXPECT_EQ(DeviceDword(kPhone, L"Status", 0), 0x20000000u);
    EXPECT_EQ(DeviceString(kPhone, L"Caller Number", L""), L"+44 20 7946 0018");
    EXPECT_EQ(Run({L"call", L"hangup"}), kDone);
    EXPECT_EQ(DeviceDword(kPhone, L"Status", 9), 0u);
    EXPECT_FALSE(GetDeviceValue(kPhone, L"Caller Number").has_value());
}

TEST_F(Switches, ACallIsLitAsWhatItIsFromItsFirstRingToItsEnd) {
    EXPECT_EQ(Lit(L"TELEPHONE"), Labels{});
    Run({L"call", L"incoming"});
    EXPECT_EQ(Lit(L"TELEPHONE"), Labels{L"Incoming call"});
    Run({L"call", L"talk"});
    EXPECT_EQ(Lit(L"TELEPHONE"), Labels{L"Talk"});
    Run({L"call", L"hangup"});
    EXPECT_EQ(Lit(L"TELEPHONE"), Labels{});
    Run({L"call", L"outgoing", L"112"});
    EXPECT_EQ(Lit(L"TELEPHONE"), Labels{L"Dial a number"});
    Run({L"call", L"outgoing"});
    EXPECT_EQ(Lit(L"TELEPHONE"), Labels{L"Start to dial"});
}

TEST_F(Switches, TheClockSpeedThatIsLitIsTheOneThatRuns) {
    for (const int rate : {1, 10, 60, 600}) {
        EXPECT_EQ(Run({L"clock", std::to_wstring(rate)}), kDone);
        EXPECT_EQ(Lit(L"CLOCK SPEED"), Labels{std::to_wstring(rate)});
        const handset::LocalSeconds begun = LocalNow();
        const std::uint64_t begun_ms = GetTickCount64();
        ASSERT_TRUE(WaitUntil([&] { return LocalNow() - begun >= std::max(3, 2 * rate); }, 60000));
        const double runs =
            static_cast<double>(LocalNow() - begun) * 1000 / static_cast<double>(GetTickCount64() - begun_ms);
        EXPECT_GT(runs, rate * 0.5) << rate;
        EXPECT_LT(runs, rate * 2.0) << rate;
    }
    // What no switch stands for lights none.
    EXPECT_EQ(Run({L"clock", L"30"}), kDone);
    EXPECT_EQ(Lit(L"CLOCK SPEED"), Labels{});
}

TEST_F(Switches, AnOutgoingCallWithoutANumberPublishesNone) {
    EXPECT_EQ(Run({L"call", L"outgoing", L"112"}), kDone);
    EXPECT_EQ(DeviceString(kPhone, L"Caller Number", L""), L"112");
    EXPECT_EQ(Run({L"call", L"outgoing"}), kDone);
    EXPECT_EQ(DeviceDword(kPhone, L"Status", 0), 0x00020000u);
    EXPECT_FALSE(GetDeviceValue(kPhone, L"Caller Number").has_value());
}

TEST_F(Switches, OtherBitsOfThePhoneStatusStayAsTheyAre) {
    SetDeviceDword(kPhone, L"Status", 0x00000105);
    EXPECT_EQ(Run({L"call", L"incoming"}), kDone);
    EXPECT_EQ(PhoneStatus(), 0x00010105u);
    EXPECT_EQ(Run({L"call", L"hangup"}), kDone);
    EXPECT_EQ(PhoneStatus(), 0x00000105u);
}

TEST_F(Switches, TheStatusShowsWhatWasSwitched) {
    Run({L"headset", L"on"});
    Run({L"card", L"out"});
    Run({L"power", L"unattended"});
    Run({L"orientation", L"landscape"});
    Run({L"call", L"outgoing", L"112"});
    Run({L"bluetooth", L"9"});
    Run({L"signal", L"20"});
    Run({L"fault", L"seek"});
    EXPECT_EQ(Run({L"status"}), kDone);
    for (const wchar_t* line : {L"Radio         not running\n", L"Headset       on\n", L"Storage card  out\n",
                                L"Power         unattended\n", L"Screen        320x240\n",
                                L"Telephone     outgoing (0x20000), number 112\n", L"Bluetooth     0x9\n",
                                L"Signal        no better than 20\n", L"Faults        seek\n"}) {
        EXPECT_NE(console_.Said().find(line), std::wstring::npos)
            << testing::PrintToString(std::wstring(line));
    }
    Run({L"power", L"suspend"});
    EXPECT_EQ(Run({L"status"}), kDone);
    EXPECT_NE(console_.Said().find(L"Power         suspend (asleep)\n"), std::wstring::npos);
}

}  // namespace
}  // namespace panel
