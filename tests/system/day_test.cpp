// A day in the life of the radio, on a fast clock: what it asked of the tuner and what it traced, line by
// line.
#include "resources/resource_ids.h"
#include "tests/system/radio_test.h"

namespace {

using test::Radio;
using test::WaitFor;
using testing::ElementsAre;

constexpr wchar_t kPhoneKey[] = L"HKLM\\System\\State\\Phone";
constexpr std::uint32_t kIncoming = 0x00010000;
constexpr std::uint32_t kCalling = 0x00020000;
constexpr std::uint32_t kTalking = 0x20000000;
constexpr std::uint32_t kHour_s = 3600;
constexpr std::uint32_t kClockRate = 300;

std::string Band(int level) {
    return "[9850]\nlevel=" + std::to_string(level) +
           "\nstereo=1\nps=KORA ONE\npty=News\nrt=Good morning\naf=101.1 103.4\n"
           "[10110]\nlevel=30\nps=KORA ONE\naf=98.5 103.4\n[10340]\nlevel=50\nps=KORA ONE\naf=98.5 101.1\n";
}

// Each part of the day gives the lines that it brought about.
class Day : public test::RadioTest {
  protected:
    // Lines of the trace and calls of the tuner since the last look, without those that come again and again
    // by the clock: queries, and the lines of timers and of the signal.
    std::vector<std::string> NewTrace() {
        std::vector<std::string> lines = test::Lines(handset.Trace());
        std::vector<std::string> fresh;
        for (std::size_t i = m_traced; i < lines.size(); ++i) {
            if (!IsClockwork(lines[i])) fresh.push_back(lines[i]);
        }
        m_traced = lines.size();
        return fresh;
    }
    std::vector<std::string> NewCalls() {
        const std::size_t from = m_called;
        m_called = handset.TunerCalls().size();
        return TunerCommands(from);
    }
    void Forget() {
        NewTrace();
        NewCalls();
    }
    static bool IsClockwork(const std::string& line) {
        for (const char* start :
             {"FM: Signal =", "FM: SystemIdleTimerReset", "FM: SleepTimer:", "FM: disk space",
              // Where there is an antenna, and the machine has other things to do.
              "FM device: antenna: samples come"}) {
            if (line.rfind(start, 0) == 0) return true;
        }
        return line.empty();
    }
    void Phone(std::uint32_t status) const { handset.SetRegistry(kPhoneKey, L"Status", status); }
    // Until the tuner was asked for `count` commands since the last look, and a round has passed after them.
    bool WaitForCommands(std::size_t count) const {
        return WaitFor([&] { return TunerCommands(m_called).size() >= count; }) && WaitForRounds(2);
    }
    static void PassHandsetTime(std::uint32_t seconds) {
        const ULONGLONG end = GetTickCount64() + seconds * 1000ull / kClockRate;
        WaitFor([&] { return GetTickCount64() >= end; }, 600000);
    }

    void MorningWeakAndStrong();
    void HopToAnotherFrequency(Radio& radio);
    void CallsComeAndGo();
    void AnHourInTheDark(Radio& radio);
    void EveningSleepTimer(Radio& radio);
    void HeadsetPulled(Radio& radio);

