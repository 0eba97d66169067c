// What the receiver hears of the ether: the stations of a band, as the band file says.
#include "handset/ether/air.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "handset/fmdevice/band/band_file.h"
#include "handset/fmdevice/sdr/rds/decoder.h"
#include "handset/fmdevice/sdr/receiver.h"
#include "handset/fmdevice/sdr/sample_form.h"
#include "tests/native/sdr/tone_fit.h"

namespace {

using ether::CAir;
using ether::Window;
using sdr_test::Decibels;
using sdr_test::FitTone;

// 12 o'clock of 23 November 2026.
constexpr double kNoon_s = 1795435200;
constexpr double kStation_Hz = 98.5e6;

std::unique_ptr<fm::IGenerator> NoFile(const std::string&) {
    return fm::MakeGenerator({});
}

fm::Band Band(const std::string& text) {
    std::vector<std::string> faults;
    const fm::Band band = fm::ReadBand("band.ini", text, &faults);
    EXPECT_TRUE(faults.empty());
    return band;
}

const std::string kStation =
    "[9850]\nlevel=45\nstereo=1\nps=KORA ONE\npty=News\npt=Morning\nrt=Good morning\naf=90.1 101.1\nct=1\n"
    "programme=tone:440,660\n";

// The narrowest window that holds a whole station costs least.
Window At(double centre_Hz, std::uint32_t rate_Hz = 300000) {
    Window window;
    window.centre_Hz = centre_Hz;
    window.rate_Hz = rate_Hz;
    return window;
}

struct Heard {
    sdr::ReceiverSnapshot snapshot;
    sdr::rds::Station data;
    std::vector<float> frames;
    double largest = 0;  // of the bytes, from the middle
    double clipped = 0;  // share of the bytes at either end
};

Heard Listen(CAir& air, const Window& window, double seconds, double station_Hz = kStation_Hz) {
    air.SetWindow(window);
    sdr::ReceiverOptions options;
    options.rate_Hz = window.rate_Hz;
    sdr::CSampleReceiver receiver(options);
    sdr::rds::CDecoder data;
    receiver.SetListener(&data);
    receiver.Tune(station_Hz - window.centre_Hz);
    sdr::CSampleDecoder decoder(sdr::SampleForm::kCu8);
    Heard heard;
    std::size_t ends = 0, all = 0;
    for (double left = seconds * window.rate_Hz; left > 0;) {
        std::vector<std::uint8_t> bytes;
        left -= static_cast<double>(air.Read(&bytes));
        std::vector<sdr::Sample> samples;
        decoder.Decode(bytes.data(), bytes.size(), &samples);
        receiver.Process(samples.data(), samples.size(), &heard.frames);
        for (const std::uint8_t byte : bytes) {
            heard.largest = std::max(heard.largest, std::abs(byte - 127.5));
            ends += byte == 0 || byte == 255 ? 1 : 0;
        }
        all += bytes.size();
    }
    heard.clipped = static_cast<double>(ends) / static_cast<double>(all);
    heard.snapshot = receiver.Snapshot();
    heard.data = data.Current();
    return heard;
}

class Air : public testing::Test {
  protected:
    CAir air{NoFile, kNoon_s, 2};
};

TEST_F(Air, AStationComesInAtTheLevelOfTheBandFile) {
    for (const int level : {17, 25, 45, 52}) {
        SCOPED_TRACE(level);
        air.SetBand(
            Band("[9850]\nlevel=" + std::to_string(level) + "\nstereo=1\nps=A\nprogramme=tone:440\n"));
        EXPECT_NEAR(Listen(air, At(kStation_Hz - 100e3, 960000), 0.8).snapshot.level.value, level, 1.0);
    }
}

TEST_F(Air, BothSidesOfAProgrammeAreHeardApart) {
    air.SetBand(Band(kStation));
    const Heard heard = Listen(air, At(kStation_Hz + 150.25e3, 960000), 2.0);
    EXPECT_EQ(heard.snapshot.stereo.value, 1.0);
    const auto left = FitTone(heard.frames, 2, 0, 48000, sdr::kSoundRate_Hz, 440);
    const auto right = FitTone(heard.frames, 2, 1, 48000, sdr::kSoundRate_Hz, 660);
    // The programme has 66.25 of the 75 kHz to itself.
    EXPECT_NEAR(Decibels(left.amplitude / (fm::kToneAmplitude * 66.25 / 75)), 0, 0.1);
    EXPECT_NEAR(Decibels(right.amplitude / (fm::kToneAmplitude * 66.25 / 75)), 0, 0.1);
    // Its noise leaves a station of level 45 that much.
    EXPECT_GE(left.Sinad_dB(), 45);
    EXPECT_GE(right.Sinad_dB(), 45);
    EXPECT_GE(
        Decibels(left.amplitude / FitTone(heard.frames, 2, 1, 48000, sdr::kSoundRate_Hz, 440).amplitude), 45);
}

TEST_F(Air, TheReceiversDeEmphasisUndoesTheStudiosPreEmphasis) {
    for (const int tone_Hz : {100, 3000, 6000}) {
        SCOPED_TRACE(tone_Hz);
        air.SetBand(Band("[9850]\nlevel=50\nstereo=1\nprogramme=tone:" + std::to_string(tone_Hz) + "\n"));
        const Heard heard = Listen(air, At(kStation_Hz + 150.25e3, 960000), 2.0);
        const auto left = FitTone(heard.frames, 2, 0, 48000, sdr::kSoundRate_Hz, tone_Hz);
        EXPECT_NEAR(Decibels(left.amplitude / (fm::kToneAmplitude * 66.25 / 75)), 0, 0.2);
    }
}

TEST_F(Air, AMonoStationHasNoPilot) {
    air.SetBand(Band("[9850]\nlevel=45\nps=TALK\nprogramme=tone:440\n"));
    const Heard heard = Listen(air, At(kStation_Hz), 2.0);
    EXPECT_EQ(heard.snapshot.stereo.value, 0.0);
    EXPECT_EQ(heard.data.serviceName.whole, "TALK    ");
}

TEST_F(Air, TheDataSayWhatTheBandFileSays) {
    air.SetBand(Band(kStation));
    const auto rds = Listen(air, At(kStation_Hz), 8.0).data;
    EXPECT_EQ(rds.serviceName.whole, "KORA ONE");
    EXPECT_EQ(rds.radioText.whole, "Good morning");
    EXPECT_EQ(rds.programTypeName.whole, "Morning ");
    EXPECT_EQ(rds.programmeType.value_or(-1), 1);
    EXPECT_EQ(rds.alternatives.same_10kHz, (std::vector<std::uint32_t>{9010, 10110}));
    EXPECT_TRUE(rds.pi.has_value());
    EXPECT_EQ(rds.stereo.value_or(false), true);
    EXPECT_EQ(rds.trafficProgramme.value_or(true), false);
    EXPECT_EQ(rds.trafficAnnouncement.value_or(true), false);
}

TEST_F(Air, ATrafficProgrammeAndItsAnnouncementAreInTheData) {
    air.SetBand(Band(kStation + "tp=1\nta=1\n"));
    const auto rds = Listen(air, At(kStation_Hz), 2.0).data;
    EXPECT_EQ(rds.trafficProgramme.value_or(false), true);
    EXPECT_EQ(rds.trafficAnnouncement.value_or(false), true);
    air.SetBand(Band(kStation + "tp=1\n"));
    EXPECT_EQ(Listen(air, At(kStation_Hz), 2.0).data.trafficAnnouncement.value_or(true), false);
}

TEST_F(Air, StationsOfOneNameHaveOneIdentificationAndOthersAnother) {
    air.SetBand(Band(kStation + "[10110]\nlevel=40\nps=KORA ONE\n[9400]\nlevel=40\nps=TALK 94\n"));
    const auto pi = [this](double station_Hz) {
        return Listen(air, At(station_Hz), 1.0, station_Hz).data.pi.value_or(0);
    };
    EXPECT_NE(pi(98.5e6), 0);
    EXPECT_EQ(pi(98.5e6), pi(101.1e6));
    EXPECT_NE(pi(98.5e6), pi(94.0e6));
}

TEST_F(Air, TheClockIsRightAlsoAfterATimeInWhichNobodyLooked) {
    air.SetBand(Band(kStation));
    (void)Listen(air, At(kStation_Hz), 0.5);
    air.Pass(176.5);
    // The third minute begins three seconds from here.
    const auto clock = Listen(air, At(kStation_Hz), 5.0).data.clock;
    ASSERT_TRUE(clock.has_value());
    EXPECT_EQ(clock->hour * 60 + clock->minute, 12 * 60 + 3);
    EXPECT_EQ(clock->day, 23);
    EXPECT_EQ(clock->offset_min, 60);
}

TEST_F(Air, WhatIsOnTheAirChangesWithTheBand) {
    air.SetBand(Band("[9850]\nlevel=45\nstereo=1\nps=BEFORE\n"));
    EXPECT_EQ(Listen(air, At(kStation_Hz), 1.0).data.serviceName.whole, "BEFORE  ");
    air.SetBand(Band("[9850]\nlevel=25\nstereo=0\nps=AFTER\n"));
    const Heard heard = Listen(air, At(kStation_Hz), 2.0);
    EXPECT_EQ(heard.data.serviceName.whole, "AFTER   ");
    EXPECT_EQ(heard.snapshot.stereo.value, 0.0);
    EXPECT_NEAR(heard.snapshot.level.value, 25, 1);
    air.SetBand({});
    EXPECT_LT(Listen(air, At(kStation_Hz), 1.0).snapshot.level.value, 5);
}

TEST_F(Air, ALimitHoldsAllStationsOrOne) {
    air.SetBand(Band(kStation + "[9910]\nlevel=40\nprogramme=tone:880\n"));
    air.SetLimit(20, 0);
    EXPECT_NEAR(Listen(air, At(98.8e6, 960000), 0.8).snapshot.level.value, 20, 1);
    air.SetLimit(20, 9910);
    EXPECT_NEAR(Listen(air, At(98.8e6, 960000), 0.8).snapshot.level.value, 45, 1);
    EXPECT_NEAR(Listen(air, At(98.8e6, 960000), 0.8, 99.1e6).snapshot.level.value, 20, 1);
}

TEST_F(Air, EveryRateOfAStickShowsTheSameStation) {
    air.SetBand(Band(kStation));
    for (const std::uint32_t rate_Hz : {250000U, 901000U, 1024000U, 2048000U, 3200000U}) {
        SCOPED_TRACE(rate_Hz);
        const Heard heard = Listen(air, At(kStation_Hz + (rate_Hz < 400000 ? 0 : 137e3), rate_Hz), 1.0);
        EXPECT_NEAR(heard.snapshot.level.value, 45, 1.5);
        EXPECT_EQ(heard.snapshot.stereo.value, 1.0);
        EXPECT_NEAR(heard.snapshot.carrierOffset_Hz.value, 0, 100);
        EXPECT_EQ(heard.data.pi.has_value(), true);
    }
}

TEST_F(Air, AStationOutsideTheWindowDoesNotFoldBack) {
    air.SetBand(Band("[10050]\nlevel=60\nstereo=1\nprogramme=noise:\n"));
    // Would lie at 98.58 MHz.
    EXPECT_LT(Listen(air, At(98.5e6, 1920000), 0.5, 98.58e6).snapshot.level.value, 5);
}

TEST_F(Air, NeighboursTwoHundredKilohertzAwayAreHeardApart) {
    air.SetBand(
        Band(kStation + "[9870]\nlevel=45\nps=RIGHT\nprogramme=tone:880\n[9830]\nlevel=45\nps=LEFT\n"));
    const Heard heard = Listen(air, At(98.6e6, 960000), 1.5);
    EXPECT_EQ(heard.data.serviceName.whole, "KORA ONE");
}

TEST_F(Air, TheTunersOwnGainNeverClipsAndUsesTheRange) {
    for (const char* band : {"[9850]\nlevel=70\n[9870]\nlevel=70\n", "[9850]\nlevel=20\n"}) {
        air.SetBand(Band(band));
        const Heard heard = Listen(air, At(98.6e6, 1920000), 0.2);
        EXPECT_EQ(heard.clipped, 0);
        EXPECT_GT(heard.largest, 20);
    }
}

TEST_F(Air, TooMuchGainClipsAndLessOfItDoesNot) {
    air.SetBand(Band(kStation));
    Window window = At(98.6e6, 1920000);
    window.gain_dB = 49.6;
    EXPECT_GT(Listen(air, window, 0.2).clipped, 0.1);
    window.gain_dB = 29.7;
    const Heard heard = Listen(air, window, 0.5);
    EXPECT_EQ(heard.clipped, 0);
    EXPECT_NEAR(heard.snapshot.level.value, 45, 1);
    // The lowest loses the station in the steps of the bytes.
    window.gain_dB = 0;
    EXPECT_LT(Listen(air, window, 0.5).snapshot.level.value, 43);
}

TEST_F(Air, ACrystalThatIsOffMovesStationsUntilItIsCorrected) {
    air.SetBand(Band(kStation));
    ether::CStick stick(60);
    stick.Apply({0x02, 1920000});
    stick.Apply({0x01, 98300000});
    const Heard off = Listen(
        air,
        [&] {
            Window window = stick.View();
            EXPECT_NEAR(window.centre_Hz, 98300000 * (1 + 60e-6), 1);
            return window;
        }(),
        1.0, kStation_Hz);
    EXPECT_NEAR(off.snapshot.carrierOffset_Hz.value, 0, 100);
    stick.Apply({0x05, 60});
    EXPECT_NEAR(stick.View().centre_Hz, 98300000, 1);
    EXPECT_NEAR(stick.View().clockError_ppm, 0, 1e-9);
}

TEST_F(Air, TextsGoOnWhileNobodyLooks) {
    air.SetBand(Band("[9850]\nlevel=45\nps=FIRST\nps=SECOND\npstime=4\n[10500]\nlevel=45\n"));
    EXPECT_EQ(Listen(air, At(kStation_Hz), 1.5).data.serviceName.whole, "FIRST   ");
    (void)Listen(air, At(105e6), 3.5);
    EXPECT_EQ(Listen(air, At(kStation_Hz), 1.5).data.serviceName.whole, "SECOND  ");
}

}  // namespace
