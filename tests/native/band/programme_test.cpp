// Programmes: their texts, and that each sounds as it says.
#include "handset/fmdevice/band/programme.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "handset/fmdevice/band/generators.h"
#include "handset/sound/format.h"

namespace {

using testing::ElementsAre;

fm::Programme Programme(const char* source) {
    fm::Programme programme;
    EXPECT_EQ(fm::ReadProgramme(source, &programme), nullptr) << source;
    return programme;
}

bool Refused(const char* source) {
    fm::Programme programme;
    return fm::ReadProgramme(source, &programme) != nullptr && programme.source.empty();
}

std::vector<float> Second(fm::IGenerator& generator) {
    std::vector<float> frames(sound::kSampleRate_Hz * 2);
    generator.Render(frames.data(), sound::kSampleRate_Hz);
    return frames;
}

std::vector<float> Second(const char* source) {
    return Second(*fm::MakeGenerator(Programme(source)));
}

// The amplitude of a frequency on one side (the Goertzel sum at that frequency).
double Amplitude(const std::vector<float>& frames, std::size_t side, double frequency_Hz) {
    double real = 0, imaginary = 0;
    const std::size_t count = frames.size() / 2;
    for (std::size_t i = 0; i < count; ++i) {
        const double angle = 2 * M_PI * frequency_Hz * static_cast<double>(i) / sound::kSampleRate_Hz;
        real += frames[2 * i + side] * std::cos(angle);
        imaginary += frames[2 * i + side] * std::sin(angle);
    }
    return 2 * std::hypot(real, imaginary) / static_cast<double>(count);
}

double Rms(const std::vector<float>& frames) {
    double sum = 0;
    for (const float sample : frames) sum += sample * sample;
    return std::sqrt(sum / static_cast<double>(frames.size()));
}

TEST(Programme, ATextInNoKnownFormIsRefused) {
    for (const char* source :
         {"", "tone:", "tone:19", "tone:15001", "tone:440,", "tone:440;", "tone:1,2,3", "noise:x",
          "melody:H4", "melody:C", "melody:C9", "\\", "\\\\server\\x.wav", "C:\\x.wav", "voice"}) {
        EXPECT_TRUE(Refused(source)) << source;
    }
}

TEST(Programme, NotesAreSemitonesAboveC0) {
    EXPECT_THAT(Programme("melody:C4  A4 - F#5").notes, ElementsAre(48, 57, fm::kRest, 66));
    EXPECT_FALSE(Programme("melody:").notes.empty());
}

TEST(Programme, AToneIsItsFrequencyAndNothingElse) {
    const auto frames = Second("tone:440");
    EXPECT_NEAR(Amplitude(frames, 0, 440), fm::kToneAmplitude, 0.001);
    EXPECT_NEAR(Amplitude(frames, 1, 440), fm::kToneAmplitude, 0.001);
    EXPECT_NEAR(Rms(frames), fm::kToneAmplitude / std::sqrt(2.0), 0.001);
}

TEST(Programme, TwoTonesAreOneForEachSide) {
    const auto frames = Second("tone:440,660");
    EXPECT_NEAR(Amplitude(frames, 0, 440), fm::kToneAmplitude, 0.001);
    EXPECT_NEAR(Amplitude(frames, 0, 660), 0, 0.001);
    EXPECT_NEAR(Amplitude(frames, 1, 660), fm::kToneAmplitude, 0.001);
}

TEST(Programme, ATonesSamplesAreTheSameHoweverManyAreAskedForAtOnce) {
    const auto whole = Second("tone:440,660");
    const auto tone = fm::MakeGenerator(Programme("tone:440,660"));
    std::vector<float> pieces(whole.size());
    std::size_t at = 0;
    for (std::size_t count = 1; at + count <= whole.size() / 2; at += count, count = count % 13 + 1)
        tone->Render(pieces.data() + 2 * at, count);
    ASSERT_GT(at, 0U);
    EXPECT_TRUE(
        std::equal(pieces.begin(), pieces.begin() + static_cast<std::ptrdiff_t>(2 * at), whole.begin()));
}

TEST(Programme, AMelodyPlaysItsNotesInTurn) {
    const auto frames = Second("melody:A4 C5");
    const std::vector<float> first(frames.begin(), frames.begin() + 11025 * 2);
    const std::vector<float> second(frames.begin() + 11025 * 2, frames.begin() + 22050 * 2);
    EXPECT_GT(Amplitude(first, 0, 440), 5 * Amplitude(first, 0, 523.25));
    EXPECT_GT(Amplitude(second, 0, 523.25), 5 * Amplitude(second, 0, 440));
}

TEST(Programme, AVoiceMurmursWithPausesAndByItsText) {
    const auto one = Second("voice:hello");
    EXPECT_GT(Rms(one), 0.03);
    EXPECT_LT(Rms(one), 0.4);
    EXPECT_NE(one, Second("voice:world"));
    EXPECT_EQ(one, Second("voice:hello"));
    auto generator = fm::MakeGenerator(Programme("voice:hello"));
    const auto first = Second(*generator);
    const auto second = Second(*generator);
    // The seventh syllable of 170 ms is a pause: from 1.02 s to 1.19 s.
    const std::vector<float> pause(second.begin() + 2 * 44100 * 8 / 100,
                                   second.begin() + 2 * 44100 * 18 / 100);
    EXPECT_LT(Rms(pause), 0.1 * Rms(first));
}

TEST(Programme, ARumbleLiesLow) {
    const auto frames = Second("noise:");
    EXPECT_GT(Rms(frames), 0.05);
    double turns = 0;
    for (std::size_t i = 2; i < frames.size(); i += 2)
        turns += (frames[i] > 0) != (frames[i - 2] > 0) ? 1 : 0;
    // White noise changes its sign with every other sample.
    EXPECT_LT(turns, 0.2 * sound::kSampleRate_Hz);
}

TEST(Programme, AFileOfAnotherRateKeepsItsPitchAndGoesRound) {
    sound::WavSound sound{22050, 1, {}};
    for (int i = 0; i < 2205; ++i) {
        sound.samples.push_back(static_cast<std::int16_t>(16384 * std::sin(2 * M_PI * 500 * i / 22050)));
    }
    EXPECT_NEAR(Amplitude(Second(*fm::MakeFileGenerator(sound)), 1, 500), 0.5, 0.01);
}

}  // namespace
