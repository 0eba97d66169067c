// What is heard from the radio, by its sound log.
#include <cmath>

#include "handset/coredll/kernel/platform_call.h"
#include "tests/support/trace_capture.h"
#include "tests/unit/fmdevice/tuner_under_test.h"
#include "tests/unit/fmdevice/wav_measure.h"

namespace {

constexpr std::size_t kQuarter = 44100 / 4;

class TunerSound : public test::TunerTest {
  protected:
    void SetUp() override {
        WriteBand(
            "[9000]\nlevel=100\nprogramme=tone:440\n"
            "[9100]\nlevel=100\nstereo=1\nprogramme=tone:440,660\n"
            "[9200]\nlevel=25\n[9300]\nlevel=15\n[9400]\nlevel=45\n"
            "[9500]\nlevel=100\nprogramme=\\Music\\jingle.wav\n"
            "[9600]\nlevel=100\nprogramme=\\Music\\missing.wav\n");
        handset::SetStateString(L"SoundLog", L"\\heard.wav");
        PowerUp();
        ASSERT_EQ(device_->SetVolume(100), S_OK);
    }

    test::Sound Heard() { return test::WavSound(test::Bytes(handset::HostPath(L"\\heard.wav"))); }

    // A quarter of a second of what is heard from now on.
    test::Sound Listen() {
        const std::size_t before = Heard().Frames();
        // The log is written in tenths; what was made before the call may still be on its way to it.
        test::WaitFor([&] { return Heard().Frames() >= before + kQuarter + 44100 * 3 / 10; });
        return Heard().Tail(kQuarter);
    }
    test::Sound ListenTo(std::uint32_t channel) {
        EXPECT_EQ(device_->SetChannel(channel), S_OK);
        return Listen();
    }
};

TEST_F(TunerSound, AToneIsHeardAtItsPitchAndVolume) {
    const test::Sound full = ListenTo(9000);
    EXPECT_NEAR(full.Tone(0, 440), 0.4, 0.01);
    EXPECT_NEAR(full.Rms(0), 0.4 / std::sqrt(2.0), 0.01);
    ASSERT_EQ(device_->SetVolume(25), S_OK);
    EXPECT_NEAR(Listen().Tone(1, 440), 0.1, 0.01);
}

TEST_F(TunerSound, MutedOrAtVolumeZeroItIsSilence) {
    ASSERT_GT(ListenTo(9000).Rms(0), 0.2);
    ASSERT_EQ(device_->SetMute(TRUE), S_OK);
    EXPECT_EQ(Listen().Rms(0), 0);
    ASSERT_EQ(device_->SetMute(FALSE), S_OK);
    EXPECT_GT(Listen().Rms(0), 0.2);
    ASSERT_EQ(device_->SetVolume(0), S_OK);
    EXPECT_EQ(Listen().Rms(0), 0);
}

TEST_F(TunerSound, TheHissRisesAsTheLevelFalls) {
    const double good = ListenTo(9400).Rms(0);
    const double weak = ListenTo(9200).Rms(0);
    const double weaker = ListenTo(9300).Rms(0);
    const double nothing = ListenTo(8800).Rms(0);
    EXPECT_LT(2 * good, weak);
    EXPECT_LT(2 * weak, weaker);
    EXPECT_LT(2 * weaker, nothing);
}

TEST_F(TunerSound, StereoIsHeardByHeadsetAndMixedByTheLoudspeaker) {
    const test::Sound headset = ListenTo(9100);
    EXPECT_NEAR(headset.Tone(0, 440), 0.4, 0.01);
    EXPECT_NEAR(headset.Tone(1, 440), 0, 0.01);
    EXPECT_NEAR(headset.Tone(1, 660), 0.4, 0.01);
    ASSERT_EQ(device_->SetSpeaker(TRUE), S_OK);
    const test::Sound speaker = Listen();
    EXPECT_NEAR(speaker.Tone(0, 440), 0.2, 0.01);
    EXPECT_NEAR(speaker.Tone(0, 660), 0.2, 0.01);
    EXPECT_NEAR(speaker.Tone(1, 440), 0.2, 0.01);
}

TEST_F(TunerSound, AWavFileOfTheDeviceIsPlayed) {
    CreateDirectoryW(handset::HostPath(L"\\Music").c_str(), nullptr);
    // The sound log of a tone is such a file.
    ListenTo(9000);
    test::WriteBytes(handset::HostPath(L"\\Music\\jingle.wav"),
                     test::Bytes(handset::HostPath(L"\\heard.wav")));
    EXPECT_GT(ListenTo(9500).Rms(0), 0.0);
    EXPECT_TRUE(test::WaitFor([&] { return Heard().Tail(kQuarter).Tone(0, 440) > 0.35; }));
}

TEST_F(TunerSound, AFileThatIsNotThereIsSilenceAndALine) {
    test::StreamCapture capture(STD_ERROR_HANDLE);
    const double loudness = ListenTo(9600).Rms(0);
    EXPECT_LT(loudness, 0.001);
    EXPECT_EQ(capture.Text(),
              "FM device: \\Music\\missing.wav cannot be played: there is no such file, or it is larger than "
              "64 MiB\n");
}

TEST_F(TunerSound, AReportThatIsLongerThanTheDebugOutputTakesIsSeveralLinesOfIt) {
    const std::string missing = "\\" + std::string(200, 'm') + ".wav";
    WriteBand("[9700]\nlevel=100\nprogramme=" + missing + "\n");
    ASSERT_EQ(device_->SetChannel(9700), S_OK);
    test::StreamCapture capture(STD_ERROR_HANDLE);
    ASSERT_TRUE(test::WaitFor([&] { return Signal() == 100; }));
    ASSERT_TRUE(test::WaitFor([&] { return capture.Text().find("MiB") != std::string::npos; }));
    const std::string report =
        missing + " cannot be played: there is no such file, or it is larger than 64 MiB";
    EXPECT_EQ(capture.Text(), "FM device: " + report.substr(0, 115) + "\nFM device: " +
                                  report.substr(115, 115) + "\nFM device: " + report.substr(230) + "\n");
}

// Rendering would open the file and complain.
TEST_F(TunerSound, WhenNobodyListensNothingIsRendered) {
    if (handset::StateDword(L"HostSound", 1) != 0) GTEST_SKIP() << "the host's loudspeakers are listening";
    ASSERT_EQ(device_->Close(), S_OK);
    handset::SetStateString(L"SoundLog", L"");
    std::string trace;
    {
        test::StreamCapture capture(STD_ERROR_HANDLE);
        device_->Initialize();
        device_->SetChannel(9600);
        const std::uint64_t begin = HandsetMilliseconds();
        test::WaitFor([&] { return HandsetMilliseconds() >= begin + 500; });
        trace = capture.Text();
    }
    EXPECT_EQ(trace, "");
}

TEST_F(TunerSound, TheLogIsValidAtEveryMomentAndEndsWithTheRadio) {
    ListenTo(9000);
    ASSERT_EQ(device_->Close(), S_OK);
    EXPECT_TRUE(test::WaitFor([&] {
        const HANDLE file = CreateFileW(handset::HostPath(L"\\heard.wav").c_str(), GENERIC_READ,
                                        FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
        if (file == INVALID_HANDLE_VALUE) return false;
        CloseHandle(file);
        return true;
    }));
    const std::string bytes = test::Bytes(handset::HostPath(L"\\heard.wav"));
    EXPECT_EQ(test::WavSound(bytes).Frames() * 4 + 44, bytes.size());
}

TEST_F(TunerSound, ALogThatIsThereAlreadyGoesOn) {
    const std::size_t before = ListenTo(9000).Frames();
    ASSERT_GT(before, 0u);
    ASSERT_EQ(device_->Close(), S_OK);
    ASSERT_EQ(device_->Initialize(), S_OK);
    const std::size_t there = Heard().Frames();
    Listen();
    EXPECT_GT(Heard().Frames(), there);
}

TEST(TunerClock, AtSixtyTimesTheSpeedAMinuteIsAMinuteOfSound) {
    test::ExpectToPassAtSixtyTimesTheSpeed(L"FastSound.*");
}

class FastSound : public TunerSound {};

TEST_F(FastSound, DISABLED_AMinuteOfTheHandsetsClockIsAMinuteOfSound) {
    ASSERT_EQ(HandsetClockRate(), 60u);
    ASSERT_EQ(device_->SetChannel(9000), S_OK);
    const std::uint64_t begin = HandsetMilliseconds();
    test::WaitFor([&] { return HandsetMilliseconds() >= begin + 60'000; });
    const std::uint64_t end = HandsetMilliseconds();
    const auto made = [] {
        WIN32_FILE_ATTRIBUTE_DATA data{};
        GetFileAttributesExW(handset::HostPath(L"\\heard.wav").c_str(), GetFileExInfoStandard, &data);
        return (data.nFileSizeLow - 44) / 4;
    };
    // All the sound of the time that has passed comes, and none of a time that has not.
    EXPECT_TRUE(test::WaitFor([&] { return made() >= (end - begin) * 441 / 10; }));
    EXPECT_LE(made(), HandsetMilliseconds() * 441 / 10);
    EXPECT_NEAR(Heard().Tail(44100).Tone(0, 440), 0.4, 0.01);
}

}  // namespace
