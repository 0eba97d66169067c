// A week of recordings that were booked by hand: each is made at its time, of the right station, as long as
// it was booked, whatever the radio and the handset are doing then.
#include <cstdlib>

#include "tests/support/heard_tone.h"
#include "tests/system/booked_radio.h"

namespace {

using test::Handset;
using test::Radio;
using test::ServiceProcess;
using test::WaitFor;
using testing::HasSubstr;

constexpr char kTimeOut[] = "** Pre-Record Time Out **\n";
constexpr char kTerminated[] = "FM: Program Terminated.\n";
constexpr wchar_t kMusic[] = L"\\My Documents\\My Music\\";
constexpr int kBooked_s = 180;  // 09:51 to 09:54
// A sixtieth of it passes between an event and the program's answer to it.
constexpr int kClockRate = 60;
constexpr double kInexact_s = 20;

class BookedWeek : public test::BookedRadioTest {
  protected:
    BookedWeek() {
        handset.WriteBand(
            "[band]\nwrap=1\n[8760]\nlevel=100\nprogramme=tone:330\n"
            "[9850]\nlevel=100\nprogramme=tone:440\n[10790]\nlevel=100\nprogramme=tone:880\n");
    }

    void BookTheWeek() {
        Radio radio(handset);
        radio.WaitUntilShown();
        const auto book = [&](const char* channel, const std::vector<int>& taps) {
            // The dialog opens with the present time and today's day.
            Handset(L"clock 2026-11-23 09:50");
            const HWND dialog = OpenSchedule(radio);
            test::BookByHand(dialog, {channel, taps, 1, 4});
            Radio::Answer(dialog, IDOK);
            EXPECT_TRUE(WaitFor([&] { return !IsWindow(dialog); }));
        };
        book("98.5", {3, 5});
        book("107.9", {1, 2, 4});
        CloseRadio(radio);
        ++m_terminated;
        const std::string schedule = Handset(L"schedule");
        EXPECT_THAT(schedule,
                    HasSubstr("\\Windows\\UI.exe -Rec -Channel 9850 -Duration 3  RunAppAtTime-0000000001"));
        for (const char* first :
             {"Mon 2026-11-23", "Tue 2026-11-24", "Wed 2026-11-25", "Thu 2026-11-26", "Fri 2026-11-27"})
            EXPECT_THAT(schedule, HasSubstr("next " + std::string(first) + " 09:51:00, every week"));
    }

    // A little before ten on a day. In between the days either pass in front of the service, or are skipped.
    static void GoTo(const wchar_t* day) {
        if (std::getenv("KORA_WHOLE_WEEK") != nullptr) {
            Handset(L"clock 3600");
            const std::string morning = std::string(day, day + wcslen(day)) + " 09:00";
            EXPECT_TRUE(WaitFor([&] { return test::HandsetTime() >= morning; }, 600000)) << morning;
        }
        Handset(L"clock " + std::to_wstring(kClockRate));
        Handset(L"clock " + std::wstring(day) + L" 09:50:50");
    }
    // The radio that the service has started, once it records into `file`.
    HWND WaitForRecording(const std::wstring& file) const {
        EXPECT_TRUE(WaitFor([&] { return SizeOf(kMusic + file) > 0; })) << "no recording";
        return FindWindowW(L"Kora", nullptr);
    }
    void ExpectOneMoreEndedByItself(int radios = 1) {
        m_terminated += radios;
        ASSERT_TRUE(WaitForTraces(kTimeOut, ++m_timeOuts));
        ASSERT_TRUE(WaitForTraces(kTerminated, m_terminated));
    }
    void ExpectRecording(const std::wstring& file, const char* codec, double tone_Hz, double length_s) const {
        const test::SoundFile sound = test::ProbeSound(handset.DevicePath(kMusic + file));
        EXPECT_EQ(sound.codec, codec);
        EXPECT_EQ(sound.complaints, "");
        EXPECT_NEAR(sound.length_s, length_s, kInexact_s);
        const auto samples = test::DecodeSound(handset.DevicePath(kMusic + file), test::Channels::kMean);
        for (const double place : {0.02, 0.5, 0.98}) {
            const test::Tone tone = test::ToneAt(samples, sound.rate_Hz, place, {300, 900, 10});
            EXPECT_EQ(tone.frequency_Hz, tone_Hz) << "at " << place;
            EXPECT_GT(tone.share, 0.9) << "at " << place;
        }
    }

    void MondayWithTheRadioClosed();
    void TuesdayWithARadioRunning();
    void WednesdayUnattended();
    void ThursdayAfterTheServiceWasKilled(ServiceProcess& service);
    void FridayStoppedByHand();
    void NextMondayWithAFullDisk();

