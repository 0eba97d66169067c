// The multiplexer's file: complete, cut off at every write, on a full disk.
#include "handset/capture/files/amr_file_writer.h"

#include <gtest/gtest.h>
#include <interf_enc.h>

#include <memory>

#include "handset/capture/encoder/amr_encoder.h"
#include "tests/native/capture/media_probe.h"
#include "tests/native/capture/memory_file.h"
#include "tests/native/capture/tone.h"

namespace {

using capture::CAmrFileWriter;
using test::CMemoryFile;

constexpr std::uint32_t kCreated = 3'870'000'000;

std::vector<std::uint8_t> Frames(double seconds) {
    const auto speech = test::SpeechRateTone(seconds);
    capture::CAmrEncoder encoder;
    std::vector<std::uint8_t> frames;
    encoder.Encode(speech.data(), speech.size(), &frames);
    return frames;
}

void ExpectAmr(const test::SoundFile& facts) {
    EXPECT_EQ(facts.container, "mov");
    EXPECT_EQ(facts.codec, "amr_nb");
    EXPECT_EQ(facts.rate_Hz, 8000);
    EXPECT_EQ(facts.channels, 1);
}

TEST(AmrFile, IsOpenedAndHasTheLengthOfItsFrames) {
    CMemoryFile file;
    CAmrFileWriter writer(kCreated);
    const auto frames = Frames(3.3);
    ASSERT_TRUE(writer.Begin(&file) && writer.Write(frames.data(), frames.size()) && writer.Finish());
    const test::SoundFile facts = test::Probe(file.bytes);
    ExpectAmr(facts);
    EXPECT_NEAR(facts.length_s, 3.3, 1e-6);
}

TEST(AmrFile, GivesTheToneBack) {
    CMemoryFile file;
    CAmrFileWriter writer(kCreated);
    const auto frames = Frames(2);
    ASSERT_TRUE(writer.Begin(&file) && writer.Write(frames.data(), frames.size()) && writer.Finish());
    std::string complaints;
    const auto sound = test::Decode(file.bytes, &complaints);
    EXPECT_EQ(complaints, "");
    ASSERT_EQ(sound.size(), 16000u);
    // A codec for speech is not at its best with a pure tone.
    EXPECT_NEAR(test::Decibels(test::TonePeak(sound, 1, 0, 440, 8000) / 0.5), 0, 2);
    EXPECT_LT(test::Decibels(test::TonePeak(sound, 1, 0, 880, 8000) / 0.5), -25);
}

TEST(AmrFile, PlaysUpToWhereItWasCutOff) {
    CMemoryFile file;
    file.remember = true;
    CAmrFileWriter writer(kCreated);
    const auto frames = Frames(4);
    ASSERT_TRUE(writer.Begin(&file));
    std::vector<std::size_t> written;  // frames that had come when each state was written
    for (std::size_t i = 0; i < 200; ++i) {
        ASSERT_TRUE(writer.Write(frames.data() + 32 * i, 32));
        written.resize(file.states.size(), i + 1);
    }
    ASSERT_GE(file.states.size(), 8u);
    for (std::size_t i = 1; i < file.states.size(); ++i) {
        const test::SoundFile facts = test::Probe(file.states[i]);
        ExpectAmr(facts);
        std::string complaints;
        const auto sound = test::Decode(file.states[i], &complaints);
        EXPECT_EQ(complaints, "");
        EXPECT_EQ(sound.size(), written[i] * 160);
    }
    // Nothing is held back for more than half a second.
    EXPECT_EQ(written[8] - written[7], 25u);
}

TEST(AmrFile, PlaysAtEveryStepOfItsEnd) {
    CMemoryFile file;
    CAmrFileWriter writer(kCreated);
    const auto frames = Frames(2);
    ASSERT_TRUE(writer.Begin(&file) && writer.Write(frames.data(), frames.size()));
    file.remember = true;
    ASSERT_TRUE(writer.Finish());
    ASSERT_GE(file.states.size(), 2u);
    for (const auto& state : file.states) {
        std::string complaints;
        EXPECT_EQ(test::Decode(state, &complaints).size(), 16000u);
    }
}

TEST(AmrFile, OnAFullDiskTheFileKeepsWhatWasWrittenBefore) {
    const auto frames = Frames(4);
    for (const std::size_t capacity : {1500u, 2500u, 4000u, 5555u}) {
        CMemoryFile file(capacity);
        CAmrFileWriter writer(kCreated);
        ASSERT_TRUE(writer.Begin(&file));
        EXPECT_FALSE(writer.Write(frames.data(), frames.size()));
        EXPECT_FALSE(writer.Write(frames.data(), 32));
        EXPECT_FALSE(writer.Finish());
        EXPECT_LE(file.bytes.size(), capacity);
        std::string complaints;
        const auto sound = test::Decode(file.bytes, &complaints);
        EXPECT_EQ(complaints, "");
        EXPECT_EQ(sound.size() % 4000, 0u);
        EXPECT_GE(sound.size(), (capacity - 1400) / 900 * 4000) << capacity;
    }
}

TEST(AmrFile, FramesOfDifferentLengthsAreKeptApart) {
    const std::vector<std::int16_t> silence(160);
    const std::unique_ptr<void, void (*)(void*)> codec(Encoder_Interface_init(0), Encoder_Interface_exit);
    std::vector<std::uint8_t> frames;
    for (int i = 0; i < 100; ++i) {
        std::uint8_t frame[32];
        const int size =
            Encoder_Interface_Encode(codec.get(), i % 2 == 0 ? MR122 : MR475, silence.data(), frame, 0);
        frames.insert(frames.end(), frame, frame + size);
    }
    for (const bool finish : {false, true}) {
        CMemoryFile file;
        CAmrFileWriter writer(kCreated);
        ASSERT_TRUE(writer.Begin(&file) && writer.Write(frames.data(), frames.size()));
        if (finish) ASSERT_TRUE(writer.Finish());
        std::string complaints;
        EXPECT_EQ(test::Decode(file.bytes, &complaints).size(), 100 * 160u) << complaints;
    }
}

TEST(AmrFile, AnEmptyRecordingIsStillAFile) {
    CMemoryFile file;
    CAmrFileWriter writer(kCreated);
    ASSERT_TRUE(writer.Begin(&file) && writer.Finish());
    EXPECT_EQ(test::Probe(file.bytes).codec, "amr_nb");
}

TEST(AmrFile, BytesThatAreNoFramesAreRefused) {
    CMemoryFile file;
    CAmrFileWriter writer(kCreated);
    ASSERT_TRUE(writer.Begin(&file));
    const std::uint8_t noise[4] = {0xFF, 1, 2, 3};
    EXPECT_FALSE(writer.Write(noise, sizeof noise));
    const std::uint8_t begun[4] = {0x3C, 1, 2, 3};
    EXPECT_FALSE(writer.Write(begun, sizeof begun));
    const auto frames = Frames(1);
    EXPECT_TRUE(writer.Write(frames.data(), frames.size()));
    EXPECT_TRUE(writer.Finish());
    EXPECT_NEAR(test::Probe(file.bytes).length_s, 1, 1e-6);
}

TEST(AmrFile, FailsToBeginWhereNothingCanBeWritten) {
    CMemoryFile file(100);
    CAmrFileWriter writer(kCreated);
    EXPECT_FALSE(writer.Begin(&file));
    EXPECT_TRUE(file.bytes.empty());
}

}  // namespace
