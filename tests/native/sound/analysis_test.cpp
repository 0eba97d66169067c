// What the tour hears.
#include "handset/sound/analysis.h"

#include <gtest/gtest.h>

#include <cmath>

namespace sound {
namespace {

constexpr std::uint32_t kRate = 44100;

// `seconds` of the wave on both channels.
template <typename Wave>
WavSound Sound(double seconds, Wave wave) {
    WavSound sound{kRate, 2, {}};
    for (std::uint32_t i = 0; i < seconds * kRate; ++i) {
        const auto sample =
            static_cast<std::int16_t>(std::lround(wave(i / static_cast<double>(kRate)) * 32767));
        sound.samples.insert(sound.samples.end(), 2, sample);
    }
    return sound;
}

auto Tone(double frequency, double amplitude) {
    return [=](double t) { return amplitude * std::sin(2 * 3.14159265358979 * frequency * t); };
}

TEST(Listening, FindsAToneOf440HzAndItsLoudness) {
    const auto sound = Sound(1, Tone(440, 0.5));
    const Hearing heard = Listen(sound, 0.5);
    EXPECT_NEAR(heard.tone_Hz, 440, 1);
    EXPECT_NEAR(heard.loudness_dBFS, -9.03, 0.1);
    EXPECT_GT(heard.prominence_dB, 20);
}

TEST(Listening, FindsTonesOfEveryPitchOfTheBand) {
    for (const double frequency : {110.0, 330.0, 523.0, 880.0, 5000.0, 12345.0}) {
        const auto sound = Sound(0.6, Tone(frequency, 0.1));
        EXPECT_NEAR(Listen(sound, 0.5).tone_Hz, frequency, 1.5);
    }
}

TEST(Listening, HearsTheLastMomentsAlone) {
    const auto wave = [](double t) { return t < 1 ? Tone(880, 0.9)(t) : Tone(440, 0.1)(t); };
    const auto sound = Sound(2, wave);
    const Hearing heard = Listen(sound, 0.5);
    EXPECT_NEAR(heard.tone_Hz, 440, 1);
    EXPECT_NEAR(heard.loudness_dBFS, -23.01, 0.1);
}

TEST(Listening, SilenceHasNoTone) {
    const auto sound = Sound(1, [](double) { return 0.0; });
    const Hearing heard = Listen(sound, 0.5);
    EXPECT_EQ(heard.loudness_dBFS, kSilence_dBFS);
    EXPECT_EQ(heard.tone_Hz, 0);
    EXPECT_EQ(Listen({kRate, 2, {}}, 0.5).loudness_dBFS, kSilence_dBFS);
}

TEST(Listening, NoiseHasNoToneThatStandsOut) {
    std::uint32_t random = 1;
    const auto sound = Sound(1, [&](double) {
        random = random * 1664525 + 1013904223;
        return (random >> 8) / 16777216.0 - 0.5;
    });
    const Hearing heard = Listen(sound, 0.5);
    EXPECT_NEAR(heard.loudness_dBFS, -10.8, 0.5);
    EXPECT_LT(heard.prominence_dB, 16);
}

}  // namespace
}  // namespace sound
