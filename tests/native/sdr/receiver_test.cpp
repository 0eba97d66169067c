// The whole receiver: what comes out for signals that are known exactly.
#include "handset/fmdevice/sdr/receiver.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "tests/native/sdr/fm_signal.h"
#include "tests/native/sdr/received.h"
#include "tests/native/sdr/tone_fit.h"

namespace {

using sdr::CSampleReceiver;
using sdr::ReceiverOptions;
using sdr::Sample;
using sdr_test::Decibels;
using sdr_test::FitTone;
using sdr_test::FmSignal;
using sdr_test::ToneFit;

constexpr std::size_t kSettled = 24000;  // frames: filters, pilot, blend

struct Heard {
    ToneFit left;
    ToneFit right;
    sdr::ReceiverSnapshot snapshot;
    double Separation_dB() const { return Decibels(left.amplitude / right.amplitude); }
};

Heard Listen(const FmSignal& signal, const ReceiverOptions& options = {}) {
    const sdr_test::Received received = sdr_test::Receive(signal, options);
    return {FitTone(received.frames, 2, 0, kSettled, sdr::kSoundRate_Hz, signal.tone_Hz),
            FitTone(received.frames, 2, 1, kSettled, sdr::kSoundRate_Hz, signal.tone_Hz), received.snapshot};
}

ReceiverOptions WithoutBlend() {
    ReceiverOptions options;
    options.blend = false;
    return options;
}

TEST(Receiver, AToneOnTheLeftIsHeardThereAloneAndClean) {
    for (const double tone_Hz : {100.0, 1000.0, 10000.0, 14000.0}) {
        SCOPED_TRACE(tone_Hz);
        FmSignal signal;
        signal.tone_Hz = tone_Hz;
        const Heard heard = Listen(signal);
        EXPECT_GE(heard.left.Sinad_dB(), 90.0);
        EXPECT_GE(heard.Separation_dB(), tone_Hz > 10000.0 ? 60.0 : 70.0);
        const double expected =
            FmSignal::kProgramme * sdr::CAudioFilter::DeEmphasisGain(sdr::DeEmphasis::k50us, tone_Hz);
        EXPECT_NEAR(Decibels(heard.left.amplitude / expected), 0.0, 0.1);
    }
}

TEST(Receiver, ATwiceAsLoudRightChannelIsTwiceAsLoud) {
    FmSignal signal;
    signal.left = 0.4;
    signal.right = 0.8;
    EXPECT_NEAR(Listen(signal).Separation_dB(), Decibels(0.5), 0.01);
}

TEST(Receiver, EveryRateGivesTheSameSound) {
    for (const double rate_Hz :
         {240000.0, 250000.0, 256000.0, 300001.0, 384000.0, 960000.0, 1024000.0, 2048000.0, 2400000.0}) {
        SCOPED_TRACE(rate_Hz);
        FmSignal signal;
        signal.rate_Hz = rate_Hz;
        const Heard heard = Listen(signal);
        // The narrowest leave too little of the carrier's spectrum for more.
        EXPECT_GE(heard.left.Sinad_dB(), rate_Hz < 300000.0 ? 60.0 : 75.0);
        EXPECT_GE(heard.Separation_dB(), rate_Hz < 300000.0 ? 40.0 : 60.0);
        EXPECT_NEAR(heard.snapshot.carrierOffset_Hz.value, 0.0, 20.0);
    }
}

TEST(Receiver, ThirtyHertzComesThroughWhole) {
    FmSignal signal;
    signal.tone_Hz = 30.0;
    EXPECT_NEAR(Decibels(Listen(signal).left.amplitude / FmSignal::kProgramme), 0.0, 0.1);
}

// FM's noise in stereo: the sum of the densities of the sum, f^2, and of the difference, twice (38 kHz)^2 +
// f^2, under the de-emphasis up to where the sound ends.
double StereoLimit_dB(double carrierToNoise_dBHz, double amplitude) {
    const sdr::CAudioFilter filter(sdr::DeEmphasis::k50us);
    double noise = 0.0;
    constexpr double kStep_Hz = 10.0;
    for (double f = kStep_Hz / 2.0; f < 17000.0; f += kStep_Hz) {
        // Left is the sum plus the difference; the difference is mixed with twice a sine out of both its
        // sidebands.
        const double gain = filter.ResponseAt(f);
        const double density = f * f + 2.0 * (38000.0 * 38000.0 + f * f);
        noise += gain * gain * density * kStep_Hz;
    }
    noise /= std::pow(10.0, carrierToNoise_dBHz / 10.0) * 75000.0 * 75000.0;
    return 10.0 * std::log10(amplitude * amplitude / 2.0 / noise);
}

TEST(Receiver, StereoIsAsQuietAsFmCanBe) {
    const double amplitude =
        FmSignal::kProgramme * sdr::CAudioFilter::DeEmphasisGain(sdr::DeEmphasis::k50us, 1000.0);
    for (const double carrierToNoise_dBHz : {90.0, 71.0, 66.0}) {
        SCOPED_TRACE(carrierToNoise_dBHz);
        FmSignal signal;
        signal.rate_Hz = 960000.0;
        signal.seconds = 2.5;
        signal.carrierToNoise_dBHz = carrierToNoise_dBHz;
        const Heard heard = Listen(signal, WithoutBlend());
        EXPECT_NEAR(heard.left.Sinad_dB(), StereoLimit_dB(carrierToNoise_dBHz, amplitude), 0.3);
    }
}

TEST(Receiver, AtTheThresholdStereoIsWithinHalfADecibelOfTheLimit) {
    const double amplitude =
        FmSignal::kProgramme * sdr::CAudioFilter::DeEmphasisGain(sdr::DeEmphasis::k50us, 1000.0);
    FmSignal signal;
    signal.rate_Hz = 960000.0;
    signal.seconds = 2.5;
    signal.carrierToNoise_dBHz = 63.0;
    EXPECT_GE(Listen(signal, WithoutBlend()).left.Sinad_dB(), StereoLimit_dB(63.0, amplitude) - 0.5);
}

TEST(Receiver, WeakStationsAreMonoAndStrongOnesStereo) {
    FmSignal signal;
    signal.carrierToNoise_dBHz = 64.0;
    const Heard weak = Listen(signal);
    EXPECT_LT(weak.snapshot.blend, 0.05);
    EXPECT_EQ(weak.snapshot.stereo.value, 1.0);
    EXPECT_NEAR(weak.Separation_dB(), 0.0, 1.0);
    signal.carrierToNoise_dBHz = 85.0;
    const Heard strong = Listen(signal);
    EXPECT_GT(strong.snapshot.blend, 0.99);
    EXPECT_GT(strong.Separation_dB(), 40.0);
}

TEST(Receiver, WithoutAPilotBothSidesAreTheSame) {
    FmSignal signal;
    signal.pilot = 0.0;
    const Heard heard = Listen(signal);
    EXPECT_EQ(heard.snapshot.stereo.value, 0.0);
    EXPECT_EQ(heard.snapshot.blend, 0.0);
    EXPECT_EQ(heard.left.amplitude, heard.right.amplitude);
}

TEST(Receiver, AStationBesideTheCentreIsHeardAsWellAndItsOffsetIsSeen) {
    FmSignal signal;
    signal.offset_Hz = 432100.0;
    signal.direct = {0.02f, -0.03f};
    const Heard heard = Listen(signal);
    EXPECT_GE(heard.left.Sinad_dB(), 90.0);
    EXPECT_NEAR(heard.snapshot.carrierOffset_Hz.value, 0.0, 20.0);

    CSampleReceiver beside(ReceiverOptions{});
    beside.Tune(signal.offset_Hz - 8000.0);
    const std::vector<Sample> samples = MakeFm(signal);
    std::vector<float> frames;
    beside.Process(samples.data(), samples.size(), &frames);
    EXPECT_NEAR(beside.Snapshot().carrierOffset_Hz.value, 8000.0, 50.0);
}

TEST(Receiver, HowTheSamplesAreCutMakesNoDifference) {
    FmSignal signal;
    signal.seconds = 0.3;
    signal.rate_Hz = 250000.0;
    signal.offset_Hz = 3000.0;
    const std::vector<Sample> samples = MakeFm(signal);
    std::vector<float> whole;
    ReceiverOptions options;
    options.rate_Hz = signal.rate_Hz;
    CSampleReceiver atOnce(options);
    atOnce.Tune(signal.offset_Hz);
    atOnce.Process(samples.data(), samples.size(), &whole);

    std::vector<float> pieces;
    CSampleReceiver inPieces(options);
    inPieces.Tune(signal.offset_Hz);
    std::mt19937 random(5);
    for (std::size_t at = 0; at < samples.size();) {
        const std::size_t count = std::min<std::size_t>(random() % 3000, samples.size() - at);
        inPieces.Process(samples.data() + at, count, &pieces);
        at += count;
    }
    ASSERT_EQ(pieces.size(), whole.size());
    for (std::size_t i = 0; i < whole.size(); ++i) ASSERT_NEAR(pieces[i], whole[i], 1e-3);
}

TEST(Receiver, SamplesThatAreNoNumbersPassByAndTheSoundComesBack) {
    FmSignal signal;
    signal.seconds = 1.6;
    std::vector<Sample> samples = MakeFm(signal);
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float infinite = std::numeric_limits<float>::infinity();
    for (std::size_t i = 100000; i < 110000; i += 3) samples[i] = {nan, infinite};
    for (std::size_t i = 120000; i < 130000; i += 5) samples[i] = {1e30f, -1e38f};
    for (std::size_t i = 140000; i < 150000; ++i) samples[i] = {};
    CSampleReceiver receiver(ReceiverOptions{});
    receiver.Tune(300000.0);
    receiver.Process(samples.data(), samples.size() / 2, &*std::make_unique<std::vector<float>>());
    receiver.Tune(0.0);
    std::vector<float> frames;
    receiver.Process(samples.data(), samples.size(), &frames);
    for (const float value : frames) ASSERT_TRUE(std::isfinite(value));
    EXPECT_GE(FitTone(frames, 2, 0, 28800, sdr::kSoundRate_Hz, signal.tone_Hz).Sinad_dB(), 80.0);
}

TEST(Receiver, ARetuneFindsThePilotWithinFortyMilliseconds) {
    FmSignal signal;
    signal.seconds = 0.5;
    signal.carrierToNoise_dBHz = 75.0;
    const std::vector<Sample> samples = MakeFm(signal);
    CSampleReceiver receiver(ReceiverOptions{});
    std::vector<float> frames;
    receiver.Tune(0.0);
    receiver.Process(samples.data(), samples.size(), &frames);
    EXPECT_EQ(receiver.Snapshot().stereo.value, 1.0);
    receiver.Tune(400000.0);
    EXPECT_EQ(receiver.Snapshot().stereo.value, 0.0);
    receiver.Process(samples.data(), samples.size(), &frames);
    EXPECT_EQ(receiver.Snapshot().stereo.value, 0.0);
    receiver.Tune(0.0);
    receiver.Process(samples.data(), static_cast<std::size_t>(0.04 * signal.rate_Hz), &frames);
    EXPECT_EQ(receiver.Snapshot().stereo.value, 1.0);
}

TEST(Receiver, AWeakStationAfterAStrongOneHasItsOwnLevelWithinSixtyMilliseconds) {
    FmSignal strong;
    strong.seconds = 0.3;
    CSampleReceiver receiver(ReceiverOptions{});
    std::vector<float> frames;
    receiver.Tune(0.0);
    std::vector<Sample> samples = MakeFm(strong);
    receiver.Process(samples.data(), samples.size(), &frames);
    FmSignal weak = strong;
    weak.amplitude = 0.01;
    weak.carrierToNoise_dBHz = 70.0;
    samples = MakeFm(weak);
    receiver.Tune(0.0);
    receiver.Process(samples.data(), static_cast<std::size_t>(0.06 * weak.rate_Hz), &frames);
    ASSERT_TRUE(receiver.Snapshot().level.present);
    EXPECT_NEAR(receiver.Snapshot().level.value, 70.0 - 48.0, 2.0);
}

TEST(Receiver, BesideAStrongNeighbourTheNarrowFilterIsTaken) {
    FmSignal signal;
    signal.seconds = 1.0;
    std::vector<Sample> samples = MakeFm(signal);
    FmSignal neighbour = signal;
    neighbour.offset_Hz = 200000.0;
    neighbour.tone_Hz = 700.0;
    neighbour.amplitude = 1.5;
    const std::vector<Sample> other = MakeFm(neighbour);
    for (std::size_t i = 0; i < samples.size(); ++i) samples[i] += other[i];
    CSampleReceiver receiver(ReceiverOptions{});
    receiver.Tune(0.0);
    std::vector<float> frames;
    receiver.Process(samples.data(), samples.size(), &frames);
    EXPECT_EQ(receiver.Snapshot().width, sdr::ChannelWidth::kNarrow);
    ReceiverOptions wide;
    wide.channel = sdr::ChannelChoice::kWide;
    CSampleReceiver open(wide);
    std::vector<float> spoilt;
    open.Process(samples.data(), samples.size(), &spoilt);
    const double narrow_dB = FitTone(frames, 2, 0, kSettled, sdr::kSoundRate_Hz, signal.tone_Hz).Sinad_dB();
    const double wide_dB = FitTone(spoilt, 2, 0, kSettled, sdr::kSoundRate_Hz, signal.tone_Hz).Sinad_dB();
    EXPECT_GT(narrow_dB, wide_dB + 6.0);
}

}  // namespace
