// A band of several stations, looked at.
#include "handset/fmdevice/sdr/band_scan.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/native/sdr/fm_signal.h"

namespace {

using sdr::CBandLook;
using sdr::ChannelLook;
using sdr::Sample;
using sdr_test::FmSignal;

constexpr double kCentre_Hz = 98e6;

struct Station {
    double frequency_Hz;
    double carrierToNoise_dBHz;
    double off_Hz;
};
const Station kStations[] = {
    {97.3e6, 90.0, 0.0}, {97.6e6, 60.0, 0.0}, {98.0e6, 100.0, 0.0}, {98.5e6, 75.0, 8000.0}};

std::vector<Sample> Band() {
    constexpr double kDensity = 1e-12;
    std::vector<Sample> band(40000);
    sdr_test::AddNoise(kDensity * 1920000.0, 4, &band);
    double tone_Hz = 300.0;
    for (const Station& station : kStations) {
        FmSignal signal;
        signal.seconds = 40000.0 / 1920000.0;
        signal.offset_Hz = station.frequency_Hz - kCentre_Hz + station.off_Hz;
        signal.tone_Hz = tone_Hz += 500.0;
        signal.amplitude = std::sqrt(kDensity * std::pow(10.0, station.carrierToNoise_dBHz / 10.0));
        const std::vector<Sample> samples = MakeFm(signal);
        for (std::size_t i = 0; i < band.size(); ++i) band[i] += samples[i];
    }
    return band;
}

std::vector<double> Raster(double from_Hz, double to_Hz, double step_Hz) {
    std::vector<double> raster;
    for (double f = from_Hz; f <= to_Hz + 1.0; f += step_Hz) raster.push_back(f);
    return raster;
}

TEST(BandScan, FindsEachStationInItsPlaceAndNoOther) {
    CBandLook look(1920000.0);
    const std::vector<Sample> band = Band();
    look.Add(band.data(), 1234);
    look.Add(band.data() + 1234, band.size() - 1234);
    EXPECT_NEAR(look.Seconds(), 0.0208, 0.001);
    std::vector<double> found;
    for (const ChannelLook& channel : look.Channels(kCentre_Hz, Raster(97.2e6, 98.8e6, 100e3))) {
        if (channel.carrier) found.push_back(channel.frequency_Hz);
    }
    std::vector<double> sent;
    for (const Station& station : kStations) sent.push_back(station.frequency_Hz);
    EXPECT_EQ(found, sent);
}

TEST(BandScan, LevelsAndOffsetsAreThoseOfTheStations) {
    CBandLook look(1920000.0);
    const std::vector<Sample> band = Band();
    look.Add(band.data(), band.size());
    for (const Station& station : kStations) {
        const ChannelLook channel = look.Channels(kCentre_Hz, {station.frequency_Hz}).at(0);
        EXPECT_NEAR(channel.carrierToNoise_dBHz, station.carrierToNoise_dBHz, 2.0) << station.frequency_Hz;
        EXPECT_NEAR(channel.level, station.carrierToNoise_dBHz - 48.0, 2.0);
        EXPECT_NEAR(channel.carrierOffset_Hz, station.off_Hz, 6000.0) << station.frequency_Hz;
    }
}

TEST(BandScan, NoiseAloneHasNoStations) {
    CBandLook look(1920000.0);
    EXPECT_TRUE(look.Channels(kCentre_Hz, {kCentre_Hz}).empty());
    std::vector<Sample> samples(40000);
    sdr_test::AddNoise(1.0, 5, &samples);
    look.Add(samples.data(), samples.size());
    const std::vector<ChannelLook> channels = look.Channels(kCentre_Hz, Raster(97.2e6, 98.8e6, 50e3));
    EXPECT_EQ(channels.size(), 33u);
    for (const ChannelLook& channel : channels) {
        EXPECT_FALSE(channel.carrier);
        EXPECT_LE(channel.level, 5.0);
    }
}

TEST(BandScan, AWholeBandTakesThirteenLooksAndNothingIsLeftOut) {
    const std::vector<double> centres = CBandLook::Centres(87.5e6, 108e6, 1920000.0);
    EXPECT_LE(centres.size(), 13u);
    const double half_Hz = CBandLook(1920000.0).UsableHalfWidth_Hz();
    for (const double frequency_Hz : Raster(87.5e6, 108e6, 50e3)) {
        bool seen = false;
        for (const double centre_Hz : centres) seen = seen || std::fabs(frequency_Hz - centre_Hz) <= half_Hz;
        EXPECT_TRUE(seen) << frequency_Hz;
    }
}

TEST(BandScan, ChannelsBeyondTheUsableWidthAreLeftOut) {
    CBandLook look(1920000.0);
    std::vector<Sample> samples(40000);
    look.Add(samples.data(), samples.size());
    EXPECT_TRUE(look.Channels(kCentre_Hz, {kCentre_Hz + 900e3}).empty());
    EXPECT_EQ(look.Channels(kCentre_Hz, {kCentre_Hz + 800e3}).size(), 1u);
}

}  // namespace
