// Shaping, matched filter and mixer against the formulas of the standard.
#include "handset/fmdevice/sdr/rds/matched_filter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

using namespace sdr::rds;

constexpr double kPi = 3.14159265358979323846;
constexpr double kBaseStep_bits = 1187.5 / kBasebandRate_Hz;

// The spectrum of a response that is even in time, at a frequency in cycles a bit.
double SpectrumOf(double (*response)(double), double frequency) {
    double sum = 0.0;
    constexpr double kStep = 1.0 / 256.0;
    for (int i = -256 * 200; i <= 256 * 200; ++i) {
        const double t = i * kStep;
        sum += response(t) * std::cos(2.0 * kPi * frequency * t) * kStep;
    }
    return sum;
}

TEST(RdsShaping, TheSpectrumIsTheStandardsCosineUpToTwiceTheBitRate) {
    const double atZero = SpectrumOf(ShapingImpulse, 0.0);
    for (const double f : {0.25, 0.5, 1.0, 1.5, 1.9}) {
        EXPECT_NEAR(SpectrumOf(ShapingImpulse, f) / atZero, std::cos(kPi * f / 4.0), 2e-4) << f;
    }
    for (const double f : {2.1, 2.5, 3.0, 5.0}) {
        EXPECT_NEAR(SpectrumOf(ShapingImpulse, f) / atZero, 0.0, 2e-4) << f;
    }
}

TEST(RdsShaping, ASymbolIsOddInTimeAndHasNoMean) {
    for (const double t : {0.1, 0.25, 0.4, 1.3}) EXPECT_NEAR(BiphaseSymbol(-t), -BiphaseSymbol(t), 1e-12);
    EXPECT_GT(BiphaseSymbol(-0.25), 0.9);
}

// A baseband of given symbols, sampled as the mixer gives it.
CBaseband BasebandOf(const std::vector<int>& symbols, double delay_bits, double phase) {
    CBaseband baseband;
    for (std::size_t i = 0; i < symbols.size() * 17; ++i) {
        const double time = static_cast<double>(i) * kBaseStep_bits;
        double value = 0.0;
        for (std::size_t n = 0; n < symbols.size(); ++n) {
            const double from = time - static_cast<double>(n) - delay_bits;
            if (std::abs(from) < 12.0) value += symbols[n] * BiphaseSymbol(from);
        }
        baseband.Append(static_cast<float>(value * std::cos(phase)),
                        static_cast<float>(value * std::sin(phase)), time);
    }
    return baseband;
}

TEST(RdsMatchedFilter, GivesEachSymbolItsHeightWithoutTheNeighbours) {
    std::vector<int> symbols;
    for (int i = 0; i < 60; ++i) symbols.push_back((i * i / 3 + i / 5) % 2 == 0 ? 1 : -1);
    const CBaseband baseband = BasebandOf(symbols, 4.37, 0.6);
    const CMatchedFilter filter;
    for (std::size_t n = 5; n < 45; ++n) {
        const SymbolSample z = filter.At(baseband, static_cast<double>(n) + 4.37);
        EXPECT_NEAR(z.re * std::cos(0.6) + z.im * std::sin(0.6), symbols[n], 0.03) << n;
        EXPECT_NEAR(z.im * std::cos(0.6) - z.re * std::sin(0.6), 0.0, 1e-3) << n;
    }
}

// The transform of raised cosine times the half-bit difference, squared: what a symbol gives beside its
// middle.
double Correlation(double time_bits) {
    double sum = 0.0;
    double all = 0.0;
    for (int i = 0; i < 4000; ++i) {
        const double f = (i + 0.5) / 2000.0;
        const double power = std::pow(std::cos(kPi * f / 4.0) * std::sin(kPi * f / 2.0), 2.0);
        sum += power * std::cos(2.0 * kPi * f * time_bits);
        all += power;
    }
    return sum / all;
}

