// Recordings of the radio's sound, made with the radio's own calls and read back.
#include <algorithm>
#include <cmath>

#include "handset/fmdevice/sound_tap.h"
#include "tests/support/wait.h"
#include "tests/unit/capture/host_tool.h"
#include "tests/unit/capture/recorded_sound.h"
#include "tests/unit/capture/recording_rig.h"

namespace {

using test::AskedFormat;
using test::CRecordingRig;

constexpr wchar_t kWav[] = L"\\take.wav";
constexpr wchar_t kAmr[] = L"\\take.amr";

class Recording : public test::CaptureTest {
  protected:
    // Records for this time and gives the time between start and stop.
    double Record(CRecordingRig* rig, std::uint64_t handset_ms) {
        EXPECT_EQ(rig->Start(), S_OK);
        test::LetPass(handset_ms);
        EXPECT_EQ(rig->Stop(), S_OK);
        return static_cast<double>(rig->stopped_ms - rig->started_ms) / 1000;
    }
};

TEST_F(Recording, AWavFileHoldsTheToneAndTheTime) {
    PlayTone();
    CRecordingRig rig;
    ASSERT_EQ(rig.Build({44100, 2, 16}), S_OK);
    ASSERT_EQ(rig.AttachWav(kWav), S_OK);
    const double seconds = Record(&rig, 1500);
    EXPECT_TRUE(rig.Ended());
    EXPECT_TRUE(rig.SawEvent(EC_STREAM_CONTROL_STOPPED));
    const auto sound = test::ReadWav(test::Bytes(Host(kWav)));
    EXPECT_TRUE(sound.whole);
    EXPECT_EQ(sound.rate_Hz, 44100u);
    EXPECT_EQ(sound.channels, 2);
    EXPECT_NEAR(sound.Seconds(), seconds, 0.02);
    EXPECT_NEAR(sound.Pitch_Hz(), test::kTone_Hz, 0.1);
    EXPECT_NEAR(sound.Tone(test::kTone_Hz), test::kTonePeak, 0.01);
    EXPECT_TRUE(rig.Release());
}

}  // namespace
