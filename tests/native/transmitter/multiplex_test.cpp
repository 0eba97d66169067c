// The stereo multiplex line by line.
#include "handset/transmitter/multiplex.h"

#include <gtest/gtest.h>

#include "tests/native/transmitter/spectrum.h"
#include "tests/native/transmitter/zeros.h"

namespace {

using test::Amplitude;
using test::Line;
using test::Zeros;
using transmitter::CMultiplex;
using transmitter::CTones;
using transmitter::Group;
using transmitter::kMultiplexRate_Hz;
using transmitter::MultiplexSettings;
using transmitter::Tone;

std::vector<double> Multiplex(const MultiplexSettings& settings, double length_s = 0.05) {
    CMultiplex multiplex(settings);
    std::vector<double> samples(static_cast<std::size_t>(length_s * kMultiplexRate_Hz));
    // In parts of an odd length: what is kept from one to the next has to fit.
    for (std::size_t at = 0; at < samples.size(); at += 777) {
        multiplex.Read(&samples[at], std::min<std::size_t>(777, samples.size() - at));
    }
    return samples;
}

double LineAt(const std::vector<double>& samples, double frequency_Hz) {
    return Amplitude(samples, kMultiplexRate_Hz, frequency_Hz);
}

double PhaseAt(const std::vector<double>& samples, double frequency_Hz) {
    return std::arg(Line(samples, kMultiplexRate_Hz, frequency_Hz));
}

MultiplexSettings ToneOn(double left, double right) {
    MultiplexSettings settings;
    settings.programme = std::make_shared<CTones>(std::vector<Tone>{{1000, left, right}}, 0.0);
    return settings;
}

TEST(TransmitterMultiplex, AToneOnTheLeftIsHalfInTheSumAndAQuarterInEachSideband) {
    const auto samples = Multiplex(ToneOn(1, 0));
    EXPECT_NEAR(LineAt(samples, 1000), 66250 / 2.0, 0.01);
    EXPECT_NEAR(LineAt(samples, 37000), 66250 / 4.0, 0.01);
    EXPECT_NEAR(LineAt(samples, 39000), 66250 / 4.0, 0.01);
    EXPECT_NEAR(LineAt(samples, 38000), 0, 0.01) << "its subcarrier is suppressed";
    EXPECT_NEAR(LineAt(samples, 19000), 6750, 0.01);
}

TEST(TransmitterMultiplex, AToneOnBothSidesHasNoSidebandsAndOneOfOppositeSidesNoSum) {
    const auto both = Multiplex(ToneOn(1, 1));
    EXPECT_NEAR(LineAt(both, 1000), 66250, 0.01);
    EXPECT_NEAR(LineAt(both, 37000), 0, 0.01);
    const auto opposite = Multiplex(ToneOn(1, -1));
    EXPECT_NEAR(LineAt(opposite, 1000), 0, 0.01);
    EXPECT_NEAR(LineAt(opposite, 39000), 66250 / 2.0, 0.01);
}

TEST(TransmitterMultiplex, ThePilotAndItsSecondHarmonicCrossZeroUpwardsTogether) {
    const auto samples = Multiplex(ToneOn(1, 0));
    // Sines that begin at 0: a tone and the pilot lag a cosine by a quarter; the product of two sines is a
    // difference of cosines.
    EXPECT_NEAR(PhaseAt(samples, 19000), -test::kPi / 2, 1e-6);
    EXPECT_NEAR(PhaseAt(samples, 37000), 0, 1e-6);
    EXPECT_NEAR(std::abs(PhaseAt(samples, 39000)), test::kPi, 1e-6);
}

TEST(TransmitterMultiplex, MonoIsHalfTheSumOfBothSidesWithoutAPilot) {
    MultiplexSettings settings = ToneOn(1, 0.5);
    settings.stereo = false;
    const auto samples = Multiplex(settings);
    EXPECT_NEAR(LineAt(samples, 1000), 66250 * 0.75, 0.01);
    EXPECT_NEAR(LineAt(samples, 19000), 0, 0.01);
    EXPECT_NEAR(LineAt(samples, 37000), 0, 0.01);
}

// A sine of the bit rate: RDS is two lines beside its carrier.
MultiplexSettings RdsAlone(double phase_turns, double offset_Hz) {
    MultiplexSettings settings;
    settings.rds.groups = Zeros;
    settings.rds.phase_turns = phase_turns;
    settings.rds.offset_Hz = offset_Hz;
    return settings;
}

TEST(TransmitterMultiplex, RdsIsTwoSidebandsOfItsDeviationWithoutACarrier) {
    const auto samples = Multiplex(RdsAlone(0, 0));
    EXPECT_NEAR(LineAt(samples, 57000 + 1187.5), 1000, 2);
    EXPECT_NEAR(LineAt(samples, 57000 - 1187.5), 1000, 2);
    EXPECT_NEAR(LineAt(samples, 57000), 0, 1);
}

TEST(TransmitterMultiplex, RdsStandsInPhaseWithThePilotsThirdHarmonicOrAsFarFromItAsAsked) {
    for (const double turns : {0.0, 0.25, 0.1}) {
        const auto samples = Multiplex(RdsAlone(turns, 0));
        // -sin(a) sin(b): the upper sideband at a + b is half a cosine, turned by what the carrier is.
        EXPECT_NEAR(PhaseAt(samples, 57000 + 1187.5), 2 * test::kPi * turns, 0.02) << turns;
    }
}

TEST(TransmitterMultiplex, AnUnlockedSubcarrierLiesBesideTheThirdHarmonicAndTakesItsBitsAlong) {
    const auto samples = Multiplex(RdsAlone(0, 240), 0.2);
    EXPECT_NEAR(LineAt(samples, 57240 * (1 + 1.0 / 48)), 1000, 2);
    EXPECT_NEAR(LineAt(samples, 57240 * (1 - 1.0 / 48)), 1000, 2);
}

}  // namespace
