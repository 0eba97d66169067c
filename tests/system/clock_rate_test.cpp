// The clock's rate is changed while the radio plays and records.
#include <cstdio>

#include "tests/support/wait.h"
#include "tests/system/recording_test.h"

namespace {

using test::Music;
using test::ProbeSound;
using test::Radio;
using test::SoundFile;
using test::WaitFor;
using testing::HasSubstr;

class ClockRate : public test::RecordingTest {
  protected:
    // As a person does it.
    static void Handset(const std::wstring& arguments) {
        std::string output;
        EXPECT_EQ(test::RunProgram(L"handset.exe", arguments, &output), 0u) << output;
    }
    // The recording's free space is looked at every half second of the handset's clock.
    int HalfSeconds() const { return Count(test::Lines(handset.Trace()), "FM: disk space"); }
    bool WaitForHalfSeconds(int more) const {
        const int before = HalfSeconds();
        return WaitFor([&] { return HalfSeconds() >= before + more; });
    }
};

TEST_F(ClockRate, ThatGoesFastBringsTheSleepTimersEndToARadioThatPlays) {
    NEEDS_THE_SIMULATED_BAND("a fast clock, beside which nothing real is received");
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Command(IDC_SLEEP_15);
    ASSERT_TRUE(WaitForTrace(" / 900 s\n"));
    Handset(L"clock 900");
    ASSERT_TRUE(radio.WaitUntilGone());
    EXPECT_EQ(radio.ExitCode(), 0u);
    EXPECT_THAT(handset.Trace(), HasSubstr("Close FM -- SleepTimer Time out:"));
}

// Not a half second of the handset's time is missing in the file, or in it twice.
TEST_F(ClockRate, ThatGoesFastAndSlowAgainLeavesARecordingAsLongAsItsTime) {
    NEEDS_THE_SIMULATED_BAND("a fast clock, beside which nothing real is received");
    PlayTone();
    SetFormat(1);
    Radio radio(handset, L"-Rec -Channel 9850");
    radio.WaitUntilShown();
    const ULONGLONG began = GetTickCount64();
    TapRecord(radio);
    ASSERT_TRUE(WaitForHalfSeconds(4));
    const ULONGLONG fast = GetTickCount64();
    Handset(L"clock 20");
    ASSERT_TRUE(WaitForHalfSeconds(120));
    Handset(L"clock 1");
    const ULONGLONG slow = GetTickCount64();
    ASSERT_TRUE(WaitForHalfSeconds(4));
    ASSERT_NO_FATAL_FAILURE(StopAndAnswer(radio));
    const SoundFile sound = ProbeSound(handset.DevicePath(Music(L"98.5-0000.wav")));
    EXPECT_EQ(sound.complaints, "");
    EXPECT_GE(sound.length_s, HalfSeconds() / 2.0 - 3);
    const auto most_ms = (fast - began) + 20 * (slow - fast) + (GetTickCount64() - slow);
    EXPECT_LE(sound.length_s, static_cast<double>(most_ms) / 1000);
}

}  // namespace
