// Recordings to where they cannot be written, or no longer.
#include <filesystem>
#include <map>

#include "tests/system/recording_test.h"

namespace {

using test::Lines;
using test::Music;
using test::ProbeSound;
using test::Radio;
using test::ReadWholeFile;
using test::SoundFile;
using test::WaitFor;
using test::WriteWholeFile;
using testing::HasSubstr;

constexpr char kNameFailed[] = "m_pFileSink->SetFileName() failed \n";

class RecordingTargets : public test::RecordingTest {
  protected:
    void SetUp() override {
        PlayTone();
        Hurry(4);
    }

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
};

struct BadTarget {
    const char* name;
    std::wstring defined;
    bool exists;  // it is asked about
};

class UnwritableTarget : public RecordingTargets, public testing::WithParamInterface<BadTarget> {};

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

TEST_F(RecordingTargets, WhenTheSpaceRunsOutItStopsSaysSoAndTheFilePlays) {
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

TEST_F(RecordingTargets, APulledCardEndsTheWritingTheRadioPlaysOnAndTheFilePlaysOnceTheCardIsBack) {
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

}  // namespace
