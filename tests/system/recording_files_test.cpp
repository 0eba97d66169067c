// The files that recordings leave, opened by programs of the machine that know nothing of the radio.
#include <cmath>

#include "tests/system/recording_test.h"

namespace {

using test::Music;
using test::ProbeSound;
using test::Radio;
using test::ReadWholeFile;
using test::SoundFile;
using test::WaitFor;
using test::WriteWholeFile;
using testing::HasSubstr;

// Share of the sound's power that one frequency has, and the frequency of the most.
struct Tone {
    double frequency_Hz = 0;
    double share = 0;
};

class RecordingFiles : public test::RecordingTest {
  protected:
    void SetUp() override { PlayTone(); }

    static double PowerAt(const std::vector<std::int16_t>& samples, double frequency_Hz, int rate_Hz) {
        double real = 0, imaginary = 0;
        const double step = 2 * 3.14159265358979 * frequency_Hz / rate_Hz;
        for (std::size_t at = 0; at < samples.size(); ++at) {
            const double angle = step * static_cast<double>(at);
            real += samples[at] * std::cos(angle);
            imaginary += samples[at] * std::sin(angle);
        }
        const double count = static_cast<double>(samples.size());
        return 2 * (real * real + imaginary * imaginary) / (count * count);
    }
    // The middle second of the sound.
    static Tone ToneOf(const std::vector<std::int16_t>& all, int rate_Hz) {
        const std::size_t half = static_cast<std::size_t>(rate_Hz) / 2;
        if (all.size() < 2 * half) return {};
        const auto middle = all.begin() + static_cast<std::ptrdiff_t>(all.size() / 2);
        const std::vector<std::int16_t> samples(middle - static_cast<std::ptrdiff_t>(half),
                                                middle + static_cast<std::ptrdiff_t>(half));
        double total = 0;
        for (const std::int16_t sample : samples) total += static_cast<double>(sample) * sample;
        total /= static_cast<double>(samples.size());
        Tone tone;
        double most = 0;
        for (double frequency = 400; frequency <= 480; frequency += 1) {
            const double power = PowerAt(samples, frequency, rate_Hz);
            if (power > most) {
                most = power;
                tone.frequency_Hz = frequency;
            }
        }
        tone.share = total > 0 ? most / total : 0;
        return tone;
    }
};

struct Format {
    const char* name;
    std::uint32_t setting;
    const wchar_t* extension;
    const char* container;
    const char* codec;
    int rate_Hz;
    int channels;
    double share;  // of the tone in the decoded sound
};

// clang-format off
const Format kFormats[] = {
    {"Amr",   0, L".amr", "mov", "amr_nb",    8000,  1, 0.90},
    {"Wav8",  1, L".wav", "wav", "pcm_s16le", 8000,  1, 0.99},
    {"Wav22", 2, L".wav", "wav", "pcm_s16le", 22050, 2, 0.99},
};
// clang-format on

class RecordedFile : public RecordingFiles, public testing::WithParamInterface<Format> {};

TEST_P(RecordedFile, IsOfItsKindAsLongAsItWasRecordedAndSoundsLikeTheProgramme) {
    SetFormat(GetParam().setting);
    Radio radio(handset, L"-Rec -Channel 9850");
    radio.WaitUntilShown();
    const std::wstring file = Music(L"98.5-0000") + GetParam().extension;
    ASSERT_NO_FATAL_FAILURE(TapRecord(radio));
    ASSERT_TRUE(WaitForTrace("[FM_EnCoder]iIndex : 2\n"));
    const ULONGLONG start = GetTickCount64();
    ASSERT_TRUE(WaitFor([&] { return Exists(file); }));
    ASSERT_TRUE(WaitFor([&] { return GetTickCount64() - start >= 2500; }));
    TapRecord(radio);
    ASSERT_TRUE(WaitForTrace("FM: stop_record: bByPreRecord = 0\n"));
    const double recorded_s = static_cast<double>(GetTickCount64() - start) / 1000;
    const HWND box = radio.WaitForBox(L"FM");
    ASSERT_NE(box, nullptr);
    EXPECT_THAT(Radio::BoxText(box), HasSubstr(file));
    Radio::Answer(box, IDOK);

    const SoundFile sound = ProbeSound(handset.DevicePath(file));
    EXPECT_EQ(sound.container, GetParam().container);
    EXPECT_EQ(sound.codec, GetParam().codec);
    EXPECT_EQ(sound.rate_Hz, GetParam().rate_Hz);
    EXPECT_EQ(sound.channels, GetParam().channels);
    EXPECT_EQ(sound.complaints, "");
    EXPECT_NEAR(sound.length_s, recorded_s, 0.4);
    const auto samples = test::DecodeSound(handset.DevicePath(file), test::Channels::kMean);
    EXPECT_NEAR(static_cast<double>(samples.size()) / GetParam().rate_Hz, sound.length_s, 0.05);
    const Tone tone = ToneOf(samples, GetParam().rate_Hz);
    EXPECT_NEAR(tone.frequency_Hz, 440, 1.5);
    EXPECT_GT(tone.share, GetParam().share);
}

INSTANTIATE_TEST_SUITE_P(Formats, RecordedFile, testing::ValuesIn(kFormats),
                         [](const testing::TestParamInfo<Format>& row) { return row.param.name; });

TEST_F(RecordingFiles, RecordingsOfOneStationAreNumberedAndLeaveEachOtherAlone) {
    Radio radio(handset, L"-Rec -Channel 9850");
    radio.WaitUntilShown();
    ASSERT_NO_FATAL_FAILURE(RecordFor(radio, 1, Music(L"98.5-0000.amr")));
    ASSERT_NO_FATAL_FAILURE(StopAndAnswer(radio));
    const std::string first = ReadWholeFile(handset.DevicePath(Music(L"98.5-0000.amr")));
    EXPECT_GT(first.size(), 500u);
    ASSERT_NO_FATAL_FAILURE(RecordFor(radio, 1, Music(L"98.5-0001.amr")));
    ASSERT_NO_FATAL_FAILURE(StopAndAnswer(radio));
    EXPECT_EQ(ReadWholeFile(handset.DevicePath(Music(L"98.5-0000.amr"))), first);
    EXPECT_EQ(ProbeSound(handset.DevicePath(Music(L"98.5-0001.amr"))).codec, "amr_nb");
}

TEST_F(RecordingFiles, AnExistingFileIsKeptWhenTheUserSaysNoAndReplacedWhenHeSaysYes) {
    DefineName(L"\\Today.");
    WriteWholeFile(handset.DevicePath(L"\\Today.amr"), "precious");
    Radio radio(handset, L"-Rec -Channel 9850");
    radio.WaitUntilShown();
    TapRecord(radio);
    HWND box = radio.WaitForBox(L"FM");
    ASSERT_NE(box, nullptr);
    EXPECT_THAT(Radio::BoxText(box), HasSubstr(L"\\Today.amr"));
    Radio::Answer(box, IDNO);
    ASSERT_TRUE(WaitFor([&] { return radio.Box(L"FM") == nullptr; }));
    EXPECT_EQ(ReadWholeFile(handset.DevicePath(L"\\Today.amr")), "precious");

    TapRecord(radio);
    box = radio.WaitForBox(L"FM");
    ASSERT_NE(box, nullptr);
    Radio::Answer(box, IDYES);
    ASSERT_TRUE(WaitFor([&] { return SizeOf(L"\\Today.amr") > 1000; }));
    ASSERT_NO_FATAL_FAILURE(StopAndAnswer(radio));
    EXPECT_EQ(ProbeSound(handset.DevicePath(L"\\Today.amr")).codec, "amr_nb");
}

TEST_F(RecordingFiles, ABookedRecordingLastsItsMinute) {
    SetClockRate(20);
    Radio radio(handset, L"-Rec -Channel 9850 -Duration 1");
    ASSERT_TRUE(radio.WaitUntilGone(60000));
    const SoundFile sound = ProbeSound(handset.DevicePath(Music(L"98.5-0000.amr")));
    EXPECT_EQ(sound.codec, "amr_nb");
    EXPECT_EQ(sound.complaints, "");
    EXPECT_NEAR(sound.length_s, 60, 3);
}

TEST_F(RecordingFiles, ClosedByTheHeadsetTheFileIsWhole) {
    SetFormat(1);
    SetClockRate(4);
    Radio radio(handset, L"-Rec -Channel 9850");
    radio.WaitUntilShown();
    ASSERT_NO_FATAL_FAILURE(RecordFor(radio, 1, Music(L"98.5-0000.wav")));
    handset.PlugHeadset(false);
    ASSERT_TRUE(radio.WaitUntilGone(40000));
    const SoundFile sound = ProbeSound(handset.DevicePath(Music(L"98.5-0000.wav")));
    EXPECT_EQ(sound.complaints, "");
    EXPECT_GT(sound.length_s, 2);
}

}  // namespace
