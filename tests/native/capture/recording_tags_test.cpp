// What a recording says of itself, as ffprobe reads it.
#include "handset/capture/files/recording_tags.h"

#include <gtest/gtest.h>

#include "handset/capture/files/amr_file_writer.h"
#include "handset/capture/files/wav_writer.h"
#include "tests/native/capture/media_probe.h"
#include "tests/native/capture/memory_file.h"

namespace {

using capture::RecordingTags;
using capture::TagsOf;

const RecordingTags kTags{"Z\xC3\xBCri \"Jazz\" \xF0\x9F\x93\xBB", "ZUERI", "103.7 MHz",
                          "2026-11-23T09:58:00"};

void ExpectTags(const std::vector<std::uint8_t>& bytes, const RecordingTags& tags) {
    const auto read = test::ProbeTags(bytes);
    const auto value = [&](const char* name) {
        const auto found = read.find(name);
        return found == read.end() ? std::string() : found->second;
    };
    EXPECT_EQ(value("title"), tags.title);
    EXPECT_EQ(value("artist"), tags.station);
    EXPECT_EQ(value("comment"), tags.frequency);
    EXPECT_EQ(value("date"), tags.date);
    EXPECT_EQ(value("encoder"), "Kora");
}

const std::vector<std::uint8_t> kFrames(32 * 100, 0x3C);  // two seconds of AMR

TEST(RecordingTags, AreInACompleteAmrFile) {
    test::CMemoryFile file;
    capture::CAmrFileWriter writer(3'870'000'000);
    writer.Tag(kTags);
    ASSERT_TRUE(writer.Begin(&file) && writer.Write(kFrames.data(), kFrames.size()) && writer.Finish());
    ExpectTags(file.bytes, kTags);
    EXPECT_NEAR(test::Probe(file.bytes).length_s, 2, 1e-6);
}

TEST(RecordingTags, AreInAnAmrFileWhoseWriterWasKilledAtAnyMoment) {
    test::CMemoryFile file;
    file.remember = true;
    capture::CAmrFileWriter writer(3'870'000'000);
    writer.Tag(kTags);
    ASSERT_TRUE(writer.Begin(&file) && writer.Write(kFrames.data(), kFrames.size()));
    for (const auto& state : file.states) ExpectTags(state, kTags);
}

TEST(RecordingTags, AreInAWavFileCompleteOrNot) {
    const std::vector<std::uint8_t> sound(16000, 1);
    test::CMemoryFile file;
    file.remember = true;
    capture::CWavWriter writer({8000, 1, 16});
    writer.Tag(kTags);
    ASSERT_TRUE(writer.Begin(&file) && writer.Write(sound.data(), sound.size()) && writer.Finish());
    for (const auto& state : file.states) ExpectTags(state, kTags);
    EXPECT_DOUBLE_EQ(test::Probe(file.bytes).length_s, 1);
    EXPECT_EQ(file.bytes.size(), 44 + capture::kWavTags_bytes + sound.size());
    std::string complaints;
    EXPECT_EQ(test::Decode(file.bytes, &complaints).size(), 8000u);
    EXPECT_EQ(complaints, "");
}

TEST(RecordingTags, WhatIsKnownOnlyAtTheEndIsInTheCompleteFile) {
    const RecordingTags early{"98.5 MHz", "", "98.5 MHz", "2026-11-23T09:58:00"};
    const RecordingTags late{"KORA ONE", "KORA ONE", "98.5 MHz", "2026-11-23T09:58:00"};
    const std::vector<std::uint8_t> sound(1600, 1);
    test::CMemoryFile amrFile, wavFile;
    capture::CAmrFileWriter amr(3'870'000'000);
    capture::CWavWriter wav({8000, 1, 16});
    amr.Tag(early);
    wav.Tag(early);
    ASSERT_TRUE(amr.Begin(&amrFile) && amr.Write(kFrames.data(), kFrames.size()));
    ASSERT_TRUE(wav.Begin(&wavFile) && wav.Write(sound.data(), sound.size()));
    amr.Tag(late);
    wav.Tag(late);
    ASSERT_TRUE(amr.Finish() && wav.Finish());
    ExpectTags(amrFile.bytes, late);
    ExpectTags(wavFile.bytes, late);
}

TEST(RecordingTags, ATextThatIsTooLongForAWavFileIsCutAtAWholeCharacter) {
    RecordingTags longest;
    for (int i = 0; i < 300; ++i) longest.title += "\xE4\xB8\xAD";
    longest.station = longest.frequency = longest.date = std::string(500, 'x');
    const std::vector<std::uint8_t> sound(1600, 1);
    test::CMemoryFile file;
    capture::CWavWriter writer({8000, 1, 16});
    writer.Tag(longest);
    ASSERT_TRUE(writer.Begin(&file) && writer.Write(sound.data(), sound.size()) && writer.Finish());
    RecordingTags cut;
    for (int i = 0; i < 66; ++i) cut.title += "\xE4\xB8\xAD";
    cut.station = cut.frequency = cut.date = std::string(200, 'x');
    ExpectTags(file.bytes, cut);
}

TEST(RecordingTags, TheChannelInAnAutomaticNameIsTheTitle) {
    const capture::TunedTo kOne{9850, "KORA ONE"}, kUnknown{9850, ""};
    struct Row {
        const char* path;
        capture::TunedTo tuned;
        const char* title;
    };
    const Row kRows[] = {
        {"\\My Documents\\My Music\\Kora One-0000.amr", kOne, "Kora One"},
        {"\\My Documents\\My Music\\Talk-Show-12345.wav", kOne, "Talk-Show"},
        {"\\My Documents\\My Music\\98.5-0000.amr", kOne, "KORA ONE"},
        {"\\My Documents\\My Music\\98.5-0000.amr", kUnknown, "98.5 MHz"},
        {"\\Storage Card\\evening.wav", kOne, "KORA ONE"},
        {"\\Storage Card\\eveningamr", kUnknown, "98.5 MHz"},
        {"\\Storage Card\\x-12.wav", kUnknown, "98.5 MHz"},
        {"\\Kora One-0000.amr", {}, "Kora One"},
        {"", {}, ""},
        {"-", {}, ""},
    };
    for (const Row& row : kRows) {
        const RecordingTags tags = TagsOf(row.path, row.tuned, "now");
        EXPECT_EQ(tags.title, row.title) << row.path;
        EXPECT_EQ(tags.station, row.tuned.station);
        EXPECT_EQ(tags.frequency, row.tuned.channel_10kHz == 0 ? "" : "98.5 MHz");
        EXPECT_EQ(tags.date, "now");
    }
}

}  // namespace
