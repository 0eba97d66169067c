// The bridge between two clocks: its sound, and how it follows a ring that is emptied by another clock.
#include "handset/fmdevice/sdr/clock_bridge.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/native/sdr/tone_fit.h"

namespace {

using sdr::CClockBridge;

std::vector<float> Tone(double tone_Hz, std::size_t from, std::size_t count) {
    std::vector<float> frames;
    for (std::size_t i = from; i < from + count; ++i) {
        const auto value = static_cast<float>(
            0.5 * std::sin(6.283185307179586 * tone_Hz * static_cast<double>(i) / 48000.0));
        frames.insert(frames.end(), {value, -value});
    }
    return frames;
}

TEST(ClockBridge, AToneKeepsItsPitchItsStrengthAndItsPurity) {
    for (const double host_Hz : {44100.0, 48000.0, 96000.0}) {
        for (const double tone_Hz : {100.0, 1000.0, 10000.0, 14000.0}) {
            CClockBridge bridge(host_Hz, 0.1);
            std::vector<float> output;
            for (std::size_t at = 0; at < 100000; at += 480) {
                const std::vector<float> frames = Tone(tone_Hz, at, 480);
                bridge.Process(frames.data(), 480, 0.1, &output);
            }
            const sdr_test::ToneFit left = sdr_test::FitTone(output, 2, 0, 5000, host_Hz, tone_Hz);
            EXPECT_NEAR(sdr_test::Decibels(left.amplitude / 0.5), 0.0, 0.03) << host_Hz << " " << tone_Hz;
            EXPECT_GE(left.Sinad_dB(), 85.0) << host_Hz << " " << tone_Hz;
            EXPECT_EQ(output[20000], -output[20001]);
        }
    }
}

struct Ride {
    double least_s = 1e9;
    double most_s = -1e9;
    double end_s = 0.0;
    double correction_ppm = 0.0;
};

// Some minutes of a ring that is read by the host's clock; samples come in jerks of 68 ms.
Ride RideWith(double ppm) {
    CClockBridge bridge(44100.0, 0.2);
    constexpr std::size_t kJerk = 3264;
    const std::vector<float> frames(2 * kJerk, 0.1f);
    double fill_s = 0.2;
    Ride ride;
    for (double now_s = 0.0; now_s < 400.0; now_s += 0.068) {
        std::vector<float> output;
        bridge.Process(frames.data(), kJerk, fill_s, &output);
        fill_s += static_cast<double>(output.size() / 2) / 44100.0;
        ride.most_s = std::max(ride.most_s, fill_s);
        // The samples' clock is ahead: less of the host's time goes by.
        fill_s -= 0.068 / (1.0 + ppm * 1e-6);
        ride.least_s = std::min(ride.least_s, fill_s);
    }
    ride.end_s = fill_s;
    ride.correction_ppm = bridge.Correction_ppm();
    return ride;
}

TEST(ClockBridge, HoldsTheRingBetweenClocksThatDisagree) {
    for (const double ppm : {-200.0, 100.0}) {
        const Ride ride = RideWith(ppm);
        EXPECT_NEAR(ride.correction_ppm, ppm, 5.0);
        EXPECT_NEAR(ride.end_s, 0.2, 0.003) << ppm;
        EXPECT_GT(ride.least_s, 0.18) << ppm;
        EXPECT_LT(ride.most_s, 0.2 + 0.068 + 0.02) << ppm;
    }
}

TEST(ClockBridge, NeverBendsThePitchByMoreThanItSays) {
    CClockBridge bridge(48000.0, 0.2);
    const std::vector<float> frames(960, 0.1f);
    std::vector<float> output;
    for (int i = 0; i < 6000; ++i) bridge.Process(frames.data(), 480, 5.0, &output);
    EXPECT_NEAR(bridge.Correction_ppm(), CClockBridge::kMostCorrection_ppm, 1e-6);
    EXPECT_NEAR(static_cast<double>(output.size()) / 2.0, 6000.0 * 480.0 / (1.0 + 300e-6),
                6000.0 * 480.0 * 100e-6);
    bridge.Restart();
    EXPECT_NEAR(bridge.Correction_ppm(), CClockBridge::kMostCorrection_ppm, 1e-6);
}

TEST(ClockBridge, WhatItHoldsBackIsSilencedAndLeavesItsLength) {
    CClockBridge bridge(44100.0, 0.1), undisturbed(44100.0, 0.1);
    const std::vector<float> tone = Tone(1000.0, 0, 4800), nothing(9600, 0.0f);
    std::vector<float> output, asLong;
    bridge.Process(tone.data(), 4800, 0.1, &output);
    undisturbed.Process(tone.data(), 4800, 0.1, &asLong);
    bridge.Silence();
    const std::size_t before = output.size();
    bridge.Process(nothing.data(), 4800, 0.1, &output);
    undisturbed.Process(nothing.data(), 4800, 0.1, &asLong);
    EXPECT_EQ(output.size(), asLong.size());
    for (std::size_t i = before; i < output.size(); ++i) ASSERT_NEAR(output[i], 0.0f, 1e-5) << i - before;
    // The next station's sound is whole from then on.
    bridge.Process(tone.data(), 4800, 0.1, &output);
    undisturbed.Process(tone.data(), 4800, 0.1, &asLong);
    EXPECT_EQ(std::vector<float>(output.end() - 8000, output.end()),
              std::vector<float>(asLong.end() - 8000, asLong.end()));
}

}  // namespace
