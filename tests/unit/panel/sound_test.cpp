// What the tour hears.
#include "handset/panel/sound_analysis.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

namespace panel {
namespace {

constexpr std::uint32_t kRate = 44100;

void Put(std::string& bytes, std::uint32_t value, std::size_t size) {
    bytes.append(reinterpret_cast<char*>(&value), size);
}

// A stereo WAV file of `seconds` of the wave; `dataSize` is what its header claims.
template <typename Wave>
std::string WavFile(double seconds, Wave wave, std::uint32_t dataSize) {
    std::string bytes = "RIFF";
    Put(bytes, 36 + dataSize, 4);
    bytes += "WAVEfmt ";
    Put(bytes, 16, 4);
    Put(bytes, 1, 2);
    Put(bytes, 2, 2);
    Put(bytes, kRate, 4);
    Put(bytes, kRate * 4, 4);
    Put(bytes, 4, 2);
    Put(bytes, 16, 2);
    bytes += "data";
    Put(bytes, dataSize, 4);
    for (std::uint32_t i = 0; i < seconds * kRate; ++i) {
        const auto sample =
            static_cast<std::int16_t>(std::lround(wave(i / static_cast<double>(kRate)) * 32767));
        for (int channel = 0; channel < 2; ++channel) bytes.append(reinterpret_cast<const char*>(&sample), 2);
    }
    return bytes;
}

auto Tone(double frequency, double amplitude) {
    return [=](double t) { return amplitude * std::sin(2 * 3.14159265358979 * frequency * t); };
}

TEST(Listening, FindsAToneOf440HzAndItsLoudness) {
    const auto sound = ReadWav(WavFile(1, Tone(440, 0.5), kRate * 4));
    ASSERT_TRUE(sound.has_value());
    const Hearing heard = Listen(*sound, 0.5);
    EXPECT_NEAR(heard.tone_Hz, 440, 1);
    EXPECT_NEAR(heard.loudness_dBFS, -9.03, 0.1);
    EXPECT_GT(heard.prominence_dB, 20);
}

TEST(Listening, FindsTonesOfEveryPitchOfTheBand) {
    for (const double frequency : {110.0, 330.0, 523.0, 880.0, 5000.0, 12345.0}) {
        const auto sound = ReadWav(WavFile(0.6, Tone(frequency, 0.1), 0));
        ASSERT_TRUE(sound.has_value());
        EXPECT_NEAR(Listen(*sound, 0.5).tone_Hz, frequency, 1.5);
    }
}

TEST(Listening, HearsTheLastMomentsAlone) {
    const auto wave = [](double t) { return t < 1 ? Tone(880, 0.9)(t) : Tone(440, 0.1)(t); };
    const auto sound = ReadWav(WavFile(2, wave, kRate * 8));
    ASSERT_TRUE(sound.has_value());
    const Hearing heard = Listen(*sound, 0.5);
    EXPECT_NEAR(heard.tone_Hz, 440, 1);
    EXPECT_NEAR(heard.loudness_dBFS, -23.01, 0.1);
}

TEST(Listening, SilenceHasNoTone) {
    const auto sound = ReadWav(WavFile(
        1, [](double) { return 0.0; }, kRate * 4));
    ASSERT_TRUE(sound.has_value());
    const Hearing heard = Listen(*sound, 0.5);
    EXPECT_EQ(heard.loudness_dBFS, kSilence_dBFS);
    EXPECT_EQ(heard.tone_Hz, 0);
    EXPECT_EQ(Listen({kRate, 4, {}}, 0.5).loudness_dBFS, kSilence_dBFS);
}

TEST(Listening, NoiseHasNoToneThatStandsOut) {
    std::uint32_t random = 1;
    const auto sound = ReadWav(WavFile(
        1,
        [&](double) {
            random = random * 1664525 + 1013904223;
            return (random >> 8) / 16777216.0 - 0.5;
        },
        kRate * 4));
    ASSERT_TRUE(sound.has_value());
    const Hearing heard = Listen(*sound, 0.5);
    EXPECT_NEAR(heard.loudness_dBFS, -10.8, 0.5);
    EXPECT_LT(heard.prominence_dB, 16);
}

TEST(WavFiles, AFileThatIsStillWrittenIsReadToItsEnd) {
    const auto sound = ReadWav(WavFile(0.25, Tone(440, 0.5), 0));
    ASSERT_TRUE(sound.has_value());
    EXPECT_EQ(sound->samples.size(), 11025u);
    EXPECT_EQ(sound->rate, kRate);
    EXPECT_EQ(sound->frameBytes, 4u);
}

TEST(WavFiles, WhatIsNoSuchFileIsRefusedAtEveryLength) {
    const std::string whole = WavFile(0.01, Tone(440, 0.5), 100);
    for (std::size_t length = 0; length < 44; ++length) {
        EXPECT_FALSE(ReadWav(whole.substr(0, length)).has_value()) << length;
    }
    EXPECT_FALSE(ReadWav("RIFFxxxxAVI LIST").has_value());
    std::string compressed = whole;
    compressed[20] = 0x11;  // ADPCM
    EXPECT_FALSE(ReadWav(compressed).has_value());
}

}  // namespace
}  // namespace panel
