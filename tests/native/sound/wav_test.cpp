// WAV files in memory, sound ones and broken ones.
#include "handset/sound/wav.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes Wav(std::initializer_list<std::uint8_t> data) {
    const auto header = sound::WavHeader({44100, 2, 16}, static_cast<std::uint32_t>(data.size()));
    Bytes bytes(header.begin(), header.end());
    bytes.insert(bytes.end(), data);
    return bytes;
}

TEST(WavFile, WhatIsHeadedHereIsReadHere) {
    sound::WavSound sound;
    ASSERT_EQ(sound::ReadWav(Wav({1, 0, 0xFF, 0xFF, 0, 0x80, 0xFF, 0x7F}), &sound), nullptr);
    EXPECT_EQ(sound.rate_Hz, 44100u);
    EXPECT_EQ(sound.channels, 2u);
    EXPECT_EQ(sound.samples, (std::vector<std::int16_t>{1, -1, -32768, 32767}));
}

TEST(WavFile, EightBitsLieAroundTheMiddle) {
    Bytes bytes = Wav({0, 128, 255});
    bytes[22] = 1;  // channels
    bytes[34] = 8;  // bits
    sound::WavSound sound;
    ASSERT_EQ(sound::ReadWav(bytes, &sound), nullptr);
    EXPECT_EQ(sound.samples, (std::vector<std::int16_t>{-32768, 0, 32512}));
}

TEST(WavFile, AFileThatIsCutShortGivesTheFramesThatAreThere) {
    Bytes bytes = Wav({1, 0, 2, 0, 3, 0, 4, 0});
    bytes.resize(bytes.size() - 3);
    sound::WavSound sound;
    ASSERT_EQ(sound::ReadWav(bytes, &sound), nullptr);
    EXPECT_EQ(sound.samples, (std::vector<std::int16_t>{1, 2}));
}

TEST(WavFile, AFileThatIsStillWrittenIsReadToItsEnd) {
    Bytes bytes = Wav({1, 0, 2, 0});
    bytes.insert(bytes.end(), {3, 0, 4, 0, 5});
    sound::WavSound sound;
    ASSERT_EQ(sound::ReadWav(bytes, &sound), nullptr);
    EXPECT_EQ(sound.samples, (std::vector<std::int16_t>{1, 2}));
    ASSERT_EQ(sound::ReadWav(bytes, &sound, sound::WavEnd::kAtTheFilesEnd), nullptr);
    EXPECT_EQ(sound.samples, (std::vector<std::int16_t>{1, 2, 3, 4}));
}

TEST(WavFile, InMonoEachFrameIsTheMeanOfItsChannels) {
    const sound::WavSound stereo{44100, 2, {16384, 0, -32768, -32768}}, mono{44100, 1, {16384, -32768}};
    EXPECT_EQ(sound::Mono(stereo), (std::vector<double>{0.25, -1}));
    EXPECT_EQ(sound::Mono(mono), (std::vector<double>{0.5, -1}));
}

TEST(WavFile, AnOddLengthIsCountedWithItsPadByte) {
    const auto header = sound::WavHeader({8000, 1, 8}, 3);
    EXPECT_EQ(header[4], 40);
    EXPECT_EQ(header[40], 3);
}

TEST(WavFile, WhatCannotBePlayedIsRefusedWithTheReason) {
    sound::WavSound sound;
    EXPECT_STREQ(sound::ReadWav({}, &sound), "it is not a WAV file");
    EXPECT_STREQ(sound::ReadWav(Wav({}), &sound), "there is no sound in it");
    Bytes bytes = Wav({0, 0, 0, 0});
    bytes[20] = 3;
    EXPECT_STREQ(sound::ReadWav(bytes, &sound), "it is not PCM of 8 or 16 bits");
    bytes = Wav({0, 0, 0, 0});
    bytes[22] = 6;
    EXPECT_STREQ(sound::ReadWav(bytes, &sound), "it has neither one nor two channels");
}

TEST(WavFile, BrokenBytesAreReadWithoutHarm) {
    std::mt19937 random(7);
    const Bytes seed = Wav({1, 0, 2, 0, 3, 0, 4, 0, 5, 0, 6, 0});
    for (int i = 0; i < 50'000; ++i) {
        Bytes bytes = seed;
        for (unsigned changes = 1 + random() % 4; changes > 0; --changes) {
            bytes[random() % bytes.size()] = static_cast<std::uint8_t>(random());
        }
        bytes.resize(random() % (bytes.size() + 1));
        sound::WavSound sound;
        if (sound::ReadWav(bytes, &sound) == nullptr) {
            ASSERT_FALSE(sound.samples.empty());
            ASSERT_EQ(sound.samples.size() % sound.channels, 0u);
        }
    }
}

}  // namespace
