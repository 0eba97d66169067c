// The files that recordings leave, opened by programs of the machine that know nothing of the radio.
#include <cmath>
#include <cstring>
#include <filesystem>
#include <map>

#include "tests/bench/process_usage.h"
#include "tests/support/process_counts.h"
#include "tests/system/recording_test.h"

namespace {

using test::HostPath;
using test::Lines;
using test::ProbeSound;
using test::Radio;
using test::ReadWholeFile;
using test::RunOnHost;
using test::SoundFile;
using test::WaitFor;
using test::WriteWholeFile;
using testing::Each;
using testing::HasSubstr;
using testing::Not;

constexpr WCHAR kMusic[] = L"\\My Documents\\My Music\\";
constexpr char kNameFailed[] = "m_pFileSink->SetFileName() failed \n";

// Share of the sound's power that one frequency has, and the frequency of the most.
struct Tone {
    double frequency_Hz = 0;
    double share = 0;
};

class RecordingFiles : public test::RecordingTest {
  protected:
    void SetUp() override {
        handset.WriteBand("[band]\nwrap=1\n[9850]\nlevel=100\nstereo=1\nps=KORA ONE\nprogramme=tone:440\n");
    }

    std::wstring Music(const wchar_t* name) const { return kMusic + std::wstring(name); }

    // Every file of the device outside \Windows, with its bytes.
    std::map<std::wstring, std::string> DeviceFiles() const {
        std::map<std::wstring, std::string> files;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(handset.Root())) {
            const std::wstring path = entry.path().wstring().substr(handset.Root().size());
            const bool log =
                path == L"\\tuner.log" || path.rfind(L"\\Windows", 0) == 0 || path == L"\\KORA.vol";
            if (entry.is_regular_file() && !log) files[path] = ReadWholeFile(entry.path().wstring());
        }
        return files;
    }

    // The file's sound, decoded to one channel of 16 bits at its own rate.
    std::vector<std::int16_t> Decode(const std::wstring& file) const {
        const std::wstring raw = handset.DevicePath(L"\\decoded.raw");
        RunOnHost("ffmpeg -v quiet -y -i " + HostPath(handset.DevicePath(file)) + " -f s16le -ac 1 " +
                  HostPath(handset.DevicePath(L"\\")) + "decoded.raw");
        const std::string bytes = ReadWholeFile(raw);
        DeleteFileW(raw.c_str());
        std::vector<std::int16_t> samples(bytes.size() / 2);
        std::memcpy(samples.data(), bytes.data(), samples.size() * 2);
        return samples;
    }
    double DecodedLength(const std::wstring& file, int rate_Hz) const {
        return static_cast<double>(Decode(file).size()) / rate_Hz;
    }

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
    ASSERT_TRUE(WaitFor([&] { return GetTickCount64() - start >= 4000; }));
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
    const std::vector<std::int16_t> samples = Decode(file);
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
    SetClockRate(10);
    Radio radio(handset, L"-Rec -Channel 9850 -Duration 1");
    ASSERT_TRUE(radio.WaitUntilGone(60000));
    const SoundFile sound = ProbeSound(handset.DevicePath(Music(L"98.5-0000.amr")));
    EXPECT_EQ(sound.codec, "amr_nb");
    EXPECT_EQ(sound.complaints, "");
    EXPECT_NEAR(sound.length_s, 60, 3);
}

TEST_F(RecordingFiles, ClosedByTheHeadsetTheFileIsWhole) {
    SetFormat(1);
    Radio radio(handset, L"-Rec -Channel 9850");
    radio.WaitUntilShown();
    ASSERT_NO_FATAL_FAILURE(RecordFor(radio, 1, Music(L"98.5-0000.wav")));
    handset.PlugHeadset(false);
    ASSERT_TRUE(radio.WaitUntilGone(40000));
    const SoundFile sound = ProbeSound(handset.DevicePath(Music(L"98.5-0000.wav")));
    EXPECT_EQ(sound.complaints, "");
    EXPECT_GT(sound.length_s, 2);
}

// --- Targets that cannot be written -----------------------------------------------------------------------

struct BadTarget {
    const char* name;
    std::wstring defined;
    bool exists;  // it is asked about
};

class UnwritableTarget : public RecordingFiles, public testing::WithParamInterface<BadTarget> {};

