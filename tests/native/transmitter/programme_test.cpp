// Programmes: pre-emphasis against its closed form, and what reaches the multiplex.
#include <gtest/gtest.h>

#include <memory>

#include "handset/transmitter/sampled_programme.h"
#include "tests/native/transmitter/spectrum.h"

namespace {

using test::Decibel;
using transmitter::CSampledProgramme;
using transmitter::CTones;
using transmitter::IProgramme;
using transmitter::kMultiplexRate_Hz;
using transmitter::kStudioRate_Hz;
using transmitter::Sound;
using transmitter::SoundSource;
using transmitter::Tone;

// The left side after the filters have filled.
std::vector<double> Left(IProgramme& programme, double length_s = 0.05) {
    std::vector<Sound> sounds(static_cast<std::size_t>(0.02 * kMultiplexRate_Hz));
    programme.Read(sounds.data(), sounds.size());
    sounds.resize(static_cast<std::size_t>(length_s * kMultiplexRate_Hz));
    programme.Read(sounds.data(), sounds.size());
    std::vector<double> left;
    for (const Sound& sound : sounds) left.push_back(sound.left);
    return left;
}

SoundSource Sine(double frequency_Hz) {
    return [frequency_Hz, at = 0]() mutable {
        const double value = std::sin(2 * test::kPi * frequency_Hz * at++ / kStudioRate_Hz);
        return Sound{value, -value};
    };
}

double Curve(double frequency_Hz, double preEmphasis_s) {
    const double reactance = 2 * test::kPi * frequency_Hz * preEmphasis_s;
    return std::sqrt(1 + reactance * reactance);
}

TEST(TransmitterProgramme, PreEmphasisOfSamplesIsThatOfAResistorAndACapacitorTo15kHz) {
    for (const double preEmphasis_s : {0.0, 50e-6, 75e-6}) {
        for (const double frequency_Hz : {30.0, 400.0, 1000.0, 3180.0, 10000.0, 14000.0, 15000.0}) {
            CSampledProgramme programme(Sine(frequency_Hz), preEmphasis_s);
            const double length_s = frequency_Hz < 100 ? 0.5 : 0.05;
            const double gain = test::Amplitude(Left(programme, length_s), kMultiplexRate_Hz, frequency_Hz);
            EXPECT_NEAR(Decibel(gain / Curve(frequency_Hz, preEmphasis_s)), 0, 0.001)
                << frequency_Hz << " Hz, " << preEmphasis_s << " s";
        }
    }
}

TEST(TransmitterProgramme, PreEmphasisOfTonesIsTheSameInSizeAndInPhase) {
    CTones plain({{5000, 1, 1}}, 0), emphasised({{5000, 1, 1}}, 50e-6);
    const auto before = test::Line(Left(plain), kMultiplexRate_Hz, 5000);
    const auto after = test::Line(Left(emphasised), kMultiplexRate_Hz, 5000);
    const std::complex<double> curve(1, 2 * test::kPi * 5000 * 50e-6);
    EXPECT_NEAR(std::abs(after / before / curve), 1, 1e-6);
    EXPECT_NEAR(std::arg(after / before / curve), 0, 1e-6);
}

TEST(TransmitterProgramme, NothingOfASampledProgrammeReachesThePilot) {
    for (const double frequency_Hz : {18500.0, 19000.0, 23000.0}) {
        CSampledProgramme programme(Sine(frequency_Hz), 50e-6);
        const auto left = Left(programme);
        EXPECT_LT(Decibel(test::Amplitude(left, kMultiplexRate_Hz, frequency_Hz)), -100) << frequency_Hz;
        EXPECT_LT(Decibel(test::Amplitude(left, kMultiplexRate_Hz, kStudioRate_Hz - frequency_Hz)), -100)
            << frequency_Hz;
    }
}

TEST(TransmitterProgramme, WhatASampledToneHasBesideItselfIsBelow110dB) {
    CSampledProgramme programme(Sine(1000), 0);
    std::vector<double> left = Left(programme);
    const std::complex<double> line = 2.0 * test::Line(left, kMultiplexRate_Hz, 1000);
    double rest = 0;
    for (std::size_t i = 0; i < left.size(); ++i) {
        const double turns = 1000 * static_cast<double>(i) / kMultiplexRate_Hz;
        const double value = left[i] - (line * std::polar(1.0, 2 * test::kPi * turns)).real();
        rest += value * value;
    }
    EXPECT_LT(10 * std::log10(rest / static_cast<double>(left.size()) * 2), -110);
}

TEST(TransmitterProgramme, PinkNoiseHasTheSizeAskedForAndFallsBy3dBAnOctave) {
    SoundSource source = transmitter::PinkNoise(0.1, 0.5, 7);
    constexpr std::size_t kCount = 1 << 17;
    std::vector<double> left, right;
    double square = 0, product = 0;
    for (std::size_t i = 0; i < kCount; ++i) {
        const Sound sound = source();
        left.push_back(sound.left);
        square += sound.left * sound.left;
        product += sound.left * sound.right;
    }
    EXPECT_NEAR(std::sqrt(square / kCount), 0.1, 0.01);
    EXPECT_NEAR(product / square, 0.5, 0.08) << "half of it is on both sides";
    // Mean power of single lines around a frequency; each is one draw, so many are looked at.
    const auto around = [&](double frequency_Hz) {
        double power = 0;
        for (int i = 0; i < 30; ++i) {
            power += std::norm(test::Line(left, kStudioRate_Hz, frequency_Hz * (0.9 + i / 150.0)));
        }
        return 10 * std::log10(power);
    };
    EXPECT_NEAR(around(250) - around(4000), 12, 2.5);
}

TEST(TransmitterProgramme, AWavFileIsPlayedOverAndOverAtItsOwnPitch) {
    // 100 ms of 1 kHz at 44.1 kHz on the right side alone.
    std::vector<std::uint8_t> bytes = {
        'R', 'I', 'F',  'F',  0, 0, 0,    0,    'W', 'A', 'V', 'E', 'f', 'm', 't', ' ', 16,  0,   0, 0, 1, 0,
        2,   0,   0x44, 0xAC, 0, 0, 0x10, 0xB1, 2,   0,   4,   0,   16,  0,   'd', 'a', 't', 'a', 0, 0, 1, 0};
    for (int i = 0; i < 4410; ++i) {
        const auto value =
            static_cast<std::int16_t>(std::lround(16384 * std::sin(2 * test::kPi * 1000 * i / 44100)));
        for (const int part : {0, 0, value & 0xFF, value >> 8 & 0xFF})
            bytes.push_back(static_cast<std::uint8_t>(part));
    }
    std::string fault;
    SoundSource source = transmitter::WavLoop(bytes, &fault);
    ASSERT_TRUE(source) << fault;
    std::vector<double> left, right;
    for (int i = 0; i < 48000; ++i) {
        const Sound sound = source();
        left.push_back(sound.left);
        right.push_back(sound.right);
    }
    EXPECT_NEAR(test::Amplitude(right, kStudioRate_Hz, 1000), 0.5, 0.0005);
    EXPECT_NEAR(test::Amplitude(left, kStudioRate_Hz, 1000), 0, 1e-9);
}

TEST(TransmitterProgramme, AFileThatIsNoSoundSaysWhy) {
    std::string fault;
    EXPECT_FALSE(transmitter::WavLoop({1, 2, 3}, &fault));
    EXPECT_EQ(fault, "it is no WAV file");
    std::vector<std::uint8_t> noSound = {'R', 'I', 'F', 'F', 4, 0, 0, 0, 'W', 'A', 'V', 'E'};
    EXPECT_FALSE(transmitter::WavLoop(noSound, &fault));
    EXPECT_EQ(fault, "it holds no sound");
}

}  // namespace
