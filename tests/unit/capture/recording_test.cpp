// Recordings of the radio's sound, made with the radio's own calls and read back.
#include <algorithm>
#include <atomic>
#include <cmath>
#include <thread>

#include <interf_enc.h>

#include "handset/controls/encoding.h"
#include "handset/sound/tap.h"
#include "tests/support/handset_under_test.h"
#include "tests/support/host_tool.h"
#include "tests/support/wait.h"
#include "tests/unit/capture/recorded_sound.h"
#include "tests/unit/capture/recording_rig.h"

namespace {

using test::AskedFormat;
using test::CRecordingRig;

constexpr wchar_t kWav[] = L"\\take.wav";
constexpr wchar_t kAmr[] = L"\\take.amr";
constexpr wchar_t kPlain[] = L"\\plain.amr";

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

// Every row of the radio's format table, with the bits that it asks for.
constexpr AskedFormat kTable[] = {
    {8000, 1, 16}, {8000, 2, 16},  {11025, 2, 16}, {22050, 2, 16}, {44100, 2, 16},
    {8000, 1, 16}, {11025, 1, 16}, {22050, 1, 16}, {44100, 1, 16}, {8000, 1, 0},
};

void ExpectWav(const test::SoundFile& file, const AskedFormat& format) {
    EXPECT_EQ(file.container, "wav");
    EXPECT_EQ(file.codec, "pcm_s16le");
    EXPECT_EQ(file.rate_Hz, static_cast<int>(format.rate_Hz));
    EXPECT_EQ(file.channels, format.channels);
    EXPECT_EQ(file.complaints, "");
}

TEST_F(Recording, EveryFormatGivesTheToneAndTheTimeToItsLastSampleAndOtherProgramsOpenIt) {
    PlayTone();
    for (const AskedFormat& format : kTable) {
        SCOPED_TRACE(testing::Message() << format.rate_Hz << " Hz, " << format.channels << " channels");
        CRecordingRig rig;
        ASSERT_EQ(rig.Build(format), S_OK);
        ASSERT_EQ(rig.AttachWav(kWav), S_OK);
        const double seconds = Record(&rig, 700);
        EXPECT_TRUE(rig.Ended());
        EXPECT_TRUE(rig.SawEvent(EC_STREAM_CONTROL_STOPPED));
        const auto sound = test::ReadWav(test::Bytes(Host(kWav)));
        EXPECT_TRUE(sound.whole);
        EXPECT_EQ(sound.rate_Hz, format.rate_Hz);
        EXPECT_EQ(sound.channels, format.channels);
        EXPECT_EQ(sound.bits, 16);
        EXPECT_GE(sound.Seconds(), rig.Seconds() - 1.5 / format.rate_Hz);
        EXPECT_LE(sound.Seconds(), rig.MostSeconds() + 1.5 / format.rate_Hz);
        EXPECT_NEAR(sound.Seconds(), seconds, 0.04);
        EXPECT_NEAR(sound.Pitch_Hz(), test::kTone_Hz, 0.5);
        EXPECT_NEAR(sound.Tone(test::kTone_Hz), test::kTonePeak, 0.02);
        EXPECT_TRUE(rig.Release());
        if (test::HostToolsAvailable()) ExpectWav(test::ProbeSound(Host(kWav)), format);
    }
}

// The tone's power over that of everything else in the middle of the sound, over whole periods.
double SignalToNoise_dB(const std::vector<std::int16_t>& samples) {
    constexpr std::size_t kEdge = test::kSpeech.rate_Hz / 4;
    constexpr std::size_t kElevenPeriods = 200;
    test::RecordedSound sound;
    sound.rate_Hz = test::kSpeech.rate_Hz;
    sound.channels = 1;
    if (samples.size() < 3 * kEdge) return 0;
    const std::size_t middle = (samples.size() - 2 * kEdge) / kElevenPeriods * kElevenPeriods;
    const auto from = samples.begin() + kEdge;
    sound.samples.assign(from, from + static_cast<std::ptrdiff_t>(middle));
    const double tone = sound.Tone(test::kTone_Hz) / std::sqrt(2.0);
    const double whole = sound.Loudness();
    return 10 * std::log10(tone * tone / std::max(whole * whole - tone * tone, 1e-12));
}

// The same sound through the encoder library and nothing else, in its plainest file.
std::vector<std::int16_t> ThroughTheLibrary(std::vector<std::int16_t> samples, const std::wstring& file) {
    constexpr std::size_t kFrame = 160;
    void* const encoder = Encoder_Interface_init(0);
    std::string bytes = "#!AMR\n";
    for (std::size_t at = 0; at + kFrame <= samples.size(); at += kFrame) {
        unsigned char frame[64];
        const int size = Encoder_Interface_Encode(encoder, MR122, &samples[at], frame, 0);
        bytes.append(reinterpret_cast<const char*>(frame), static_cast<std::size_t>(size));
    }
    Encoder_Interface_exit(encoder);
    test::WriteWholeFile(file, bytes);
    return test::DecodeSound(file);
}

TEST_F(Recording, AnAmrFileIsOpenedAndGivesTheToneBackAsWellAsTheEncoderCan) {
    if (!test::HostToolsAvailable()) GTEST_SKIP() << "ffprobe is looked for around Wine only";
    PlayTone();
    CRecordingRig plain;
    ASSERT_EQ(plain.Build(test::kSpeech), S_OK);
    ASSERT_EQ(plain.AttachWav(kWav), S_OK);
    CRecordingRig rig;
    ASSERT_EQ(rig.Build(test::kSpeech), S_OK);
    ASSERT_EQ(rig.AttachAmr(kAmr), S_OK);
    // Both hear the same radio.
    ASSERT_EQ(plain.Start(), S_OK);
    Record(&rig, 2000);
    ASSERT_EQ(plain.Stop(), S_OK);
    EXPECT_TRUE(rig.Ended());
    EXPECT_TRUE(rig.SawEvent(EC_STREAM_CONTROL_STOPPED));
    EXPECT_TRUE(rig.Release());
    const test::SoundFile file = test::ProbeSound(Host(kAmr));
    EXPECT_EQ(file.container, "mov");
    EXPECT_EQ(file.codec, "amr_nb");
    EXPECT_EQ(file.rate_Hz, 8000);
    EXPECT_EQ(file.channels, 1);
    EXPECT_EQ(file.complaints, "");
    // A frame that the stop cuts off is not there.
    EXPECT_GE(file.length_s, rig.Seconds() - 0.0201);
    EXPECT_LE(file.length_s, rig.MostSeconds() + 0.0001);

    test::RecordedSound sound;
    sound.samples = test::DecodeSound(Host(kAmr));
    sound.rate_Hz = 8000;
    sound.channels = 1;
    EXPECT_NEAR(sound.Seconds(), file.length_s, 0.001);
    EXPECT_NEAR(sound.Pitch_Hz(), test::kTone_Hz, 0.5);
    EXPECT_NEAR(20 * std::log10(sound.Tone(test::kTone_Hz) / test::kTonePeak), 0, 2);

    // How well depends on where in the tone the frames begin, by four decibels.
    const auto plainSound = test::ReadWav(test::Bytes(Host(kWav))).samples;
    EXPECT_GT(SignalToNoise_dB(plainSound), 60) << "what went into the library";
    double worst_dB = 1000;
    for (const std::ptrdiff_t first : {0, 1, 2, 3, 4, 40, 80, 120}) {
        const auto decoded = ThroughTheLibrary({plainSound.begin() + first, plainSound.end()}, Host(kPlain));
        worst_dB = std::min(worst_dB, SignalToNoise_dB(decoded));
    }
    EXPECT_GT(worst_dB, 10);
    EXPECT_GT(SignalToNoise_dB(sound.samples), worst_dB - 2);
    RecordProperty("recorded_dB", std::to_string(SignalToNoise_dB(sound.samples)));
    RecordProperty("library_dB", std::to_string(worst_dB));
}

// A second listener on the radio's sound, beside the recording.
class CListener {
  public:
    CListener() : tap_(HandsetSoundOpen(&first_)), next_(first_), thread_([this] { Listen(); }) {}
    ~CListener() { Stop(); }
    void Stop() {
        if (!thread_.joinable()) return;
        closing_ = true;
        thread_.join();
        HandsetSoundClose(tap_);
    }
    const std::vector<std::int16_t>& Samples() const { return samples_; }
    std::uint64_t Heard() const { return next_; }

