// The telephone, Bluetooth and the RDS dialogs, as the platform and the stylus bring them about.
#include "resources/resource_ids.h"
#include "tests/system/radio_test.h"

namespace {

using test::Radio;
using test::WaitFor;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr wchar_t kPhoneKey[] = L"HKLM\\System\\State\\Phone";
constexpr std::uint32_t kIncoming = 0x00010000;
constexpr std::uint32_t kCalling = 0x00020000;
constexpr std::uint32_t kTalking = 0x20000000;

class Telephone : public test::RadioTest {
  protected:
    void Status(std::uint32_t bits) const { handset.SetRegistry(kPhoneKey, L"Status", bits); }
};

TEST_F(Telephone, ACallThatComesInIsAnsweredAndEndsMutesAndUnmutesTheRadio) {
    Radio radio(handset);
    radio.WaitUntilShown();
    ASSERT_TRUE(WaitForCall("GetVolume -> 0: 50"));
    const std::size_t before = handset.TunerCalls().size();
    Status(kIncoming);
    ASSERT_TRUE(
        WaitForTrace("FM: 1.dwRegKeyMask & SN_PHONEINCOMINGCALL_BITMASK\r\n"
                     "FM: Mute Sound................m_BTInUse: 0\r\n"));
    Status(kTalking);
    ASSERT_TRUE(WaitForRounds(2));
    EXPECT_THAT(TunerCommands(before), ElementsAre("SetMute 1 -> 0"));
    Status(0);
    ASSERT_TRUE(
        WaitForTrace("FM: 3.(dwRegKeyMask & SN_PHONECALLTALKING_BITMASK)\r\n"
                     "FM: UnMute Sound................m_BTInUse: 0\r\n"));
    ASSERT_TRUE(WaitFor([&] { return TunerCommands(before).size() == 4; }));
    EXPECT_THAT(TunerCommands(before),
                ElementsAre("SetMute 1 -> 0", "SetMute 1 -> 0", "SetMute 0 -> 0", "SetMute 0 -> 0"));
}

TEST_F(Telephone, AnOutgoingCallMutesOnceItsNumberIsPublished) {
    Radio radio(handset);
    radio.WaitUntilShown();
    ASSERT_TRUE(WaitForCall("GetVolume -> 0: 50"));
    const std::size_t before = handset.TunerCalls().size();
    Status(kCalling);
    ASSERT_TRUE(WaitForTrace("FM: 2.SN_PHONECALLCALLING_BITMASK & dwRegKeyMask\r\nFM: No Caller Number\r\n"));
    EXPECT_TRUE(TunerCommands(before).empty());
    handset.SetRegistry(kPhoneKey, L"Caller Number", L"+49 30 1234");
    Status(kCalling | 1);
    ASSERT_TRUE(
        WaitForTrace("FM: ### Caller Number +49 30 1234\r\n"
                     "FM: Mute Sound................m_BTInUse: 0\r\n"));
    EXPECT_TRUE(WaitFor([&] { return TunerCommands(before).size() == 1; }));
}

TEST_F(Telephone, TheCommandLineRingsAndHangsUp) {
    Radio radio(handset);
    radio.WaitUntilShown();
    EXPECT_EQ(test::RunProgram(L"handset.exe", L"call incoming"), 0u);
    EXPECT_TRUE(WaitForTrace("FM: Mute Sound................m_BTInUse: 0\r\n"));
    EXPECT_EQ(test::RunProgram(L"handset.exe", L"call hangup"), 0u);
    EXPECT_TRUE(WaitForTrace("FM: UnMute Sound................m_BTInUse: 0\r\n"));
}

TEST_F(Telephone, BluetoothStatesAreTracedAndChangeNoSoundPath) {
    Radio radio(handset);
    radio.WaitUntilShown();
    ASSERT_TRUE(WaitForCall("GetVolume -> 0: 50"));
    const std::size_t before = handset.TunerCalls().size();
    radio.Send(0xA402, 0x1 | 0x8 | 0x10);
    EXPECT_THAT(handset.Trace(),
                HasSubstr("FM: *****BlueToothStatusNotify\nFM: BT Connecting.............."));
    EXPECT_TRUE(TunerCommands(before).empty());
}

TEST_F(Telephone, TheRDSButtonOpensTheInformation) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Type("985");
    ASSERT_TRUE(WaitForCall("SetChannel 9850 -> 0"));
    ASSERT_TRUE(WaitForCall("GetRDSData -> 0: 0 KORA ONE"));
    ASSERT_TRUE(WaitForCall("GetRDSData -> 0: 1 Good morning"));
    PostMessageW(radio.Window(), 0x8003, SKIN_RDS_INFORMATION, 0);
    const HWND dialog = radio.WaitForBox(nullptr);
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(
        WaitForTrace("rds_inf.b_RDS_AF: 0\nrds_inf.b_RDS_CT: 0\nrds_inf.b_RDS_PS: 1\n"
                     "rds_inf.b_RDS_PTY: 1\nrds_inf.b_RDS_RT: 1\n"));
    EXPECT_THAT(radio.BoxText(dialog), HasSubstr(L"FM 98.5 MHz"));
    PostMessageW(dialog, WM_COMMAND, IDOK, 0);
    EXPECT_TRUE(WaitFor([&] { return radio.Box(nullptr) == nullptr; }));
}

TEST_F(Telephone, TheAFButtonListsAndMeasuresTheFrequencies) {
    handset.WriteBand(
        "[9850]\nlevel=45\nps=KORA ONE\naf=101.1 103.4\n[10110]\nlevel=30\n[10340]\nlevel=50\n");
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Type("985");
    ASSERT_TRUE(WaitForCall("SetChannel 9850 -> 0"));
    ASSERT_TRUE(WaitForAlternatives("KORA ONE"));
    PostMessageW(radio.Window(), 0x8003, SKIN_AF_LIST, 0);
    const HWND dialog = radio.WaitForBox(nullptr);
    ASSERT_NE(dialog, nullptr);
    const std::size_t before = handset.TunerCalls().size();
    PostMessageW(dialog, WM_COMMAND, IDC_AF_MEASURE, 0);
    ASSERT_TRUE(WaitFor([&] { return Count(handset.TunerCalls(), "SetMute 0 -> 0") == 2; }));
    EXPECT_THAT(TunerCommands(before),
                ElementsAre("SetMute 1 -> 0", "SetChannel 10110 -> 0", "SetChannel 10340 -> 0",
                            "SetChannel 9850 -> 0", "SetMute 0 -> 0"));
    PostMessageW(dialog, WM_COMMAND, IDC_AF_CLOSE, 0);
    EXPECT_TRUE(WaitFor([&] { return radio.Box(nullptr) == nullptr; }));
    EXPECT_TRUE(WaitForRounds(2));
}

}  // namespace
