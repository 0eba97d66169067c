// The radio and the telephone.
#include "shell/phone_calls.h"

#include "skin/skin_access.h"
#include "tests/support/device_settings.h"
#include "tests/unit/tuner/tuner_test.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr DWORD kIncoming = 0x00010000;
constexpr DWORD kCalling = 0x00020000;
constexpr DWORD kTalking = 0x20000000;

constexpr char kIncomingTrace[] = "FM: 1.dwRegKeyMask & SN_PHONEINCOMINGCALL_BITMASK\r\n";
constexpr char kCallingTrace[] = "FM: 2.SN_PHONECALLCALLING_BITMASK & dwRegKeyMask\r\n";
constexpr char kOverTrace[] = "FM: 3.(dwRegKeyMask & SN_PHONECALLTALKING_BITMASK)\r\n";
constexpr char kMuteTrace[] = "FM: Mute Sound................m_BTInUse: 0\r\n";
constexpr char kUnmuteTrace[] = "FM: UnMute Sound................m_BTInUse: 0\r\n";

class PhoneCalls : public TunerTest {
  protected:
    std::string TraceOfStatus(DWORD status) {
        return test::TraceOf([&] { OnPhoneChanged(*state, window, status); });
    }
    void PublishNumber(const WCHAR* number) const {
        RegistrySetString(HKEY_LOCAL_MACHINE, L"System\\State\\Phone", L"Caller Number", number);
    }
    // The posted request to the record button, taken out.
    bool TakeStopRequest() {
        MSG message;
        return PeekMessageW(&message, window, WM_SKIN_CLICK, WM_SKIN_CLICK, PM_REMOVE) != FALSE &&
               message.wParam == SKIN_RECORD && message.lParam == 0;
    }
    void StartRecording() {
        state->m_bRecording = TRUE;
        SetButtonFrame(state->m_skin, SKIN_RECORD, 2);
    }
    int RecordFrame() const {
        int frame = -1;
        GetButtonFrame(state->m_skin, SKIN_RECORD, &frame);
        return frame;
    }
    test::DeviceSettings settings;
};

TEST_F(PhoneCalls, AnIncomingCallMutesOnce) {
    EXPECT_EQ(TraceOfStatus(kIncoming), std::string(kIncomingTrace) + kMuteTrace);
    EXPECT_EQ(state->m_bMutedByCall, TRUE);
    EXPECT_EQ(TraceOfStatus(kIncoming), kIncomingTrace);
    EXPECT_THAT(device.Calls(), ElementsAre("SetMute 1"));
}

TEST_F(PhoneCalls, WithoutATunerACallIsNotedAndSwitchesNothing) {
    state->m_BTInUse = TRUE;
    g_app.pFMDevice = nullptr;
    OnPhoneChanged(*state, window, kIncoming);
    EXPECT_EQ(state->m_bMutedByCall, TRUE);
    OnPhoneChanged(*state, window, 0);
    EXPECT_EQ(state->m_bMutedByCall, FALSE);
    EXPECT_THAT(device.Calls(), IsEmpty());
}

TEST_F(PhoneCalls, ARingThatTurnsIntoACallKeepsTheRadioMutedUntilAStatusWithoutTheTalkingBit) {
    OnPhoneChanged(*state, window, kIncoming);
    EXPECT_EQ(TraceOfStatus(kIncoming | kTalking), kIncomingTrace);
    EXPECT_EQ(TraceOfStatus(kTalking), "");
    EXPECT_THAT(device.Calls(), ElementsAre("SetMute 1"));
    EXPECT_EQ(state->m_bMutedByCall, TRUE);
    EXPECT_EQ(TraceOfStatus(0), std::string(kOverTrace) + kUnmuteTrace);
    EXPECT_EQ(state->m_bMutedByCall, FALSE);
}

TEST_F(PhoneCalls, TheUnmutePulsesTheMuteFor100msAndAppliesTheMuteToggleAgain) {
    OnPhoneChanged(*state, window, kIncoming);
    device.ForgetCalls();
    OnPhoneChanged(*state, window, 0);
    // The last one is the toggle, which stands at off.
    EXPECT_THAT(device.Calls(), ElementsAre("SetMute 1", "SetMute 0", "SetMute 0"));
    const auto calls = device.TimedCalls();
    EXPECT_GE(calls[1].at - calls[0].at, std::chrono::milliseconds(98));
}

TEST_F(PhoneCalls, ARadioThatTheUserHadMutedIsMutedAgainAfterTheCall) {
    ClickToggle(SKIN_MUTE, 2);
    OnPhoneChanged(*state, window, kIncoming);
    OnPhoneChanged(*state, window, 0);
    EXPECT_EQ(device.Calls().back(), "SetMute 1");
}

