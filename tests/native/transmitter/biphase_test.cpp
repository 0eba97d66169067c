// The waveform of RDS, against the closed forms of its filter.
#include "handset/transmitter/biphase.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "tests/native/transmitter/spectrum.h"
#include "tests/native/transmitter/zeros.h"

namespace {

using test::kPi;
using test::Zeros;
using transmitter::CBiphasePulse;
using transmitter::CBiphaseSignal;
using transmitter::Group;

// The pulse's spectrum at so many times the bit rate.
double SpectrumAt(const CBiphasePulse& pulse, double perBit) {
    constexpr int kSteps = 64;
    double sum = 0;
    for (int i = -CBiphasePulse::kReach_bits * kSteps; i <= CBiphasePulse::kReach_bits * kSteps; ++i) {
        const double time = static_cast<double>(i) / kSteps;
        // Odd around the middle of the bit, its spectrum is made of sines.
        sum -= pulse.At(time) * std::sin(2 * kPi * perBit * time) / kSteps;
    }
    return sum;
}

TEST(TransmitterBiphase, ThePulseHasTheSpectrumOfTheStandardUpToTwiceTheBitRateAndNoneBeyond) {
    const CBiphasePulse pulse;
    // cos(pi f t_d / 4) of an impulse and its negative; equal symbols, all the energy of which is at 1, peak
    // at 1.
    const double scale = 0.5 / (std::cos(kPi / 4) * std::sin(kPi / 2));
    for (const double f : {0.1, 0.25, 0.5, 0.75, 1.0, 1.25, 1.5, 1.75, 1.9}) {
        EXPECT_NEAR(SpectrumAt(pulse, f), scale * std::cos(kPi * f / 4) * std::sin(kPi * f / 2), 2e-3) << f;
    }
    for (const double f : {2.2, 2.5, 3.0, 4.5, 8.0}) EXPECT_NEAR(SpectrumAt(pulse, f), 0, 1e-3) << f;
}

TEST(TransmitterBiphase, RandomBitsHaveHalfThePowerOfTheirLargestSymbolsPeak) {
    EXPECT_NEAR(CBiphasePulse().MeanSquare(), 0.5, 2e-3);
}

Group Ones() {
    Group group = Zeros();
    for (std::uint32_t& flips : group.flips) flips ^= 0x3FFFFFF;
    return group;
}

TEST(TransmitterBiphase, ZerosRepeatTheSymbolAndMakeASineOfTheBitRateWithPeak1) {
    CBiphaseSignal signal(Zeros);
    for (int i = 0; i < 3000; ++i) {
        const double bits = 40 + i / 97.0;
        // Before anything was sent the symbol was a zero's: down first, then up.
        EXPECT_NEAR(signal.At(bits), -std::sin(2 * kPi * bits), 2e-3) << bits;
    }
}

TEST(TransmitterBiphase, OnesChangeTheSymbolEveryTime) {
    CBiphaseSignal signal(Ones);
    for (int bit = 40; bit < 140; ++bit) {
        const double here = signal.At(bit + 0.25);
        EXPECT_NEAR(signal.At(bit + 1.25), -here, 1e-3) << bit;
    }
}

TEST(TransmitterBiphase, TheHalvesOfEachBitTellTheDifferentiallyCodedBits) {
    const Group sent{{0xD301, 0x0408, 0xE0CD, 0x4B4F}, {}};
    CBiphaseSignal signal([&] { return sent; });
    const auto bits = Bits(sent);
    bool last = signal.At(0.25) > signal.At(0.75);
    EXPECT_EQ(last, bits[0]) << "before the first bit a zero was sent";
    for (std::size_t i = 1; i < 3 * bits.size(); ++i) {
        const auto bit = static_cast<double>(i);
        const double first = signal.At(bit + 0.25);
        const bool symbol = first > signal.At(bit + 0.75);
        EXPECT_EQ(symbol != last, bits[i % bits.size()]) << i;
        last = symbol;
    }
    EXPECT_EQ(signal.GroupsTaken(), 4) << "three groups, and the next for the pulses that reach back";
}

}  // namespace
