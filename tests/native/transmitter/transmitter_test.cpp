// Stations in a stream: modulation, place, level, noise and faults, each measured.
#include "handset/transmitter/transmitter.h"

#include <gtest/gtest.h>

#include <memory>

#include "handset/transmitter/stream_format.h"
#include "tests/native/transmitter/spectrum.h"

namespace {

using test::Amplitude;
using test::Decibel;
using test::Discriminated;
using test::Droop;
using test::Line;
using transmitter::CTones;
using transmitter::CTransmitter;
using transmitter::StationSettings;
using transmitter::StreamSettings;
using Samples = std::vector<std::complex<float>>;

StationSettings Tone(double frequency_Hz, double left, double right) {
    StationSettings station;
    station.multiplex.programme =
        std::make_shared<CTones>(std::vector<transmitter::Tone>{{frequency_Hz, left, right}}, 0.0);
    return station;
}

StationSettings Mono(double frequency_Hz, double deviation_Hz) {
    StationSettings station = Tone(frequency_Hz, 1, 1);
    station.multiplex.stereo = false;
    station.multiplex.programme_Hz = deviation_Hz;
    return station;
}

Samples Air(CTransmitter& transmitter, double rate_Hz, double length_s = 0.05) {
    Samples samples(static_cast<std::size_t>(length_s * rate_Hz));
    transmitter.Read(samples.data(), samples.size());
    return samples;
}

Samples Air(const StreamSettings& stream, const std::vector<StationSettings>& stations,
            double length_s = 0.05) {
    CTransmitter transmitter(stream, stations);
    return Air(transmitter, stream.rate_Hz, length_s);
}

double Power(const Samples& samples) {
    double power = 0;
    for (const auto& sample : samples) power += std::norm(std::complex<double>(sample));
    return power / static_cast<double>(samples.size());
}

TEST(TransmitterStream, TheDeviationIsTheOneAskedForAtEveryRate) {
    for (const double rate_Hz : {240000.0, 384000.0, 1024000.0, 1920000.0, 2400000.0}) {
        StreamSettings stream;
        stream.rate_Hz = rate_Hz;
        const auto deviation = Discriminated(Air(stream, {Tone(1000, 1, 0)}), rate_Hz);
        for (const auto& [frequency_Hz, expected_Hz] :
             {std::pair{1000.0, 33125.0}, {19000.0, 6750.0}, {37000.0, 16562.5}, {39000.0, 16562.5}}) {
            const double found_Hz =
                Amplitude(deviation, rate_Hz, frequency_Hz) / Droop(frequency_Hz, rate_Hz);
            // A stream of 240 kHz cuts the outermost sidebands off.
            EXPECT_NEAR(found_Hz / expected_Hz, 1, rate_Hz < 300000 ? 2e-3 : 1e-5)
                << frequency_Hz << " of " << rate_Hz;
        }
    }
}

TEST(TransmitterStream, TheLinesOfACarrierUnderOneToneAreBesselFunctions) {
    StreamSettings stream;
    stream.rate_Hz = 960000;
    stream.carrier = 1;
    const Samples samples = Air(stream, {Mono(10000, 20000)});
    // J0 to J4 of 2 (Abramowitz and Stegun, table 9.1).
    const double lines[] = {0.2238907791, 0.5767248078, 0.3528340286, 0.1289432495, 0.0339957198};
    for (int i = 0; i < 5; ++i) {
        EXPECT_NEAR(std::abs(Line(samples, stream.rate_Hz, 10000.0 * i)), lines[i], 2e-6) << i;
        EXPECT_NEAR(std::abs(Line(samples, stream.rate_Hz, -10000.0 * i)), lines[i], 2e-6) << -i;
    }
}

TEST(TransmitterStream, ACleanToneHasNothingBesideItselfDownTo110dB) {
    StreamSettings stream;
    stream.rate_Hz = 1920000;
    const auto deviation = Discriminated(Air(stream, {Tone(1000, 1, 0)}), stream.rate_Hz);
    const double tone_Hz = Amplitude(deviation, stream.rate_Hz, 1000);
    double rest = 0;
    for (double frequency_Hz = 200; frequency_Hz <= 15000; frequency_Hz += 200) {
        if (frequency_Hz == 1000) continue;
        rest += std::pow(Amplitude(deviation, stream.rate_Hz, frequency_Hz), 2);
    }
    EXPECT_LT(10 * std::log10(rest) - Decibel(tone_Hz), -110);
}

TEST(TransmitterStream, TheRightSideOfALeftToneIsAbsentAtEveryFrequency) {
    StreamSettings stream;
    stream.rate_Hz = 1920000;
    for (const double frequency_Hz : {100.0, 1000.0, 10000.0, 14000.0}) {
        const auto deviation = Discriminated(Air(stream, {Tone(frequency_Hz, 1, 0)}), stream.rate_Hz);
        // Sum and difference as a perfect decoder has them.
        const double sum =
            Amplitude(deviation, stream.rate_Hz, frequency_Hz) / Droop(frequency_Hz, stream.rate_Hz);
        double difference = 0;
        for (const double side : {38000 - frequency_Hz, 38000 + frequency_Hz}) {
            difference += Amplitude(deviation, stream.rate_Hz, side) / Droop(side, stream.rate_Hz);
        }
        EXPECT_LT(Decibel(std::abs(sum - difference) / sum), -100) << frequency_Hz;
    }
}

TEST(TransmitterStream, ACarrierStandsAtItsOffsetAndLevel) {
    StreamSettings stream;
    stream.rate_Hz = 1920000;
    stream.carrier = 0.25;
    StationSettings near = Mono(1000, 0), far = Mono(1000, 0);
    near.offset_Hz = -300000;
    far.offset_Hz = 612340;
    far.level_dB = -40;
    CTransmitter transmitter(stream, {near, far});
    Samples samples = Air(transmitter, stream.rate_Hz);
    EXPECT_NEAR(std::abs(Line(samples, stream.rate_Hz, -300000)), 0.25, 1e-6);
    EXPECT_NEAR(std::abs(Line(samples, stream.rate_Hz, 612340)), 0.0025, 1e-6);
    transmitter.Move(0, 100000);
    transmitter.SetLevel(1, 0);
    samples = Air(transmitter, stream.rate_Hz);
    EXPECT_NEAR(std::abs(Line(samples, stream.rate_Hz, 100000)), 0.25, 1e-6);
    EXPECT_LT(std::abs(Line(samples, stream.rate_Hz, -300000)), 1e-6);
    EXPECT_NEAR(std::abs(Line(samples, stream.rate_Hz, 612340)), 0.25, 1e-6);
}

TEST(TransmitterStream, AStationBeyondTheStreamIsSilentAndDoesNotFoldBack) {
    StreamSettings stream;
    stream.rate_Hz = 960000;
    StationSettings station = Mono(1000, 50000);
    station.offset_Hz = 800000;
    EXPECT_EQ(Power(Air(stream, {station})), 0);
}

TEST(TransmitterStream, AFastSampleClockMakesEverythingSeemSlow) {
    StreamSettings stream;
    stream.rate_Hz = 960000;
    stream.ppm = 500;
    StationSettings station = Mono(10000, 20000);
    station.offset_Hz = 200000;
    const Samples samples = Air(stream, {station}, 0.2);
    const double slow = 1 / (1 + 500e-6);
    EXPECT_NEAR(std::abs(Line(samples, stream.rate_Hz, 200000 * slow)) / stream.carrier, 0.2238907791, 1e-5);
    EXPECT_NEAR(std::abs(Line(samples, stream.rate_Hz, 210000 * slow)) / stream.carrier, 0.5767248078, 1e-5);
}

TEST(TransmitterStream, TheNoiseHasTheDensityAskedForAndIsWhite) {
    StreamSettings stream;
    stream.rate_Hz = 960000;
    stream.carrierToNoise_dBHz = 70;
    const Samples noise = Air(stream, {}, 1.0);
    const double expected = stream.carrier * stream.carrier * 1e-7 * stream.rate_Hz;
    EXPECT_NEAR(Power(noise) / expected, 1, 0.01);
    double real = 0, product = 0, neighbours = 0;
    for (std::size_t i = 1; i < noise.size(); ++i) {
        real += std::pow(static_cast<double>(noise[i].real()), 2);
        product += static_cast<double>(noise[i].real()) * static_cast<double>(noise[i].imag());
        neighbours += static_cast<double>(noise[i].real()) * static_cast<double>(noise[i - 1].real());
    }
    EXPECT_NEAR(real / expected * 2 / static_cast<double>(noise.size()), 1, 0.01);
    EXPECT_NEAR(product / real, 0, 0.01);
    EXPECT_NEAR(neighbours / real, 0, 0.01);
}

TEST(TransmitterStream, DiscriminatedNoiseRisesWithTheFrequencyAsTheoryHasIt) {
    StreamSettings stream;
    stream.rate_Hz = 768000;
    stream.carrierToNoise_dBHz = 85;  // far above the threshold
    const auto deviation = Discriminated(Air(stream, {Mono(1000, 0)}, 0.25), stream.rate_Hz);
    for (const double middle_Hz : {5000.0, 20000.0, 57000.0}) {
        // A sine's worth of power in 1 Hz: f^2 N0 / C, seen through lines as wide as the window's 2.0044 bins
        // of 1 Hz.
        double power = 0;
        constexpr int kLines = 20;
        for (int i = 0; i < kLines; ++i) {
            power += std::pow(Amplitude(deviation, stream.rate_Hz, middle_Hz - 160 + 16 * i), 2) / 2 / kLines;
        }
        const double expected = middle_Hz * middle_Hz * std::pow(10, -8.5) * 2.0044 * 4;
        EXPECT_NEAR(10 * std::log10(power / expected), 0, 2) << middle_Hz;
    }
}

TEST(TransmitterStream, TheSameSeedGivesTheSameStream) {
    StreamSettings stream;
    stream.carrierToNoise_dBHz = 60;
    const Samples first = Air(stream, {Tone(1000, 1, 0)}, 0.01),
                  again = Air(stream, {Tone(1000, 1, 0)}, 0.01);
    EXPECT_EQ(first, again);
    stream.seed = 2;
    EXPECT_NE(first, Air(stream, {Tone(1000, 1, 0)}, 0.01));
}

TEST(TransmitterStream, DcAndSkewStandWhereTheyBelong) {
    StreamSettings stream;
    stream.rate_Hz = 480000;
    stream.carrier = 1;
    stream.dc = {0.1, -0.05};
    stream.gainError_dB = 1;
    StationSettings station = Mono(1000, 0);
    station.offset_Hz = 60000;
    Samples samples = Air(stream, {station});
    EXPECT_NEAR(std::abs(Line(samples, stream.rate_Hz, 0) - std::complex<double>(0.1, -0.05)), 0, 1e-6);
    // A real part that is g times as large has an image of (g - 1) / 2.
    const double gain = std::pow(10, 1 / 20.0);
    EXPECT_NEAR(std::abs(Line(samples, stream.rate_Hz, -60000)), (gain - 1) / 2, 1e-5);
    stream.gainError_dB = 0;
    stream.phaseError_deg = 2;
    samples = Air(stream, {station});
    EXPECT_NEAR(std::abs(Line(samples, stream.rate_Hz, -60000)), std::sin(test::kPi / 180), 1e-5);
}

TEST(TransmitterFormats, EachRoundsToItsStepsAndClipsAtItsEnds) {
    using transmitter::Append;
    using transmitter::StreamFormat;
    const Samples samples = {{0, 1}, {-1, 0.5f}, {1.5f, -3}};
    std::vector<std::uint8_t> bytes;
    EXPECT_EQ(Append(samples.data(), samples.size(), StreamFormat::kCu8, &bytes), 2u);
    EXPECT_EQ(bytes, (std::vector<std::uint8_t>{128, 255, 0, 191, 255, 0}));
    bytes.clear();
    EXPECT_EQ(Append(samples.data(), 2, StreamFormat::kCs8, &bytes), 0u);
    EXPECT_EQ(bytes, (std::vector<std::uint8_t>{0, 127, 0x81, 64}));
    bytes.clear();
    EXPECT_EQ(Append(samples.data(), 2, StreamFormat::kCs16, &bytes), 0u);
    EXPECT_EQ(bytes, (std::vector<std::uint8_t>{0, 0, 0xFF, 0x7F, 0x01, 0x80, 0x00, 0x40}));
    bytes.clear();
    EXPECT_EQ(Append(samples.data(), 1, StreamFormat::kCf32, &bytes), 0u);
    EXPECT_EQ(bytes, (std::vector<std::uint8_t>{0, 0, 0, 0, 0, 0, 0x80, 0x3F}));
}

}  // namespace