TEST_F(PhoneCalls, AnOutgoingCallWhoseNumberIsNotPublishedDoesNotMuteAndClearsTheFlag) {
    state->m_bMutedByCall = TRUE;
    EXPECT_EQ(TraceOfStatus(kCalling), std::string(kCallingTrace) + "FM: No Caller Number\r\n");
    EXPECT_EQ(state->m_bMutedByCall, FALSE);
    EXPECT_THAT(device.Calls(), IsEmpty());
}

TEST_F(PhoneCalls, AnOutgoingCallWithANumberMutesOnceAndTracesTheNumber) {
    PublishNumber(L"+49 30 1234");
    const std::string numbered = std::string(kCallingTrace) + "FM: ### Caller Number +49 30 1234\r\n";
    EXPECT_EQ(TraceOfStatus(kCalling), numbered + kMuteTrace);
    EXPECT_EQ(TraceOfStatus(kCalling), numbered);
    EXPECT_EQ(state->m_bMutedByCall, TRUE);
    EXPECT_THAT(device.Calls(), ElementsAre("SetMute 1"));
}

TEST_F(PhoneCalls, ANumberThatDoesNotFitInto100BytesIsNotRead) {
    PublishNumber(std::wstring(49, L'1').c_str());
    EXPECT_THAT(TraceOfStatus(kCalling), testing::HasSubstr("FM: ### Caller Number 111"));
    PublishNumber(std::wstring(50, L'1').c_str());
    EXPECT_EQ(TraceOfStatus(kCalling), std::string(kCallingTrace) + "FM: No Caller Number\r\n");
}

TEST_F(PhoneCalls, AnIncomingCallGoesBeforeAnOutgoingOneAndBothBeforeItsEnd) {
    EXPECT_EQ(TraceOfStatus(kIncoming | kCalling), std::string(kIncomingTrace) + kMuteTrace);
    EXPECT_EQ(TraceOfStatus(kCalling | kTalking), std::string(kCallingTrace) + "FM: No Caller Number\r\n");
}

TEST_F(PhoneCalls, AStatusWithTheTalkingBitAloneChangesNothing) {
    EXPECT_EQ(TraceOfStatus(kTalking), "");
    EXPECT_EQ(TraceOfStatus(kTalking | 0x1), "");
    EXPECT_THAT(device.Calls(), IsEmpty());
}

TEST_F(PhoneCalls, TheEndOfACallThatMutedNothingUnmutesNothing) {
    EXPECT_EQ(TraceOfStatus(0), kOverTrace);
    EXPECT_THAT(device.Calls(), IsEmpty());
}

TEST_F(PhoneCalls, ARecordingIsStoppedWhenACallComesInAndNotStartedAgain) {
    StartRecording();
    const auto start = std::chrono::steady_clock::now();
    OnPhoneChanged(*state, window, kIncoming);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(98));
    EXPECT_EQ(RecordFrame(), 0);
    EXPECT_TRUE(TakeStopRequest());
    state->m_bRecording = FALSE;
    OnPhoneChanged(*state, window, 0);
    EXPECT_FALSE(TakeStopRequest());
}

TEST_F(PhoneCalls, WithoutARecordingNoneIsStopped) {
    OnPhoneChanged(*state, window, kIncoming);
    EXPECT_FALSE(TakeStopRequest());
}

TEST_F(PhoneCalls, ARecordingIsStoppedByAnOutgoingCallEvenWhenTheRadioIsAlreadyMuted) {
    PublishNumber(L"1234");
    OnPhoneChanged(*state, window, kIncoming);
    StartRecording();
    OnPhoneChanged(*state, window, kIncoming);
    EXPECT_FALSE(TakeStopRequest());
    OnPhoneChanged(*state, window, kCalling);
    EXPECT_TRUE(TakeStopRequest());
}

TEST_F(PhoneCalls, ABluetoothRouteIsTakenAwayForTheCallAndGivenBackASecondAfterIt) {
    state->m_BTInUse = TRUE;
    EXPECT_EQ(TraceOfStatus(kIncoming),
              std::string(kIncomingTrace) + "FM: Mute Sound................m_BTInUse: 1\r\n");
    EXPECT_THAT(device.Calls(), ElementsAre("SetBTAudio 0", "SetMute 1"));
    device.ForgetCalls();
    EXPECT_EQ(TraceOfStatus(0), std::string(kOverTrace) + "FM: UnMute Sound................m_BTInUse: 1\r\n");
    EXPECT_THAT(device.Calls(),
                ElementsAre("SetMute 1", "SetMute 0", "SetBTAudio 1", "SetMute 0", "SetBTAudio 1"));
    const auto calls = device.TimedCalls();
    EXPECT_GE(calls[2].at - calls[1].at, std::chrono::milliseconds(990));
}

}  // namespace