TEST_P(UnwritableTarget, FailsSilentlyTheRadioPlaysOnAndNoOtherFileIsTouched) {
    std::filesystem::create_directories(handset.DevicePath(L"\\Folder.amr"));
    WriteWholeFile(handset.DevicePath(L"\\Locked.amr"), "read only");
    SetFileAttributesW(handset.DevicePath(L"\\Locked.amr").c_str(), FILE_ATTRIBUTE_READONLY);
    DefineName(GetParam().defined);
    const auto before = DeviceFiles();
    {
        Radio radio(handset, L"-Rec -Channel 9850");
        radio.WaitUntilShown();
        TapRecord(radio);
        if (GetParam().exists) {
            const HWND question = radio.WaitForBox(L"FM");
            ASSERT_NE(question, nullptr);
            Radio::Answer(question, IDYES);
        }
        ASSERT_TRUE(WaitForTrace(kNameFailed));
        ASSERT_TRUE(WaitFor([&] { return Count(Lines(handset.Trace()), "FM: disk space") >= 3; }));
        radio.Tap(210, 250);
        EXPECT_TRUE(WaitForCall("SetSpeaker 1 -> 0"));
        const ULONGLONG stop = GetTickCount64();
        ASSERT_NO_FATAL_FAILURE(StopAndAnswer(radio));
        EXPECT_LT(GetTickCount64() - stop, 10000u) << "the event thread was waited for";
        EXPECT_TRUE(WaitFor([&] { return IsWindowVisible(radio.ListView()); }));
    }
    EXPECT_EQ(DeviceFiles(), before);
    SetFileAttributesW(handset.DevicePath(L"\\Locked.amr").c_str(), FILE_ATTRIBUTE_NORMAL);
}

INSTANTIATE_TEST_SUITE_P(Names, UnwritableTarget,
                         testing::Values(BadTarget{"ReadOnlyFile", L"\\Locked.", true},
                                         BadTarget{"Folder", L"\\Folder.", true},
                                         BadTarget{"MissingFolder", L"\\no such folder\\Today.", false},
                                         BadTarget{"InvalidCharacters", L"\\To<da>y|\".", false},
                                         BadTarget{"TooLong", L"\\" + std::wstring(259, L'n'), false}),
                         [](const testing::TestParamInfo<BadTarget>& row) { return row.param.name; });

// --- Space and card while it records ----------------------------------------------------------------------

TEST_F(RecordingFiles, WhenTheSpaceRunsOutItStopsSaysSoAndTheFilePlays) {
    Radio radio(handset, L"-Rec -Channel 9850");
    radio.WaitUntilShown();
    ASSERT_NO_FATAL_FAILURE(RecordFor(radio, 2, Music(L"98.5-0000.amr")));
    handset.SetState(L"ObjectStoreFree", 999999);
    HWND box = radio.WaitForBox(L"FM");
    ASSERT_NE(box, nullptr);
    EXPECT_THAT(Radio::BoxText(box), HasSubstr(L"98.5-0000.amr"));
    Radio::Answer(box, IDOK);
    ASSERT_TRUE(WaitFor([&] {
        box = radio.Box(L"FM");
        return box != nullptr && Radio::BoxText(box) == L"Not enough free storage space for a recording.";
    }));
    Radio::Answer(box, IDOK);
    EXPECT_TRUE(WaitFor([&] { return radio.Box(L"FM") == nullptr && IsWindowVisible(radio.ListView()); }));
    const SoundFile sound = ProbeSound(handset.DevicePath(Music(L"98.5-0000.amr")));
    EXPECT_EQ(sound.complaints, "");
    EXPECT_GT(sound.length_s, 2);
}

TEST_F(RecordingFiles, APulledCardEndsTheWritingTheRadioPlaysOnAndTheFilePlaysOnceTheCardIsBack) {
    DefineName(L"\\Storage Card\\Today.");
    Radio radio(handset, L"-Rec -Channel 9850");
    radio.WaitUntilShown();
    ASSERT_NO_FATAL_FAILURE(RecordFor(radio, 2, L"\\Storage Card\\Today.amr"));
    handset.SetState(L"StorageCard", 0);
    EXPECT_TRUE(WaitForTrace("FM: *** SD Card Removed while Recording, Stop Recording!\n"));
    const HWND box = radio.WaitForBox(L"FM");
    ASSERT_NE(box, nullptr);
    Radio::Answer(box, IDOK);
    radio.Tap(210, 250);
    EXPECT_TRUE(WaitForCall("SetSpeaker 1 -> 0"));
    handset.SetState(L"StorageCard", 1);
    const SoundFile sound = ProbeSound(handset.DevicePath(L"\\Storage Card\\Today.amr"));
    EXPECT_EQ(sound.codec, "amr_nb");
    EXPECT_GT(sound.length_s, 1);
}