TEST(RdsMatchedFilter, BesideTheMiddleASymbolFallsAsItsSpectrumSays) {
    const CBaseband baseband =
        BasebandOf(std::vector<int>{1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}, 6.0, 0.0);
    const CMatchedFilter filter;
    for (double t = -1.0; t <= 1.0; t += 0.125) {
        EXPECT_NEAR(filter.At(baseband, 6.0 + t).re, Correlation(t), 0.03) << t;
    }
}

TEST(RdsMatchedFilter, TheSlopeIsTheChangeOfTheValueAndTheBendThatOfTheSlope) {
    const CBaseband baseband =
        BasebandOf(std::vector<int>{1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}, 6.0, 0.0);
    const CMatchedFilter filter;
    for (const double t : {-0.25, -0.125, 0.0, 0.125, 0.25}) {
        const double change = (Correlation(t + 0.01) - Correlation(t - 0.01)) / 0.02;
        EXPECT_NEAR(filter.SlopeAt(baseband, 6.0 + t).re, change, 0.15) << t;
    }
    EXPECT_NEAR(filter.Bend(), (Correlation(0.01) - 2.0 + Correlation(-0.01)) / 1e-4, 0.5);
}

// What the mixer gives of a tone, in amplitude, after its filter has filled.
double MixerGain(double frequency_Hz) {
    CSubcarrierMixer mixer;
    CBaseband baseband;
    std::vector<float> samples(384);
    double phase = 0.0;
    for (int i = 0; i < 100; ++i) {
        for (std::size_t k = 0; k < samples.size(); ++k) {
            const double n = static_cast<double>(i) * 384.0 + static_cast<double>(k);
            samples[k] =
                static_cast<float>(std::sin(2.0 * kPi * std::fmod(frequency_Hz / 384000.0 * n, 1.0)));
        }
        sdr::MpxBlock block;
        block.samples = samples.data();
        block.count = samples.size();
        block.pilotPhase_turns = phase;
        block.pilotLocked = true;
        phase = std::fmod(phase + 384.0 * block.pilotStep_turns, 1.0);
        mixer.Take(block, baseband);
    }
    double power = 0.0;
    for (std::uint64_t i = 1000; i < 1900; ++i) {
        power += static_cast<double>(*baseband.Re(i)) * *baseband.Re(i) +
                 static_cast<double>(*baseband.Im(i)) * *baseband.Im(i);
    }
    return std::sqrt(power / 900.0);
}

TEST(RdsMixer, PassesTheSubcarriersBandAndStopsWhatWouldFallUponIt) {
    for (const double f : {54600.0, 56000.0, 57000.0, 58000.0, 59400.0}) {
        EXPECT_NEAR(MixerGain(f), 1.0, 0.005) << f;
    }
    // The images of the 19.2 kHz: the difference signal, the pilot, the sum signal.
    for (const double f : {35500.0, 37800.0, 40100.0, 16300.0, 18600.0, 19000.0, 21000.0, 600.0, 1800.0}) {
        EXPECT_LT(MixerGain(f), 3e-4) << f;
    }
}

TEST(RdsMixer, TheReferenceGoesOnWithoutAJumpWhenTheLoopLocksAnew) {
    CSubcarrierMixer mixer;
    CBaseband baseband;
    const std::vector<float> samples(384, 0.0f);
    sdr::MpxBlock block;
    block.samples = samples.data();
    block.count = samples.size();
    // A block is 19 whole periods of the pilot; the loop loses it and finds it at another phase.
    for (int i = 0; i < 40; ++i) {
        block.pilotLocked = i < 10 || i >= 20;
        block.pilotPhase_turns = i < 20 ? 0.1 : 0.77;
        mixer.Take(block, baseband);
    }
    double longest = 0.0;
    for (std::uint64_t i = 1; i < baseband.Count(); ++i) {
        longest = std::max(longest, std::abs(baseband.Clock(i) - baseband.Clock(i - 1) - kBaseStep_bits));
    }
    EXPECT_LT(longest * 16.0, 0.01);
}

}  // namespace
