// The facts of recordings, whole, cut off and damaged.
#include "handset/capture/files/recording_facts.h"

#include <gtest/gtest.h>

#include <random>

#include "handset/capture/files/amr_file_writer.h"
#include "handset/capture/files/wav_writer.h"
#include "tests/native/capture/memory_file.h"
#include "tests/native/fuzz_inputs.h"

namespace {

using capture::ReadFacts;
using capture::RecordingTags;

const RecordingTags kTags{"Kora One", "KORA ONE", "98.5 MHz", "2026-11-23T09:58:00"};

class MemoryBytes : public capture::IFileBytes {
  public:
    explicit MemoryBytes(const std::vector<std::uint8_t>& bytes) : bytes_(bytes) {}
    std::uint64_t Size() const override { return bytes_.size(); }
    bool ReadAt(std::uint64_t offset, void* data, std::size_t size) override {
        if (offset > bytes_.size() || size > bytes_.size() - offset) return false;
        std::copy_n(bytes_.begin() + static_cast<std::ptrdiff_t>(offset), size,
                    static_cast<std::uint8_t*>(data));
        return true;
    }

  private:
    const std::vector<std::uint8_t>& bytes_;
};

std::optional<capture::RecordingFacts> FactsOf(const std::vector<std::uint8_t>& bytes) {
    MemoryBytes file(bytes);
    return ReadFacts(file);
}

void ExpectFacts(const std::vector<std::uint8_t>& bytes, const char* kind, double length_s) {
    const auto facts = FactsOf(bytes);
    ASSERT_TRUE(facts);
    EXPECT_STREQ(facts->kind, kind);
    EXPECT_NEAR(facts->length_s, length_s, 1e-9);
    EXPECT_EQ(facts->tags.title, kTags.title);
    EXPECT_EQ(facts->tags.station, kTags.station);
    EXPECT_EQ(facts->tags.frequency, kTags.frequency);
    EXPECT_EQ(facts->tags.date, kTags.date);
}

struct Files {
    test::CMemoryFile amr, wav;
    std::vector<std::uint8_t> killedAmr;

    Files() {
        const std::vector<std::uint8_t> frames(32 * 165, 0x3C), sound(16000, 1);
        capture::CAmrFileWriter amrWriter(3'870'000'000);
        capture::CWavWriter wavWriter({8000, 1, 16});
        amrWriter.Tag(kTags);
        wavWriter.Tag(kTags);
        EXPECT_TRUE(amrWriter.Begin(&amr) && amrWriter.Write(frames.data(), frames.size()));
        killedAmr = amr.bytes;
        EXPECT_TRUE(amrWriter.Finish());
        EXPECT_TRUE(wavWriter.Begin(&wav) && wavWriter.Write(sound.data(), sound.size()) &&
                    wavWriter.Finish());
    }
};

TEST(RecordingFacts, OfCompleteFilesAreTheirLengthAndTheirTags) {
    const Files files;
    ExpectFacts(files.amr.bytes, "AMR", 3.3);
    ExpectFacts(files.wav.bytes, "WAV", 1);
}

TEST(RecordingFacts, OfAFileWhoseWriterWasKilledAreThoseOfTheSoundInIt) {
    const Files files;
    // Fragments of half a second; what had not filled one is lost.
    ExpectFacts(files.killedAmr, "AMR", 3);
    auto half = files.wav.bytes;
    half.resize(half.size() - 8000);
    ExpectFacts(half, "WAV", 0.5);
}

TEST(RecordingFacts, AFileWithoutTagsHasItsLength) {
    test::CMemoryFile file;
    capture::CWavWriter writer({8000, 1, 8});
    const std::vector<std::uint8_t> sound(4000, 1);
    ASSERT_TRUE(writer.Begin(&file) && writer.Write(sound.data(), sound.size()) && writer.Finish());
    const auto facts = FactsOf(file.bytes);
    ASSERT_TRUE(facts);
    EXPECT_DOUBLE_EQ(facts->length_s, 0.5);
    EXPECT_TRUE(facts->tags.Empty());
}

TEST(RecordingFacts, OtherFilesHaveNone) {
    const std::string bare = "#!AMR\n";
    for (const std::string& text : {std::string(), std::string("RIFF"), bare, std::string("RIFF....WAVE"),
                                    std::string("a letter to Ada, longer than a header")}) {
        EXPECT_FALSE(FactsOf({text.begin(), text.end()})) << text;
    }
}

TEST(RecordingFacts, OfDamagedFilesAreNeverUndefined) {
    const Files files;
    const std::vector<std::uint8_t>* const kWhole[] = {&files.amr.bytes, &files.killedAmr, &files.wav.bytes};
    std::mt19937 random(1705);
    std::uint64_t known = 0;
    for (std::uint64_t i = test::FuzzInputs(30'000); i > 0; --i) {
        std::vector<std::uint8_t> bytes = *kWhole[random() % 3];
        for (auto hits = 1 + random() % 8; hits > 0; --hits) {
            // Mostly where the structure is.
            const std::size_t at =
                random() % (random() % 4 == 0 ? bytes.size() : std::min<std::size_t>(bytes.size(), 1400));
            bytes[at] = static_cast<std::uint8_t>(random() % 3 == 0 ? 0xFF : random());
        }
        if (random() % 8 == 0) bytes.resize(random() % bytes.size());
        const auto facts = FactsOf(bytes);
        known += facts ? 1 : 0;
        if (facts) ASSERT_GE(facts->length_s, 0);
    }
    EXPECT_GT(known, 0u);
}

}  // namespace
