// The change of rate against tones, and the widths of the channel.
#include "handset/fmdevice/sdr/channelizer.h"

#include <gtest/gtest.h>

#include <cmath>

#include "handset/fmdevice/sdr/channel_filter.h"
#include "handset/fmdevice/sdr/mpx_block.h"
#include "handset/fmdevice/sdr/tuning.h"
#include "tests/native/sdr/fm_signal.h"
#include "tests/native/sdr/tone_fit.h"

namespace {

using sdr::CChannelizer;
using sdr::Sample;
using sdr_test::Decibels;

constexpr double kTwoPi = 6.283185307179586;

struct Through {
    double amplitude;  // of the tone where it belongs
    double rest;       // everything else: images, folding, roughness
};

Through SendTone(double rate_Hz, double tone_Hz) {
    CChannelizer channelizer(rate_Hz);
    std::vector<Sample> samples;
    for (std::size_t i = 0; i < static_cast<std::size_t>(rate_Hz / 20.0); ++i) {
        const double phase = kTwoPi * tone_Hz / rate_Hz * static_cast<double>(i);
        samples.emplace_back(static_cast<float>(std::cos(phase)), static_cast<float>(std::sin(phase)));
    }
    std::vector<Sample> results;
    channelizer.Process(samples.data(), samples.size(), &results);
    EXPECT_NEAR(static_cast<double>(results.size()), sdr::kMpxRate_Hz / 20.0, 2.0);
    constexpr std::size_t kFrom = 1000;
    std::complex<double> sum;
    double power = 0.0;
    for (std::size_t i = kFrom; i < results.size(); ++i) {
        const std::complex<double> value(results[i].real(), results[i].imag());
        sum += value * std::polar(1.0, -kTwoPi * tone_Hz / sdr::kMpxRate_Hz * static_cast<double>(i));
        power += std::norm(value);
    }
    const auto count = static_cast<double>(results.size() - kFrom);
    const double amplitude = std::abs(sum) / count;
    return {amplitude, std::sqrt(std::max(power / count - amplitude * amplitude, 0.0))};
}

constexpr double kRates_Hz[] = {200000.0,  225001.0,  240000.0,  250000.0,  300000.0,  384000.0,  960000.0,
                                1000000.0, 1024000.0, 1411200.0, 1920000.0, 2048000.0, 2400000.0, 2880000.0};

TEST(Channelizer, LetsItsChannelThroughWholeAtEveryRate) {
    for (const double rate_Hz : kRates_Hz) {
        const double pass_Hz = CChannelizer(rate_Hz).PassHalfWidth_Hz();
        EXPECT_GE(pass_Hz, std::min(rate_Hz, sdr::kMpxRate_Hz) * 0.43) << rate_Hz;
        for (const double share : {-1.0, -0.5, 0.0, 0.3, 0.98}) {
            const Through through = SendTone(rate_Hz, share * pass_Hz);
            EXPECT_NEAR(Decibels(through.amplitude), 0.0, 0.01) << rate_Hz << " " << share;
            EXPECT_LE(Decibels(through.rest), -69.0) << rate_Hz << " " << share;
        }
    }
}

TEST(Channelizer, StopsWhatWouldFoldIntoTheChannel) {
    for (const double rate_Hz : {960000.0, 1024000.0, 1920000.0, 2400000.0}) {
        const double pass_Hz = CChannelizer(rate_Hz).PassHalfWidth_Hz();
        for (const double tone_Hz : {sdr::kMpxRate_Hz - pass_Hz, 300000.0, -400000.0, 470000.0}) {
            const Through through = SendTone(rate_Hz, tone_Hz);
            EXPECT_LE(Decibels(std::hypot(through.amplitude, through.rest)), -78.0)
                << rate_Hz << " " << tone_Hz;
        }
    }
}

TEST(Channelizer, ItsNoiseBandwidthIsWhatWhiteNoiseKeeps) {
    for (const double rate_Hz : {240000.0, 1024000.0, 1920000.0}) {
        CChannelizer channelizer(rate_Hz);
        std::vector<Sample> samples(static_cast<std::size_t>(rate_Hz / 2.0));
        sdr_test::AddNoise(1.0, 3, &samples);
        std::vector<Sample> results;
        channelizer.Process(samples.data(), samples.size(), &results);
        double power = 0.0;
        for (const Sample& sample : results) power += std::norm(sample);
        power /= static_cast<double>(results.size());
        EXPECT_NEAR(power * rate_Hz / channelizer.NoiseBandwidth_Hz(), 1.0, 0.02) << rate_Hz;
    }
}

TEST(ChannelFilter, EachWidthPassesAndStopsWhatItSays) {
    using sdr::CChannelFilter;
    using sdr::ChannelWidth;
    for (double f = 0.0; f <= 190000.0; f += 1000.0) {
        EXPECT_NEAR(CChannelFilter::ResponseAt(ChannelWidth::kWide, f), 1.0, 1e-9);
        const double medium_dB = Decibels(CChannelFilter::ResponseAt(ChannelWidth::kMedium, f));
        const double narrow_dB = Decibels(CChannelFilter::ResponseAt(ChannelWidth::kNarrow, f));
        if (f <= 95000.0) EXPECT_NEAR(medium_dB, 0.0, 0.05) << f;
        if (f >= 130000.0) EXPECT_LE(medium_dB, -55.0) << f;
        if (f <= 70000.0) EXPECT_NEAR(narrow_dB, 0.0, 0.05) << f;
        if (f >= 105000.0) EXPECT_LE(narrow_dB, -55.0) << f;
    }
}

TEST(Tuning, MovesAStationToTheMiddleAndTakesDirectCurrentAway) {
    sdr::CTuning tuning(1000000.0);
    tuning.SetOffset(123000.0);
    std::vector<Sample> samples;
    for (int i = 0; i < 2000000; ++i) {
        const double phase = kTwoPi * 0.123 * i;
        samples.emplace_back(static_cast<float>(0.5 * std::cos(phase) + 0.1),
                             static_cast<float>(0.5 * std::sin(phase) - 0.2));
    }
    for (std::size_t at = 0; at < samples.size(); at += 1600) tuning.Process(samples.data() + at, 1600);
    EXPECT_NEAR(tuning.DirectCurrent().real(), 0.1, 2e-3);
    EXPECT_NEAR(tuning.DirectCurrent().imag(), -0.2, 2e-3);
    for (std::size_t i = 1990000; i < samples.size(); ++i) {
        ASSERT_NEAR(samples[i].real(), 0.5, 5e-3);
        ASSERT_NEAR(samples[i].imag(), 0.0, 5e-3);
    }
}

TEST(Tuning, ARestingCarrierInTheMiddleIsNoDirectCurrent) {
    sdr::CTuning tuning(1000000.0);
    std::vector<Sample> samples(1000000, Sample(0.5f, 0.25f));
    tuning.Process(samples.data(), samples.size());
    EXPECT_NEAR(std::abs(samples.back() - Sample(0.5f, 0.25f)), 0.0, 1e-6);
}

}  // namespace