TEST_F(RecordingFiles, AKilledRadioLeavesAFileThatPlaysUpToTheLastSecond) {
    // Moments spread over the fragments of a recording.
    for (const int moment_ms : {700, 1300, 2100, 2900}) {
        for (const Format& format : {kFormats[0], kFormats[2]}) {
            SetFormat(format.setting);
            DefineName(L"\\Killed.");
            DeleteFileW(handset.DevicePath(L"\\Killed.amr").c_str());
            DeleteFileW(handset.DevicePath(L"\\Killed.wav").c_str());
            const std::wstring file = L"\\Killed" + std::wstring(format.extension);
            double played_s = 0;
            {
                Radio radio(handset, L"-Rec -Channel 9850");
                radio.WaitUntilShown();
                TapRecord(radio);
                ASSERT_TRUE(WaitFor([&] { return Exists(file); }));
                const ULONGLONG start = GetTickCount64();
                WaitFor([&] { return GetTickCount64() - start >= static_cast<ULONGLONG>(moment_ms); });
                TerminateProcess(radio.Process(), 1);
                played_s = static_cast<double>(GetTickCount64() - start) / 1000;
                ASSERT_TRUE(radio.WaitUntilGone());
            }
            EXPECT_GE(DecodedLength(file, format.rate_Hz), played_s - 1)
                << format.name << " at " << moment_ms;
        }
    }
}

// The two interfaces that a recording leaves unreleased keep its graph; everything else is given back.
TEST_F(RecordingFiles, ManyRecordingsInARowLeaveNoThreadBehindAndTheSameFewHandlesEach) {
    constexpr std::size_t kRecordings = 14;
    constexpr std::size_t kWarm = 3;
    // What stays with a recording: the seeking interface's graph with its filters and, under Wine, one event
    // for every graph that is made; and a database for each look-up of a name in a group without channels.
    constexpr std::size_t kHandlesKept = 8;
    // Threads and files that end a moment after the last recording.
    constexpr std::size_t kHandlesEnding = 6;
    // About 0.28 MB; the heap grows in steps of up to a megabyte.
    constexpr double kMemoryKept_MB = 0.35;
    constexpr double kHeapSteps_MB = 2;
    Radio radio(handset, L"-Rec -Channel 9850");
    radio.WaitUntilShown();
    const bench::ProcessUsage usage(radio.Process(), handset.DevicePath(L"\\Windows\\UI.exe"));
    std::vector<std::size_t> handles, threads;
    std::vector<double> memory_MB;
    for (std::size_t recording = 0; recording < kRecordings; ++recording) {
        const int starts = Count(Lines(handset.Trace()), "Found required structure");
        TapRecord(radio);
        ASSERT_TRUE(
            WaitFor([&] { return Count(Lines(handset.Trace()), "Found required structure") == starts + 2; }));
        ASSERT_NO_FATAL_FAILURE(StopAndAnswer(radio));
        ASSERT_TRUE(WaitFor([&] { return IsWindowVisible(radio.ListView()); }));
        handles.push_back(test::HandlesOf(radio.ProcessId()));
        threads.push_back(test::ThreadsOf(radio.ProcessId()));
        memory_MB.push_back(usage.Private_MB());
    }
    EXPECT_TRUE(WaitFor([&] { return test::ThreadsOf(radio.ProcessId()) <= threads[kWarm]; }));
    constexpr std::size_t kCounted = kRecordings - 1 - kWarm;
    EXPECT_LE(handles.back() - handles[kWarm], kCounted * kHandlesKept + kHandlesEnding);
    EXPECT_LE(memory_MB.back() - memory_MB[kWarm], kCounted * kMemoryKept_MB + kHeapSteps_MB);
    RecordProperty("handles_a_recording", std::to_string((handles.back() - handles[kWarm]) / kCounted));
    RecordProperty("kB_a_recording", std::to_string((memory_MB.back() - memory_MB[kWarm]) * 1024 / kCounted));
}

}  // namespace
