// Recordings of minutes on a fast clock: every sample and the length. KORA_RECORD_S makes them longer; an
// hour is 3600.
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "handset/capture/files/recording_tags.h"
#include "handset/controls/encoding.h"
#include "tests/support/handset_under_test.h"
#include "tests/support/host_tool.h"
#include "tests/support/wait.h"
#include "tests/unit/capture/recorded_sound.h"
#include "tests/unit/capture/recording_rig.h"

namespace {

using test::AskedFormat;
using test::CRecordingRig;

constexpr wchar_t kTake[] = L"\\take.wav";
constexpr wchar_t kHeard[] = L"\\heard.wav";
constexpr std::size_t kHeardHeader = 44;
constexpr std::size_t kTakeHeader = kHeardHeader + capture::kWavTags_bytes;
constexpr std::size_t kSecond_bytes = 44100 * 4;

std::uint64_t RecordedTime_ms() {
    const char* const seconds = std::getenv("KORA_RECORD_S");
    return 1000 * std::strtoull(seconds != nullptr ? seconds : "60", nullptr, 10);
}

void ExpectLength(double seconds, const CRecordingRig& rig, double more_s) {
    EXPECT_GE(seconds, rig.Seconds() - more_s);
    EXPECT_LE(seconds, rig.MostSeconds() + more_s);
}

class LongRecording : public test::CaptureTest {
  protected:
    std::uint64_t SizeOf(const wchar_t* file) const {
        std::error_code error;
        const auto size = std::filesystem::file_size(Host(file), error);
        return error ? 0 : size;
    }
    std::ifstream Open(const wchar_t* file, std::size_t from) const {
        std::ifstream stream(std::filesystem::path(Host(file)), std::ios::binary);
        stream.seekg(static_cast<std::streamoff>(from));
        return stream;
    }
    static std::string Read(std::ifstream* stream, std::size_t size) {
        std::string bytes(size, '\0');
        stream->read(bytes.data(), static_cast<std::streamsize>(size));
        bytes.resize(static_cast<std::size_t>(stream->gcount()));
        return bytes;
    }
    // Where in what was heard the recording begins.
    std::size_t BeginOfTake() const {
        constexpr std::size_t kSearched = 120 * kSecond_bytes;
        std::ifstream take = Open(kTake, kTakeHeader), heard = Open(kHeard, kHeardHeader);
        const std::string first = Read(&take, kSecond_bytes), where = Read(&heard, kSearched);
        const auto found = std::search(where.begin(), where.end(), first.begin(), first.end());
        return found == where.end() ? std::string::npos : static_cast<std::size_t>(found - where.begin());
    }
};

TEST_F(LongRecording, HoldsEverySampleThatTheDeviceGaveOnceAndInItsPlace) {
    // Noise repeats nowhere, so that every sample has one place.
    panel::WriteWholeFile(Host(L"\\Windows\\band.ini"), "[9000]\nlevel=20\nstereo=1\nprogramme=noise:\n");
    handset::SetStateString(L"SoundLog", kHeard);
    PlayTone();
    CRecordingRig rig;
    ASSERT_EQ(rig.Build({44100, 2, 16}), S_OK);
    ASSERT_EQ(rig.AttachWav(kTake), S_OK);
    ASSERT_EQ(rig.Start(), S_OK);
    test::LetPass(RecordedTime_ms());
    ASSERT_EQ(rig.Stop(), S_OK);
    const std::uint64_t size = SizeOf(kTake) - kTakeHeader;
    ExpectLength(static_cast<double>(size) / kSecond_bytes, rig, 1.5 / 44100);

    const std::size_t begin = BeginOfTake();
    ASSERT_NE(begin, std::string::npos);
    EXPECT_EQ(begin % 4, 0u);
    ASSERT_TRUE(test::WaitFor([&] { return SizeOf(kHeard) >= kHeardHeader + begin + size; }));
    std::ifstream take = Open(kTake, kTakeHeader), heard = Open(kHeard, kHeardHeader + begin);
    for (std::uint64_t at = 0; at < size; at += kSecond_bytes) {
        const std::string recorded = Read(&take, kSecond_bytes);
        const std::string wanted = Read(&heard, recorded.size());
        const auto differs = std::mismatch(recorded.begin(), recorded.end(), wanted.begin(), wanted.end());
        ASSERT_EQ(differs.first - recorded.begin(), static_cast<std::ptrdiff_t>(recorded.size()))
            << "after " << at << " bytes of " << size << "; heard were " << wanted.size();
    }
    RecordProperty("compared_bytes", std::to_string(size));
}

TEST_F(LongRecording, IsAsLongAsTheTimeBetweenStartAndStop) {
    PlayTone();
    for (const AskedFormat& format : {AskedFormat{8000, 1, 0}, AskedFormat{22050, 2, 16}}) {
        CRecordingRig rig;
        ASSERT_EQ(rig.Build(format), S_OK);
        ASSERT_EQ(rig.AttachWav(kTake), S_OK);
        ASSERT_EQ(rig.Start(), S_OK);
        test::LetPass(20000);
        ASSERT_EQ(rig.Stop(), S_OK);
        const auto sound = test::ReadWav(test::Bytes(Host(kTake)));
        EXPECT_TRUE(sound.whole);
        ExpectLength(sound.Seconds(), rig, 1.5 / format.rate_Hz);
    }
    if (!test::HostToolsAvailable()) return;
    CRecordingRig rig;
    ASSERT_EQ(rig.Build(test::kSpeech), S_OK);
    ASSERT_EQ(rig.AttachAmr(L"\\take.amr"), S_OK);
    ASSERT_EQ(rig.Start(), S_OK);
    test::LetPass(RecordedTime_ms());
    ASSERT_EQ(rig.Stop(), S_OK);
    const test::SoundFile file = test::ProbeSound(Host(L"\\take.amr"));
    EXPECT_EQ(file.complaints, "");
    // A frame that the stop cuts off is not there.
    EXPECT_GE(file.length_s, rig.Seconds() - 0.0201);
    EXPECT_LE(file.length_s, rig.MostSeconds() + 0.0001);
}

}  // namespace
