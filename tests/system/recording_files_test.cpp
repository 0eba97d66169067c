// The files that recordings leave, opened by programs of the machine that know nothing of the radio.
#include "tests/support/heard_tone.h"
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

class RecordingFiles : public test::RecordingTest {
  protected:
    void SetUp() override { PlayTone(); }
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
    if (test::OnTheEther()) {
        ASSERT_TRUE(WaitForLevel(45));
    }
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
    const test::Tone tone =
        test::ToneAt(samples, GetParam().rate_Hz, 0.5, {Tone_Hz() - 20, Tone_Hz() + 20, 1});
    EXPECT_NEAR(tone.frequency_Hz, Tone_Hz(), 1.5);
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
    Hurry(20);
    Radio radio(handset, L"-Rec -Channel 9850 -Duration 1");
    ASSERT_TRUE(radio.WaitUntilGone(test::kBookedMinute_ms));
    const SoundFile sound = ProbeSound(handset.DevicePath(Music(L"98.5-0000.amr")));
    EXPECT_EQ(sound.codec, "amr_nb");
    EXPECT_EQ(sound.complaints, "");
    EXPECT_NEAR(sound.length_s, 60, 3);
}

// Whether no program writes it any more.
bool IsClosed(const std::wstring& hostPath) {
    const HANDLE alone = CreateFileW(hostPath.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    if (alone == INVALID_HANDLE_VALUE) return false;
    CloseHandle(alone);
    return true;
}

TEST_F(RecordingFiles, ABookedRecordingThatBeginsDuringAnotherEndsThatOneFirst) {
    Radio radio(handset, L"-Rec -Channel 9850 -Duration 1");
    radio.WaitUntilShown();
    ASSERT_NO_FATAL_FAILURE(TapRecord(radio));
    ASSERT_TRUE(WaitFor([&] { return SizeOf(Music(L"98.5-0000.amr")) > 1000; }));
    EXPECT_FALSE(IsClosed(handset.DevicePath(Music(L"98.5-0000.amr"))));
    ASSERT_TRUE(WaitFor([&] { return SizeOf(Music(L"98.5-0001.amr")) > 1000; }));
    EXPECT_TRUE(IsClosed(handset.DevicePath(Music(L"98.5-0000.amr"))));
    ASSERT_NO_FATAL_FAILURE(StopAndAnswer(radio));
    for (const wchar_t* file : {L"98.5-0000.amr", L"98.5-0001.amr"}) {
        EXPECT_EQ(ProbeSound(handset.DevicePath(Music(file))).complaints, "");
    }
}

TEST_F(RecordingFiles, ClosedByTheHeadsetTheFileIsWhole) {
    SetFormat(1);
    Hurry(4);
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
