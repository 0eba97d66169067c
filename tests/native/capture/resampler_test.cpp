// The change of rate: what must go through, and what must not come back folded.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "handset/capture/source/sound_converter.h"
#include "tests/native/capture/tone.h"

namespace {

constexpr std::uint32_t kLowerRates_Hz[] = {8000, 11025, 22050};

std::vector<std::int16_t> Converted(std::uint32_t rate_Hz, std::size_t channels,
                                    const std::vector<std::int16_t>& frames) {
    capture::CSoundConverter converter(rate_Hz, channels);
    std::vector<std::int16_t> output;
    converter.Process(frames.data(), frames.size() / 2, &output);
    // Without the beginning, where the filter fills.
    output.erase(output.begin(), output.begin() + static_cast<std::ptrdiff_t>(rate_Hz / 10 * channels));
    return output;
}

TEST(Resampler, LetsNothingAboveTheNewHalfRateThrough) {
    for (const std::uint32_t rate_Hz : kLowerRates_Hz) {
        for (double tone_Hz = rate_Hz / 2.0; tone_Hz < 22000; tone_Hz *= 1.07) {
            const auto output = Converted(rate_Hz, 1, test::StereoTone(tone_Hz, 22050, 0.9));
            // All that comes out would be heard as a tone that was never there.
            const double out = std::max(test::Loudness(output), 1e-9);
            EXPECT_LT(test::Decibels(out / (0.9 / std::sqrt(2.0))), -60) << tone_Hz << " at " << rate_Hz;
        }
    }
}

TEST(Resampler, KeepsTonesUpToNineTenthsOfTheNewHalfRate) {
    for (const std::uint32_t rate_Hz : kLowerRates_Hz) {
        for (const double part : {0.005, 0.11, 0.5, 0.8, 0.9}) {
            const double tone_Hz = rate_Hz / 2.0 * part;
            const auto output = Converted(rate_Hz, 1, test::StereoTone(tone_Hz, 44100, 0.5));
            const double peak = test::TonePeak(output, 1, 0, tone_Hz, rate_Hz);
            EXPECT_NEAR(test::Decibels(peak / 0.5), 0, 0.1) << tone_Hz << " at " << rate_Hz;
        }
    }
}

TEST(Resampler, AddsNothingToATone) {
    for (const std::uint32_t rate_Hz : kLowerRates_Hz) {
        auto output = Converted(rate_Hz, 1, test::StereoTone(440, 44100, 0.5));
        // What is left when the tone is taken out, by its two neighbours: x[n+1] + x[n-1] = 2 cos(w) x[n].
        const double factor = 2 * std::cos(2 * 3.14159265358979323846 * 440 / rate_Hz);
        double rest = 0;
        for (std::size_t i = 1; i + 1 < output.size(); ++i) {
            const double difference = output[i + 1] + output[i - 1] - factor * output[i];
            rest += difference * difference;
        }
        rest = std::sqrt(rest / static_cast<double>(output.size())) / 32768;
        EXPECT_LT(test::Decibels(rest / (0.5 / std::sqrt(2.0))), -80) << rate_Hz;
    }
}

TEST(Resampler, GivesAsManyFramesAsTheTimeHasButForWhatIsStillInTheFilter) {
    for (const std::uint32_t rate_Hz : {8000u, 11025u, 22050u, 44100u}) {
        for (const std::size_t channels : {1u, 2u}) {
            capture::CSoundConverter converter(rate_Hz, channels);
            std::vector<std::int16_t> output;
            std::uint64_t inputs = 0;
            for (std::size_t piece = 1; piece < 30000; piece = piece * 3 / 2 + 1) {
                const std::vector<std::int16_t> silence(2 * piece);
                converter.Process(silence.data(), piece, &output);
                inputs += piece;
                const std::size_t due = (inputs * rate_Hz + 44099) / 44100;
                const auto inside =
                    static_cast<std::size_t>(capture::CSoundConverter::kMostDelay_s * rate_Hz);
                EXPECT_LE(output.size() / channels, due) << rate_Hz;
                EXPECT_GE(output.size() / channels + inside, due) << rate_Hz;
            }
        }
    }
}

TEST(Resampler, WhatIsHeardStandsAtItsMoment) {
    for (const std::uint32_t rate_Hz : kLowerRates_Hz) {
        // Silence but for one click, a second after the beginning.
        std::vector<std::int16_t> frames(4 * 44100);
        frames[2 * 44100] = frames[2 * 44100 + 1] = 20000;
        capture::CSoundConverter converter(rate_Hz, 1);
        std::vector<std::int16_t> output;
        converter.Process(frames.data(), frames.size() / 2, &output);
        const auto loudest = std::max_element(output.begin(), output.end());
        EXPECT_GT(*loudest, 1000);
        EXPECT_EQ(loudest - output.begin(), rate_Hz) << rate_Hz;
    }
}

TEST(Resampler, DoesNotDependOnHowTheSoundIsCut) {
    constexpr std::size_t kFrames = 50000;
    const auto frames = test::StereoTone(1234, kFrames, 0.7);
    for (const std::uint32_t rate_Hz : kLowerRates_Hz) {
        capture::CSoundConverter whole(rate_Hz, 2);
        capture::CSoundConverter pieces(rate_Hz, 2);
        std::vector<std::int16_t> expected;
        std::vector<std::int16_t> output;
        whole.Process(frames.data(), kFrames, &expected);
        for (std::size_t at = 0, piece = 1; at < kFrames; at += piece, piece = piece % 97 + 1)
            pieces.Process(frames.data() + 2 * at, std::min<std::size_t>(piece, kFrames - at), &output);
        // How much is still inside may differ.
        ASSERT_GT(std::min(output.size(), expected.size()), std::size_t{2} * rate_Hz * 9 / 10);
        const auto differ = std::mismatch(output.begin(), output.end(), expected.begin(), expected.end());
        EXPECT_TRUE(differ.first == output.end() || differ.second == expected.end()) << rate_Hz;
    }
}

TEST(Resampler, LeavesTheSoundAsItIsAtItsOwnRate) {
    const auto frames = test::StereoTone(997, 1000, 1);
    capture::CSoundConverter converter(44100, 2);
    std::vector<std::int16_t> output;
    converter.Process(frames.data(), 1000, &output);
    EXPECT_EQ(output, frames);
}

TEST(Resampler, OneChannelIsTheMeanOfBothSides) {
    const std::int16_t frames[] = {100, 200, -32768, -32768, 32767, 32767, 30000, -10000};
    capture::CSoundConverter converter(44100, 1);
    std::vector<std::int16_t> output;
    converter.Process(frames, 4, &output);
    EXPECT_EQ(output, (std::vector<std::int16_t>{150, -32768, 32767, 10000}));
}

TEST(Resampler, KeepsTheSidesApart) {
    std::vector<std::int16_t> frames = test::StereoTone(1000, 44100, 0.5);
    for (std::size_t i = 1; i < frames.size(); i += 2) frames[i] = 0;
    const auto output = Converted(8000, 2, frames);
    EXPECT_NEAR(test::TonePeak(output, 2, 0, 1000, 8000), 0.5, 0.005);
    EXPECT_EQ(test::TonePeak(output, 2, 1, 1000, 8000), 0);
}

TEST(Resampler, DoesNotWrapWhatIsTooLoud) {
    // A filter overshoots at the edges of a square of full loudness.
    std::vector<std::int16_t> frames;
    for (std::size_t i = 0; i < 44100; ++i) frames.insert(frames.end(), 2, i / 100 % 2 == 0 ? 32767 : -32768);
    const auto output = Converted(8000, 1, frames);
    for (std::size_t i = 1; i < output.size(); ++i) {
        if (output[i - 1] == 32767) EXPECT_GT(output[i], -30000) << i;
    }
    EXPECT_EQ(*std::max_element(output.begin(), output.end()), 32767);
}

}  // namespace
