// The gain of a stick, between clipping and sleep.
#include "handset/fmdevice/antenna/gain_hold.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

using fm::CGainHold;
constexpr double kRate_Hz = 240000.0;

// A tuner whose steps are 1.7 dB each, and a signal that has this strength at the lowest of them.
void Receive(CGainHold* gain, double strength, double seconds, int* changes = nullptr) {
    std::vector<std::uint8_t> bytes(4800);
    for (double s = 0.0; s < seconds; s += 0.01) {
        const double amplitude = strength * std::pow(10.0, gain->Step() * 1.7 / 20.0);
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            const double value = 127.5 + 127.5 * amplitude * std::sin(0.37 * static_cast<double>(i));
            bytes[i] = static_cast<std::uint8_t>(std::clamp(std::lround(value), 0L, 255L));
        }
        if (gain->Add(bytes.data(), bytes.size(), kRate_Hz) && changes != nullptr) ++*changes;
    }
}

double Amplitude(const CGainHold& gain, double strength) {
    return strength * std::pow(10.0, gain.Step() * 1.7 / 20.0);
}

TEST(GainHold, ASignalThatClipsIsTurnedDownUntilItDoesNot) {
    CGainHold gain(29);
    Receive(&gain, 0.2, 10.0);
    EXPECT_LE(Amplitude(gain, 0.2), 1.0);
    EXPECT_GT(Amplitude(gain, 0.2), 0.5);
}

TEST(GainHold, ASignalThatIsMuchTooStrongIsTurnedDownWithinHalfASecondAndNotTooFar) {
    for (const double strength : {0.05, 0.1, 0.2, 0.5}) {
        CGainHold gain(29);
        Receive(&gain, strength, 0.51);
        EXPECT_LE(Amplitude(gain, strength), 1.1) << strength;
        EXPECT_GT(Amplitude(gain, strength), 0.4) << strength;
    }
}

TEST(GainHold, AStrongSignalInTheLastOfAWindowIsTurnedDownAsFar) {
    CGainHold gain(29);
    Receive(&gain, 0.01, 0.08);
    int changes = 0;
    Receive(&gain, 0.1, 0.02, &changes);
    EXPECT_EQ(changes, 1);
    EXPECT_LE(Amplitude(gain, 0.1), 1.1);
    EXPECT_GT(Amplitude(gain, 0.1), 0.4);
}

TEST(GainHold, ASignalThatIsHardlyThereIsTurnedUp) {
    CGainHold gain(29);
    Receive(&gain, 0.0005, 60.0);
    EXPECT_GT(Amplitude(gain, 0.0005), 0.1);
    EXPECT_LT(gain.Step(), 29u);
}

TEST(GainHold, OnceRightItStaysWhereItIs) {
    CGainHold gain(29);
    Receive(&gain, 0.05, 60.0);
    int changes = 0;
    Receive(&gain, 0.05, 60.0, &changes);
    EXPECT_EQ(changes, 0);
}

TEST(GainHold, ATunerWithoutStepsIsLeftAlone) {
    CGainHold gain(0);
    int changes = 0;
    Receive(&gain, 3.0, 3.0, &changes);
    Receive(&gain, 0.0, 10.0, &changes);
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(gain.Step(), 0u);
}

}  // namespace
