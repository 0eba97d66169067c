// The radio with the display dark: the phone stays awake for it, and gets its sleep back at the end.
#include <algorithm>
#include <cstdlib>

#include "tests/system/radio_test.h"

namespace {

using test::Radio;
using test::WaitFor;
using testing::HasSubstr;
using testing::Not;

constexpr wchar_t kScreenOffKey[] = L"HKLM\\System\\CurrentControlSet\\Control\\Power\\State\\ScreenOff";
constexpr char kReset[] = "FM: SystemIdleTimerReset...";

class Power : public test::RadioTest {
  protected:
    // Handset milliseconds at which the trace says that the idle timer was reset.
    std::vector<unsigned long> Resets() const {
        std::vector<unsigned long> resets;
        for (const std::string& line : test::Lines(handset.Trace())) {
            if (line.rfind(kReset, 0) == 0)
                resets.push_back(std::strtoul(line.c_str() + sizeof kReset - 1, nullptr, 10));
        }
        return resets;
    }
    static std::string Handset(const std::wstring& arguments) {
        std::string said;
        test::RunProgram(L"handset.exe", arguments, &said);
        return said;
    }
    // What the command line says about the value; it fails when there is none.
    static bool DeviceLevelIsSet() {
        std::string said;
        return test::RunProgram(L"handset.exe", std::wstring(L"reg get ") + kScreenOffKey + L" att1:",
                                &said) == 0 &&
               said.find('4') != std::string::npos;
    }
    void ExpectRadioPlaysOn(const Radio& radio) const {
        EXPECT_TRUE(WaitForRounds(3));
        radio.Type("875");
        EXPECT_TRUE(WaitForCall("SetChannel 8750 -> 0"));
        PostMessageW(radio.Window(), WM_CLOSE, 0, 0);
        EXPECT_TRUE(radio.WaitUntilGone());
        EXPECT_EQ(radio.ExitCode(), 0u);
    }
};

TEST_F(Power, SwitchedOffByReturnTheIdleTimerIsResetEvery15SecondsUntilTheDisplayIsOn) {
    NEEDS_THE_SIMULATED_BAND("two and a half minutes, which pass on a fast clock alone");
    SetClockRate(100);
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Key(VK_RETURN);
    ASSERT_TRUE(
        WaitForTrace("FM: Power Notification Message: PBT_TRANSITION\n"
                     "FM: SystemPowerState: unattended\n"
                     "FM: Power ......unattended...\n"));
    ASSERT_TRUE(WaitFor([&] { return Resets().size() >= 6; }));
    const auto resets = Resets();
    unsigned long shortest = ~0UL;
    for (std::size_t i = 1; i < resets.size(); ++i) {
        EXPECT_GE(resets[i] - resets[i - 1], 14900u);
        shortest = std::min(shortest, resets[i] - resets[i - 1]);
    }
    EXPECT_LT(shortest, 20000u) << "each was late: a loaded machine delays some, not all";
    EXPECT_THAT(Handset(L"status"), HasSubstr("unattended"));

    radio.Key(VK_RETURN);
    ASSERT_TRUE(
        WaitForTrace("FM: Power Notification Message: PBT_TRANSITION\n"
                     "FM: SystemPowerState: on\n"
                     "FM: Power ......ON.....\n"));
    const std::size_t after = Resets().size();
    // 60 s of the handset at the least.
    ASSERT_TRUE(WaitForRounds(60));
    EXPECT_EQ(Resets().size(), after);
}

TEST_F(Power, TheDevicesLevelIsThereWhileTheRadioRunsAndGoneAfterIt) {
    Radio radio(handset);
    radio.WaitUntilShown();
    EXPECT_TRUE(WaitFor(DeviceLevelIsSet));
    PostMessageW(radio.Window(), WM_CLOSE, 0, 0);
    ASSERT_TRUE(radio.WaitUntilGone());
    EXPECT_FALSE(DeviceLevelIsSet());
}

TEST_F(Power, AQueueThatCannotBeMadeIsTracedAndTheRadioPlaysOn) {
    handset.SetState(L"Fault", L"msgqueue");
    Radio radio(handset);
    radio.WaitUntilShown();
    EXPECT_TRUE(WaitForTrace("FM: CreateMsgQueue failed: e\n"));
    ExpectRadioPlaysOn(radio);
}

TEST_F(Power, RefusedNotificationsAreTracedAndTheRadioPlaysOn) {
    handset.SetState(L"Fault", L"power-notify");
    Radio radio(handset);
    radio.WaitUntilShown();
    EXPECT_TRUE(WaitForTrace("FM: RequestPowerNotifications failed: 5\n"));
    ExpectRadioPlaysOn(radio);
}

TEST_F(Power, AKeyWithoutRightsIsPassedOverAndTheRadioPlaysOn) {
    handset.SetState(L"Fault", L"registry-rights");
    Radio radio(handset);
    radio.WaitUntilShown();
    ASSERT_TRUE(WaitForRounds(1));
    EXPECT_FALSE(DeviceLevelIsSet());
    radio.Key(VK_RETURN);
    EXPECT_TRUE(WaitForTrace("FM: Power ......unattended...\n"));
    radio.Key(VK_RETURN);
    EXPECT_TRUE(WaitForTrace("FM: Power ......ON.....\n"));
    ExpectRadioPlaysOn(radio);
}

}  // namespace
