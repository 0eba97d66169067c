// What recordings say of themselves: in the file, in its times, and in the handset's list.
#include "tests/system/recording_test.h"

namespace {

using test::Music;
using test::Radio;
using test::TagsOfSound;
using test::WaitFor;
using testing::HasSubstr;
using testing::StartsWith;

class RecordedTags : public test::RecordingTest {
  protected:
    void SetUp() override {
        PlayTone();
        // Far from the host's, so that nobody takes one for the other.
        std::string said;
        ASSERT_EQ(test::RunProgram(L"handset.exe", L"clock 2031-05-06 07:08", &said), 0u) << said;
    }
    // Records for a while, long enough for the station's name to have come before.
    void Record(const std::wstring& file) {
        Radio radio(handset, L"-Rec -Channel 9850");
        radio.WaitUntilShown();
        ASSERT_TRUE(WaitFor([&] {
            return Count(handset.TunerCalls(), "GetRDSData -> 0: 4 KORA ONE") > 0 ||
                   Count(handset.TunerCalls(), "GetRDSData -> 0: 0 KORA ONE") > 0;
        }));
        ASSERT_NO_FATAL_FAILURE(RecordFor(radio, 1, file));
        ASSERT_NO_FATAL_FAILURE(StopAndAnswer(radio));
    }
    static std::string Date(const std::wstring& file) { return TagsOfSound(file)["date"]; }
    SYSTEMTIME WrittenAt(const std::wstring& file) const {
        WIN32_FILE_ATTRIBUTE_DATA data = {};
        GetFileAttributesExW(handset.DevicePath(file).c_str(), GetFileExInfoStandard, &data);
        SYSTEMTIME time = {};
        FileTimeToSystemTime(&data.ftLastWriteTime, &time);
        return time;
    }
    std::string Listed() const {
        std::string said;
        EXPECT_EQ(test::RunProgram(L"handset.exe", L"recordings", &said), 0u);
        return said;
    }
};

TEST_F(RecordedTags, TitleStationFrequencyAndBeginningAreInTheFile) {
    for (const auto& [format, name] :
         {std::pair<std::uint32_t, const wchar_t*>{0, L"98.5-0000.amr"}, {2, L"98.5-0000.wav"}}) {
        SetFormat(format);
        ASSERT_NO_FATAL_FAILURE(Record(Music(name)));
        auto tags = TagsOfSound(handset.DevicePath(Music(name)));
        EXPECT_EQ(tags["title"], "KORA ONE");
        EXPECT_EQ(tags["artist"], "KORA ONE");
        EXPECT_EQ(tags["comment"], "98.5 MHz");
        EXPECT_THAT(tags["date"], StartsWith("2031-05-06T07:"));
        EXPECT_EQ(WrittenAt(Music(name)).wYear, 2031);
    }
}

TEST_F(RecordedTags, AKilledRadiosFileSaysThemToo) {
    DefineName(L"\\Killed.");
    {
        Radio radio(handset, L"-Rec -Channel 9850");
        radio.WaitUntilShown();
        ASSERT_NO_FATAL_FAILURE(RecordFor(radio, 2, L"\\Killed.amr"));
        TerminateProcess(radio.Process(), 1);
        ASSERT_TRUE(radio.WaitUntilGone());
    }
    auto tags = TagsOfSound(handset.DevicePath(L"\\Killed.amr"));
    EXPECT_EQ(tags["comment"], "98.5 MHz");
    EXPECT_THAT(tags["date"], StartsWith("2031-05-06T07:"));
    EXPECT_EQ(WrittenAt(L"\\Killed.amr").wYear, 2031);
    EXPECT_THAT(Listed(), HasSubstr("\\Killed.amr"));
    EXPECT_THAT(Listed(), HasSubstr("2031-05-06 07:"));
}

TEST_F(RecordedTags, TheHandsetListsWhatWasRecordedWithLengthSizeAndStation) {
    EXPECT_THAT(Listed(), HasSubstr("nothing was recorded yet"));
    ASSERT_NO_FATAL_FAILURE(Record(Music(L"98.5-0000.amr")));
    test::WriteWholeFile(handset.DevicePath(Music(L"letter.wav")), "to Ada");
    const auto lines = test::Lines(Listed());
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_THAT(lines[0] + lines[1], HasSubstr("0:00:0"));
    EXPECT_THAT(lines[0] + lines[1],
                HasSubstr(std::to_string(SizeOf(Music(L"98.5-0000.amr"))) + " bytes  KORA ONE, 98.5 MHz "));
    EXPECT_THAT(lines[0] + lines[1], HasSubstr("\\My Documents\\My Music\\98.5-0000.amr"));
    EXPECT_THAT(lines[0] + lines[1], HasSubstr("6 bytes  no recording of this phone"));
}

}  // namespace
