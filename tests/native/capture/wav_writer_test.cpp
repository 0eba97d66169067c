// The WAV file, byte by byte and as ffprobe sees it, complete and cut off.
#include "handset/capture/files/wav_writer.h"

#include <gtest/gtest.h>

#include "tests/native/capture/media_probe.h"
#include "tests/native/capture/memory_file.h"
#include "tests/native/capture/tone.h"

namespace {

using capture::CWavWriter;
using sound::WavShape;

std::uint32_t Word(const std::vector<std::uint8_t>& bytes, std::size_t at) {
    return bytes[at] | bytes[at + 1] << 8 | bytes[at + 2] << 16 |
           static_cast<std::uint32_t>(bytes[at + 3]) << 24;
}

const std::uint8_t* Bytes(const std::vector<std::int16_t>& samples) {
    return reinterpret_cast<const std::uint8_t*>(samples.data());
}

TEST(WavWriter, StatesSizesThatAreRight) {
    test::CMemoryFile file;
    CWavWriter writer(WavShape{44100, 2, 16});
    ASSERT_TRUE(writer.Begin(&file));
    const std::vector<std::int16_t> samples = test::StereoTone(440, 1000, 0.5);
    ASSERT_TRUE(writer.Write(Bytes(samples), 4000));
    ASSERT_TRUE(writer.Finish());
    ASSERT_EQ(file.bytes.size(), 4044u);
    EXPECT_EQ(Word(file.bytes, 4), 4036u);
    EXPECT_EQ(Word(file.bytes, 40), 4000u);
    EXPECT_EQ(Word(file.bytes, 28), 176400u);
    EXPECT_EQ(std::memcmp(file.bytes.data() + 44, samples.data(), 4000), 0);
}

TEST(WavWriter, EveryShapeIsOpenedAndDecoded) {
    for (const WavShape shape : {WavShape{8000, 1, 16}, WavShape{8000, 2, 16}, WavShape{11025, 2, 16},
                                 WavShape{22050, 1, 16}, WavShape{44100, 2, 16}, WavShape{8000, 1, 8}}) {
        test::CMemoryFile file;
        CWavWriter writer(shape);
        const std::vector<std::uint8_t> sound(shape.rate_Hz * shape.FrameBytes(), 1);
        ASSERT_TRUE(writer.Begin(&file) && writer.Write(sound.data(), sound.size()) && writer.Finish());
        const test::SoundFile facts = test::Probe(file.bytes);
        EXPECT_EQ(facts.container, "wav");
        EXPECT_EQ(facts.codec, shape.bits == 8 ? "pcm_u8" : "pcm_s16le");
        EXPECT_EQ(facts.rate_Hz, static_cast<int>(shape.rate_Hz));
        EXPECT_EQ(facts.channels, shape.channels);
        EXPECT_DOUBLE_EQ(facts.length_s, 1);
    }
}

TEST(WavWriter, AFileThatIsCutOffAnywhereLacksNoMoreThanHalfASecond) {
    test::CMemoryFile file;
    file.remember = true;
    CWavWriter writer(WavShape{8000, 1, 16});
    ASSERT_TRUE(writer.Begin(&file));
    const std::vector<std::uint8_t> piece(800, 1);  // 50 ms
    for (int i = 0; i < 100; ++i) ASSERT_TRUE(writer.Write(piece.data(), piece.size()));
    for (const auto& state : file.states) {
        const std::uint32_t stated = Word(state, 40);
        EXPECT_LE(stated + 44, state.size());
        EXPECT_LE(state.size() - 44 - stated, 8000u);
        EXPECT_EQ(Word(state, 4), stated + 36);
    }
}

TEST(WavWriter, AnOddNumberOfBytesIsPadded) {
    test::CMemoryFile file;
    CWavWriter writer(WavShape{8000, 1, 8});
    const std::uint8_t sound[3] = {1, 2, 3};
    ASSERT_TRUE(writer.Begin(&file) && writer.Write(sound, 3) && writer.Finish());
    EXPECT_EQ(file.bytes.size(), 48u);
    EXPECT_EQ(Word(file.bytes, 4), 40u);
    EXPECT_EQ(Word(file.bytes, 40), 3u);
}

TEST(WavWriter, OnAFullDiskTheFileKeepsWhatWasWrittenBefore) {
    test::CMemoryFile file(44 + 2500);
    CWavWriter writer(WavShape{8000, 1, 16});
    const std::vector<std::uint8_t> piece(1000, 1);
    ASSERT_TRUE(writer.Begin(&file) && writer.Write(piece.data(), 1000) && writer.Write(piece.data(), 1000));
    EXPECT_FALSE(writer.Write(piece.data(), 1000));
    EXPECT_TRUE(writer.Finish());
    EXPECT_EQ(file.bytes.size(), 2044u);
    EXPECT_EQ(Word(file.bytes, 40), 2000u);
}

TEST(WavWriter, TakesNoMoreThanItsSizesCanSay) {
    test::CMemoryFile file;
    CWavWriter writer(WavShape{8000, 1, 16}, 44 + 2001);
    const std::vector<std::uint8_t> piece(1000, 1);
    ASSERT_TRUE(writer.Begin(&file) && writer.Write(piece.data(), 1000) && writer.Write(piece.data(), 1000));
    EXPECT_FALSE(writer.Write(piece.data(), 2));
    ASSERT_TRUE(writer.Finish());
    EXPECT_EQ(Word(file.bytes, 40), 2000u);
}

TEST(WavWriter, FailsToBeginWhereNothingCanBeWritten) {
    test::CMemoryFile file(0);
    CWavWriter writer(WavShape{8000, 1, 16});
    EXPECT_FALSE(writer.Begin(&file));
}

}  // namespace