  private:
    void Listen() {
        std::vector<std::int16_t> piece(2 * 22050);
        while (!closing_) {
            std::uint64_t position = next_;
            const std::uint32_t count = HandsetSoundRead(tap_, &position, piece.data(), 22050, 20);
            EXPECT_EQ(position, next_.load());
            samples_.insert(samples_.end(), piece.begin(), piece.begin() + 2 * count);
            next_ = position + count;
        }
    }

    std::uint64_t first_ = 0;
    const std::uint32_t tap_;
    std::atomic<std::uint64_t> next_;
    std::atomic<bool> closing_{false};
    std::vector<std::int16_t> samples_;
    std::thread thread_;
};

TEST_F(Recording, HoldsEverySampleOfTheDeviceOnce) {
    // Noise repeats nowhere, so that every sample has one place.
    panel::WriteWholeFile(Host(L"\\Windows\\band.ini"), "[9000]\nlevel=20\nprogramme=noise:\n");
    PlayTone();
    CRecordingRig rig;
    ASSERT_EQ(rig.Build({44100, 2, 16}), S_OK);
    ASSERT_EQ(rig.AttachWav(kWav), S_OK);
    CListener listener;
    Record(&rig, 2500);
    const std::uint64_t end = listener.Heard() + 44100;
    test::WaitFor([&] { return listener.Heard() >= end; });
    listener.Stop();
    const auto sound = test::ReadWav(test::Bytes(Host(kWav)));
    ASSERT_GT(sound.Frames(), 2u * 44100);
    const auto& heard = listener.Samples();
    const auto found = std::search(heard.begin(), heard.end(), sound.samples.begin(), sound.samples.end());
    EXPECT_NE(found, heard.end());
    EXPECT_EQ((found - heard.begin()) % 2, 0);
}

TEST_F(Recording, ASilentRadioGivesASilentFile) {
    CRecordingRig rig;
    ASSERT_EQ(rig.Build({44100, 2, 16}), S_OK);
    ASSERT_EQ(rig.AttachWav(kWav), S_OK);
    const double seconds = Record(&rig, 300);
    const auto sound = test::ReadWav(test::Bytes(Host(kWav)));
    EXPECT_NEAR(sound.Seconds(), seconds, 0.04);
    EXPECT_EQ(sound.Loudness(), 0);
}

TEST_F(Recording, AGraphRecordsAgainIntoTheSameFile) {
    PlayTone();
    CRecordingRig rig;
    ASSERT_EQ(rig.Build({8000, 1, 16}), S_OK);
    ASSERT_EQ(rig.AttachWav(kWav), S_OK);
    Record(&rig, 900);
    const double seconds = Record(&rig, 300);
    const auto sound = test::ReadWav(test::Bytes(Host(kWav)));
    EXPECT_TRUE(sound.whole);
    EXPECT_NEAR(sound.Seconds(), seconds, 0.04);
}

TEST_F(Recording, AGraphThatIsJustStoppedLeavesAWholeFileToo) {
    PlayTone();
    CRecordingRig rig;
    ASSERT_EQ(rig.Build({22050, 2, 16}), S_OK);
    ASSERT_EQ(rig.AttachWav(kWav), S_OK);
    ASSERT_EQ(rig.Start(), S_OK);
    test::LetPass(600);
    ASSERT_EQ(rig.StopGraph(), S_OK);
    const auto sound = test::ReadWav(test::Bytes(Host(kWav)));
    EXPECT_TRUE(sound.whole);
    EXPECT_NEAR(sound.Seconds(), 0.6, 0.15);
}

// The radio never gives back the position interface of its graph, so the graph lives on.
TEST_F(Recording, NothingStaysOpenInAStoppedGraph) {
    PlayTone();
    CRecordingRig rig;
    ASSERT_EQ(rig.Build(test::kSpeech), S_OK);
    ASSERT_EQ(rig.AttachAmr(kAmr), S_OK);
    Record(&rig, 300);
    const std::wstring host = Host(kAmr);
    EXPECT_TRUE(MoveFileW(host.c_str(), (host + L".moved").c_str())) << GetLastError();
}

TEST_F(Recording, TakesTurnsWithoutLeavingAThreadOrAHandle) {
    PlayTone();
    const auto handles = [] {
        DWORD count = 0;
        GetProcessHandleCount(GetCurrentProcess(), &count);
        return count;
    };
    DWORD before = 0;
    for (int turn = 0; turn < 12; ++turn) {
        CRecordingRig rig;
        ASSERT_EQ(rig.Build(test::kSpeech), S_OK);
        ASSERT_EQ(turn % 2 == 0 ? rig.AttachAmr(kAmr) : rig.AttachWav(kWav), S_OK);
        Record(&rig, 60);
        ASSERT_TRUE(rig.Release());
        // The first turns open what the process keeps.
        if (turn == 3) before = handles();
    }
    EXPECT_LE(handles(), before + 1);
}

}  // namespace
