// The sound's filters against the curves that they stand for.
#include "handset/fmdevice/sdr/audio_filter.h"

#include <gtest/gtest.h>

#include <cmath>

#include "handset/fmdevice/sdr/stereo_decoder.h"
#include "tests/native/sdr/tone_fit.h"

namespace {

using sdr::CAudioFilter;
using sdr::DeEmphasis;
using sdr_test::Decibels;

TEST(AudioFilter, FollowsTheDeEmphasisToATenthOfADecibelUpTo14kHz) {
    struct Case {
        DeEmphasis deEmphasis;
        double time_s;
    };
    for (const Case& each :
         {Case{DeEmphasis::k50us, 50e-6}, Case{DeEmphasis::k75us, 75e-6}, Case{DeEmphasis::kNone, 0.0}}) {
        const CAudioFilter filter(each.deEmphasis);
        for (double f = 0.0; f <= 14000.0; f += 50.0) {
            const double curve_dB =
                -10.0 * std::log10(1.0 + std::pow(6.283185307179586 * f * each.time_s, 2.0));
            ASSERT_NEAR(Decibels(filter.ResponseAt(f)), curve_dB, 0.02) << f << " Hz, " << each.time_s;
        }
    }
}

TEST(AudioFilter, StopsPilotSubcarrierAndAllAboveBy80Decibels) {
    for (const DeEmphasis deEmphasis : {DeEmphasis::k50us, DeEmphasis::k75us, DeEmphasis::kNone}) {
        const CAudioFilter filter(deEmphasis);
        for (double f = 17000.0; f <= 192000.0; f += 100.0) {
            ASSERT_LE(Decibels(filter.ResponseAt(f) + 1e-12), -80.0) << f;
        }
    }
}

TEST(AudioFilter, GivesOnePairForEightAndWhatItsResponseSays) {
    CAudioFilter filter(DeEmphasis::k75us);
    std::vector<float> sound;
    std::vector<float> pairs(2 * 384);
    for (std::size_t block = 0; block < 400; ++block) {
        for (std::size_t i = 0; i < 384; ++i) {
            const double t = static_cast<double>(block * 384 + i) / 384000.0;
            pairs[2 * i] = static_cast<float>(std::sin(6.283185307179586 * 3000.0 * t));
            pairs[2 * i + 1] = static_cast<float>(std::sin(6.283185307179586 * 9000.0 * t));
        }
        const std::size_t before = sound.size();
        sound.resize(before + 96);
        filter.Process(pairs.data(), 384, sound.data() + before);
    }
    EXPECT_NEAR(sdr_test::FitTone(sound, 2, 0, 4800, 48000.0, 3000.0).amplitude, filter.ResponseAt(3000.0),
                1e-4);
    EXPECT_NEAR(sdr_test::FitTone(sound, 2, 1, 4800, 48000.0, 9000.0).amplitude, filter.ResponseAt(9000.0),
                1e-4);
}

TEST(SoundQuality, FallsFromStereoToMonoAndThenLosesItsTreble) {
    EXPECT_EQ(sdr::SoundQuality::At(80.0).stereo, 1.0);
    EXPECT_EQ(sdr::SoundQuality::At(80.0).treble, 1.0);
    EXPECT_NEAR(sdr::SoundQuality::At(72.0).stereo, 0.5, 1e-9);
    EXPECT_EQ(sdr::SoundQuality::At(66.0).stereo, 0.0);
    EXPECT_NEAR(sdr::SoundQuality::At(65.0).treble, 0.5, 1e-9);
    EXPECT_EQ(sdr::SoundQuality::At(50.0).treble, 0.0);
}

// A tone of 10 kHz in the sum, with all of the treble and with none.
double TrebleHeard(double treble) {
    sdr::CStereoDecoder decoder(DeEmphasis::kNone);
    std::vector<float> frames;
    std::vector<float> pairs(2 * 384);
    for (std::size_t block = 0; block < 400; ++block) {
        for (std::size_t i = 0; i < 384; ++i) {
            pairs[2 * i] =
                static_cast<float>(std::sin(6.283185307179586 * static_cast<double>(block * 384 + i) / 38.4));
            pairs[2 * i + 1] = 0.0f;
        }
        decoder.Process(pairs.data(), 384, {1.0, treble}, &frames);
    }
    return sdr_test::FitTone(frames, 2, 0, 9600, 48000.0, 10000.0).amplitude;
}

TEST(StereoDecoder, TheHighCutTakesTheTrebleAndNothingWhenOpen) {
    EXPECT_NEAR(TrebleHeard(1.0), 1.0, 1e-3);
    // One pole at 3 kHz, as samples have it.
    EXPECT_NEAR(Decibels(TrebleHeard(0.0)), -9.9, 1.0);
}

}  // namespace