    int m_timeOuts = 0, m_terminated = 0;
};

void BookedWeek::MondayWithTheRadioClosed() {
    GoTo(L"2026-11-23");
    ExpectOneMoreEndedByItself();
    ExpectRecording(L"98.5-0000.amr", "amr_nb", 440, kBooked_s);
}

void BookedWeek::TuesdayWithARadioRunning() {
    SetFormat(1);
    const Radio radio(handset, L"-Rec -Channel 8760");
    ASSERT_TRUE(WaitFor([&] { return radio.Window() != nullptr && IsWindowVisible(radio.Window()); }));
    GoTo(L"2026-11-24");
    ASSERT_TRUE(radio.WaitUntilGone());
    EXPECT_EQ(radio.ExitCode(), 0u);
    ExpectOneMoreEndedByItself(2);
    ExpectRecording(L"107.9-0000.wav", "pcm_s16le", 880, kBooked_s);
}

void BookedWeek::WednesdayUnattended() {
    const Radio radio(handset, L"-Rec -Channel 8760");
    ASSERT_TRUE(WaitFor([&] { return radio.Window() != nullptr && IsWindowVisible(radio.Window()); }));
    Handset(L"power unattended");
    GoTo(L"2026-11-25");
    ASSERT_TRUE(radio.WaitUntilGone());
    ExpectOneMoreEndedByItself(2);
    ExpectRecording(L"98.5-0000.wav", "pcm_s16le", 440, kBooked_s);
    Handset(L"power on");
}

// The phone sleeps as well.
void BookedWeek::ThursdayAfterTheServiceWasKilled(ServiceProcess& service) {
    service.Kill();
    Handset(L"power suspend");
    GoTo(L"2026-11-26");
    const ServiceProcess another(handset);
    ExpectOneMoreEndedByItself();
    ExpectRecording(L"107.9-0001.wav", "pcm_s16le", 880, kBooked_s);
    Handset(L"power on");
}

void BookedWeek::FridayStoppedByHand() {
    GoTo(L"2026-11-27");
    const Radio radio(WaitForRecording(L"98.5-0001.wav"));
    const std::wstring file = kMusic + std::wstring(L"98.5-0001.wav");
    // A minute of it.
    ASSERT_TRUE(WaitFor([&] { return SizeOf(file) > 60 * 16000; }));
    TapRecord(radio);
    const HWND box = radio.WaitForBox(L"FM");
    ASSERT_NE(box, nullptr);
    EXPECT_THAT(Radio::BoxText(box), HasSubstr(file));
    Radio::Answer(box, IDOK);
    ExpectRecording(L"98.5-0001.wav", "pcm_s16le", 440, static_cast<double>(SizeOf(file)) / 16000);
    EXPECT_LT(SizeOf(file), kBooked_s * 16000u);
    // The end of the booking passes, and the radio stays.
    const ULONGLONG end = GetTickCount64() + kBooked_s * 1000 / kClockRate + 500;
    ASSERT_TRUE(WaitFor([&] { return GetTickCount64() >= end; }));
    EXPECT_TRUE(radio.Runs());
    CloseRadio(radio);
    ++m_terminated;
}

void BookedWeek::NextMondayWithAFullDisk() {
    handset.SetState(L"ObjectStoreFree", 999999);
    GoTo(L"2026-11-30");
    ASSERT_TRUE(WaitForTraces("Channel: 9850\r\n", 4));
    HWND window = nullptr;
    ASSERT_TRUE(WaitFor([&] { return (window = FindWindowW(L"Kora", nullptr)) != nullptr; }));
    const Radio radio(window);
    const HWND box = radio.WaitForBox(L"FM");
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(Radio::BoxText(box), L"Not enough free storage space for a recording.");
    Radio::Answer(box, IDOK);
    ExpectOneMoreEndedByItself();
    EXPECT_FALSE(Exists(kMusic + std::wstring(L"98.5-0002.wav")));
}

TEST_F(BookedWeek, BookedByHandIsRecordedAtItsTimesWhateverElseGoesOn) {
    NEEDS_THE_SIMULATED_BAND("a week, which passes on a fast clock alone");
    ServiceProcess service(handset);
    BookTheWeek();
    ASSERT_NO_FATAL_FAILURE(MondayWithTheRadioClosed());
    ASSERT_NO_FATAL_FAILURE(TuesdayWithARadioRunning());
    ASSERT_NO_FATAL_FAILURE(WednesdayUnattended());
    ASSERT_NO_FATAL_FAILURE(ThursdayAfterTheServiceWasKilled(service));
    const ServiceProcess another(handset);
    ASSERT_NO_FATAL_FAILURE(FridayStoppedByHand());
    // Nothing is booked for the weekend.
    GoTo(L"2026-11-28");
    ASSERT_TRUE(WaitFor([] { return test::HandsetTime() >= "2026-11-28 09:51:30"; }));
    EXPECT_EQ(Traced("Channel: "), 5 + 2);
    ASSERT_NO_FATAL_FAILURE(NextMondayWithAFullDisk());
    EXPECT_EQ(Traced("Channel: "), 6 + 2);
    EXPECT_EQ(Traced(kTimeOut), m_timeOuts);
    EXPECT_THAT(Handset(L"status"), HasSubstr("not running"));
    EXPECT_THAT(Handset(L"schedule"), HasSubstr("next Mon 2026-12-07 09:51:00, every week"));
}

}  // namespace
