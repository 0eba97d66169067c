// The meter against carriers in noise whose ratio is known.
#include "handset/fmdevice/sdr/signal_meter.h"

#include <gtest/gtest.h>

#include <cmath>

#include "handset/fmdevice/sdr/receiver.h"
#include "tests/native/sdr/fm_signal.h"
#include "tests/native/sdr/received.h"

namespace {

using sdr::CSampleReceiver;
using sdr::ReceiverSnapshot;
using sdr::Sample;
using sdr_test::FmSignal;

ReceiverSnapshot Measure(const FmSignal& signal) {
    return sdr_test::Receive(signal).snapshot;
}

TEST(SignalMeter, LevelsReachFromTheUnusableToFullAndFifteenIsTheThreshold) {
    EXPECT_EQ(sdr::LevelOf(40.0), 0.0);
    EXPECT_EQ(sdr::LevelOf(63.0), 15.0);
    EXPECT_EQ(sdr::LevelOf(113.0), 65.0);
    EXPECT_EQ(sdr::LevelOf(150.0), 100.0);
}

TEST(SignalMeter, IsRightToOneDecibelHoweverTheStationIsModulated) {
    struct Programme {
        double left, right, pilot, tone_Hz;
    };
    for (const Programme& programme :
         {Programme{0.0, 0.0, 0.0, 1000.0}, Programme{0.0, 0.0, 0.1, 1000.0}, Programme{1.0, 1.0, 0.1, 400.0},
          Programme{1.0, -1.0, 0.1, 9000.0}, Programme{1.0, 1.0, 0.0, 3000.0}}) {
        for (const double carrierToNoise_dBHz : {55.0, 63.0, 69.0, 75.0, 82.0, 100.0}) {
            FmSignal signal;
            signal.rate_Hz = 960000.0;
            signal.seconds = 0.6;
            signal.left = programme.left;
            signal.right = programme.right;
            signal.pilot = programme.pilot;
            signal.tone_Hz = programme.tone_Hz;
            signal.carrierToNoise_dBHz = carrierToNoise_dBHz;
            const ReceiverSnapshot snapshot = Measure(signal);
            ASSERT_TRUE(snapshot.carrierToNoise_dBHz.present);
            EXPECT_NEAR(snapshot.carrierToNoise_dBHz.value, carrierToNoise_dBHz, 1.0)
                << programme.left << " " << programme.right << " " << programme.pilot;
        }
    }
}

TEST(SignalMeter, NoiseAloneHasNoLevel) {
    std::vector<Sample> samples(1920000);
    sdr_test::AddNoise(0.1, 9, &samples);
    CSampleReceiver receiver(sdr::ReceiverOptions{});
    std::vector<float> frames;
    receiver.Process(samples.data(), samples.size(), &frames);
    EXPECT_LE(receiver.Snapshot().level.value, 2.0);
    EXPECT_EQ(receiver.Snapshot().stereo.value, 0.0);
}

TEST(SignalMeter, ALevelIsThereWithinThirtyMillisecondsOfTuningAndItsAgeIsKnown) {
    FmSignal signal;
    signal.seconds = 0.5;
    signal.carrierToNoise_dBHz = 75.0;
    const std::vector<Sample> samples = MakeFm(signal);
    CSampleReceiver receiver(sdr::ReceiverOptions{});
    std::vector<float> frames;
    EXPECT_FALSE(receiver.Snapshot().level.present);
    receiver.Process(samples.data(), samples.size(), &frames);
    receiver.Tune(0.0);
    EXPECT_FALSE(receiver.Snapshot().level.present);
    receiver.Process(samples.data(), 57600, &frames);
    EXPECT_TRUE(receiver.Snapshot().level.present);
    EXPECT_NEAR(receiver.Snapshot().level.value, 27.0, 2.0);
    EXPECT_LE(receiver.Snapshot().level.age_s, 0.02);
}

TEST(SignalMeter, ASubcarrierBesideTheSoundIsNoNoise) {
    // 30 dB below the programme, where the middle one of the three places is.
    sdr::CSignalMeter meter(384000.0);
    std::vector<Sample> carrier(384, Sample(1.0f, 0.0f));
    std::vector<float> multiplex(384);
    std::vector<Sample> noise(384 * 1000);
    sdr_test::AddNoise(2e-6, 11, &noise);
    std::size_t at = 0;
    float before = 0.0f;
    for (int block = 0; block < 1000; ++block) {
        for (std::size_t i = 0; i < 384; ++i, ++at) {
            const double t = static_cast<double>(at) / 384000.0;
            // Differences of white phase noise rise with the frequency as FM's do.
            multiplex[i] =
                static_cast<float>((noise[at].real() - before) * 384000.0 / (6.283185307179586 * 75000.0) +
                                   0.03 * std::sin(6.283185307179586 * 83000.0 * t));
            before = noise[at].real();
        }
        meter.AddChannel(carrier.data(), carrier.data(), sdr::ChannelWidth::kWide, 384);
        meter.AddMultiplex(multiplex.data(), 384);
    }
    // Phase noise of power 1e-6 in 192 kHz: the carrier's quadrature half of the noise. The differences have
    // no repair of their droop, which is 0.6 dB at 72 kHz and 1.1 dB at 100.
    EXPECT_NEAR(meter.CarrierToNoise_dBHz().value, 10.0 * std::log10(192000.0 / 1e-6), 1.5);
}

}  // namespace