  private:
    std::size_t m_traced = 0, m_called = 0;
};

void Day::MorningWeakAndStrong() {
    Set(L"EnableMute", 1);
    handset.WriteBand(Band(12));
    ASSERT_TRUE(WaitForCommands(2));
    handset.WriteBand(Band(60));
    ASSERT_TRUE(WaitForCommands(3));
    EXPECT_THAT(NewTrace(),
                ElementsAre("FM: === Mute (for low signal)", "FM: === UN-Mute (for normal signal)"));
    EXPECT_THAT(NewCalls(), ElementsAre("GetVolume -> 0: 50", "SetVolume 0 -> 0", "SetVolume 50 -> 0"));
    Set(L"EnableMute", 0);
}

void Day::HopToAnotherFrequency(Radio& radio) {
    Set(L"EnableAFAutoSwitch", 1);
    handset.WriteBand(Band(12));
    const HWND box = radio.WaitForBox(L"FM");
    ASSERT_NE(box, nullptr);
    Set(L"EnableAFAutoSwitch", 0);
    Radio::Answer(box, IDOK);
    ASSERT_TRUE(WaitFor([&] { return radio.Box(L"FM") == nullptr; }));
    ASSERT_TRUE(WaitForTrace("FM: Signal = 50 \n"));
    EXPECT_THAT(NewTrace(),
                ElementsAre("Current MAX Frequency: 10340", "***WA_INACTIVE***", "===WA_ACTIVE : 1==="));
    EXPECT_THAT(NewCalls(), ElementsAre("GetAFCount -> 0: 2", "SetMute 1 -> 0", "GetAFItem 0 -> 0: 101.1",
                                        "GetAFItem 1 -> 0: 103.4", "SetChannel 10110 -> 0",
                                        "SetChannel 10340 -> 0", "SetChannel 10340 -> 0", "SetMute 0 -> 0"));
}

void Day::CallsComeAndGo() {
    // A call comes in, is answered and ends.
    Phone(kIncoming);
    ASSERT_TRUE(WaitForCommands(1));
    Phone(kTalking);
    PassHandsetTime(120);
    Phone(0);
    ASSERT_TRUE(WaitForCommands(4));
    EXPECT_THAT(NewTrace(), ElementsAre("FM: 1.dwRegKeyMask & SN_PHONEINCOMINGCALL_BITMASK",
                                        "FM: Mute Sound................m_BTInUse: 0",
                                        "FM: 3.(dwRegKeyMask & SN_PHONECALLTALKING_BITMASK)",
                                        "FM: UnMute Sound................m_BTInUse: 0"));
    EXPECT_THAT(NewCalls(),
                ElementsAre("SetMute 1 -> 0", "SetMute 1 -> 0", "SetMute 0 -> 0", "SetMute 0 -> 0"));

    // One goes out: first its number is not known, then it is.
    Phone(kCalling);
    ASSERT_TRUE(WaitForTrace("FM: No Caller Number\r\n"));
    handset.SetRegistry(kPhoneKey, L"Caller Number", L"030 1234");
    Phone(kCalling | 1);
    ASSERT_TRUE(WaitForCommands(1));
    Phone(kTalking);
    PassHandsetTime(120);
    Phone(0);
    ASSERT_TRUE(WaitForCommands(4));
    EXPECT_THAT(NewTrace(),
                ElementsAre("FM: 2.SN_PHONECALLCALLING_BITMASK & dwRegKeyMask", "FM: No Caller Number",
                            "FM: 2.SN_PHONECALLCALLING_BITMASK & dwRegKeyMask",
                            "FM: ### Caller Number 030 1234", "FM: Mute Sound................m_BTInUse: 0",
                            "FM: 3.(dwRegKeyMask & SN_PHONECALLTALKING_BITMASK)",
                            "FM: UnMute Sound................m_BTInUse: 0"));
    EXPECT_THAT(NewCalls(),
                ElementsAre("SetMute 1 -> 0", "SetMute 1 -> 0", "SetMute 0 -> 0", "SetMute 0 -> 0"));
}

void Day::AnHourInTheDark(Radio& radio) {
    const int resets = Count(test::Lines(handset.Trace()), "FM: SystemIdleTimerReset");
    radio.Key(VK_RETURN);
    ASSERT_TRUE(WaitForTrace("FM: Power ......unattended...\n"));
    PassHandsetTime(kHour_s);
    radio.Key(VK_RETURN);
    ASSERT_TRUE(WaitForTrace("FM: Power ......ON.....\n"));
    // At most four a minute; a busy host may lose some.
    const int more = Count(test::Lines(handset.Trace()), "FM: SystemIdleTimerReset") - resets;
    EXPECT_GT(more, 60);
    EXPECT_LE(more, 250);
    EXPECT_THAT(
        NewTrace(),
        ElementsAre("FM: ui.cpp: WndProc: WM_KEYDOWN", "FM: Power Notification Message: PBT_TRANSITION",
                    "FM: SystemPowerState: unattended", "FM: Power ......unattended...",
                    "FM: ui.cpp: WndProc: WM_KEYDOWN", "FM: Power Notification Message: PBT_TRANSITION",
                    "FM: SystemPowerState: on", "FM: Power ......ON....."));
    EXPECT_THAT(NewCalls(), ElementsAre());
}

void Day::EveningSleepTimer(Radio& radio) {
    radio.Command(IDC_SLEEP_15);
    ASSERT_TRUE(WaitForTrace(" / 900 s\n"));
    PassHandsetTime(600);
    radio.Command(IDC_SLEEP_30);
    ASSERT_TRUE(WaitForTrace(" / 1800 s\n"));
    // Past the end of the first choice.
    PassHandsetTime(600);
    EXPECT_TRUE(radio.Runs());
    EXPECT_THAT(NewTrace(), ElementsAre());
    EXPECT_THAT(NewCalls(), ElementsAre());
}

void Day::HeadsetPulled(Radio& radio) {
    handset.PlugHeadset(false);
    ASSERT_TRUE(radio.WaitUntilGone());
    EXPECT_EQ(radio.ExitCode(), 0u);
    EXPECT_THAT(NewTrace(),
                ElementsAre("FM: === Headset off ===", "***WA_INACTIVE***", "FM: ResumeThread: Before...",
                            "FM: ResumeThread: After...", "FM: SpeakerOn = 0", "FM: Program Terminated."));
    EXPECT_THAT(NewCalls(), ElementsAre("SetSpeaker 0 -> 0", "SetMute 0 -> 0", "Close -> 0", "Release -> 0"));
    EXPECT_THAT(handset.Console(), testing::HasSubstr("Headset is turn off and to Close FM\n"));
}

TEST_F(Day, FromTheFirstStationToThePulledHeadset) {
    NEEDS_THE_SIMULATED_BAND("a day, which passes on a fast clock alone");
    SetClockRate(kClockRate);
    handset.WriteBand(Band(60));
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Type("985");
    ASSERT_TRUE(WaitForTrace("FM: Signal = 60 \n"));
    Forget();
    ASSERT_NO_FATAL_FAILURE(MorningWeakAndStrong());
    ASSERT_NO_FATAL_FAILURE(HopToAnotherFrequency(radio));
    ASSERT_NO_FATAL_FAILURE(CallsComeAndGo());
    ASSERT_NO_FATAL_FAILURE(AnHourInTheDark(radio));
    ASSERT_NO_FATAL_FAILURE(EveningSleepTimer(radio));
    ASSERT_NO_FATAL_FAILURE(HeadsetPulled(radio));
}

// The call is answered and ends while the radio still says where the recording lies.
TEST_F(Day, ACallEndsARecordingAndTheRadioComesBackAfterIt) {
    Hurry(10);
    handset.WriteBand(Band(60));
    Radio radio(handset, L"-Rec -Channel 9850");
    radio.WaitUntilShown();
    radio.Tap(28, 251);
    ASSERT_TRUE(WaitFor([&] { return Count(test::Lines(handset.Trace()), "FM: disk space") >= 10; }));
    Forget();
    Phone(kIncoming);
    const HWND box = radio.WaitForBox(L"FM");
    ASSERT_NE(box, nullptr);
    const std::wstring file = L"\\My Documents\\My Music\\98.5-0000.amr";
    EXPECT_THAT(Radio::BoxText(box), testing::HasSubstr(file));
    Phone(kTalking);
    PassHandsetTime(120);
    Radio::Answer(box, IDOK);
    ASSERT_TRUE(WaitFor([&] { return radio.Box(L"FM") == nullptr && IsWindowVisible(radio.ListView()); }));
    Phone(0);
    ASSERT_TRUE(WaitForCommands(4));
    EXPECT_THAT(NewTrace(),
                ElementsAre("FM: 1.dwRegKeyMask & SN_PHONEINCOMINGCALL_BITMASK",
                            "FM: Mute Sound................m_BTInUse: 0", "[FM_EnCoder]iIndex : 0",
                            "FM: stop_record: bByPreRecord = 0", "***WA_INACTIVE***",
                            "===WA_ACTIVE : 1===", "FM: 3.(dwRegKeyMask & SN_PHONECALLTALKING_BITMASK)",
                            "FM: UnMute Sound................m_BTInUse: 0"));
    EXPECT_THAT(NewCalls(),
                ElementsAre("SetMute 1 -> 0", "SetMute 1 -> 0", "SetMute 0 -> 0", "SetMute 0 -> 0"));
    EXPECT_TRUE(radio.Runs());
}

}  // namespace
