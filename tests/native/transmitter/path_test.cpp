// Fading and echoes against their closed forms.
#include "handset/transmitter/path.h"

#include <gtest/gtest.h>

#include "handset/transmitter/programme.h"
#include "tests/native/transmitter/spectrum.h"

namespace {

using transmitter::CPath;
using transmitter::kMultiplexRate_Hz;
using transmitter::PathSettings;
using Samples = std::vector<std::complex<float>>;

// An even carrier through the path, one sample in `keep` of it.
Samples Through(const PathSettings& settings, std::size_t blocks, std::size_t keep = 1) {
    CPath path(settings);
    Samples passed;
    for (std::size_t i = 0; i < blocks; ++i) {
        Samples block(1024, {1, 0});
        path.Pass(block.data(), block.size());
        for (std::size_t at = 0; at < block.size(); at += keep) passed.push_back(block[at]);
    }
    return passed;
}

TEST(TransmitterPath, RayleighFadingHasMeanPower1AndDeepHolesAsOftenAsItShould) {
    double power = 0, holes = 0, count = 0;
    for (std::uint64_t seed = 1; seed <= 40; ++seed) {
        PathSettings settings;
        settings.doppler_Hz = 200;
        settings.seed = seed;
        for (const auto& sample : Through(settings, 100, 256)) {
            power += std::norm(sample);
            holes += std::norm(sample) < 0.1f ? 1 : 0;
            ++count;
        }
    }
    EXPECT_NEAR(power / count, 1, 0.1);
    EXPECT_NEAR(holes / count, 1 - std::exp(-0.1), 0.02);
}

TEST(TransmitterPath, ItForgetsItselfByTheDopplersBesselFunction) {
    // J0(2 pi f t) is 0 first where its argument is 2.405, and about -0.4 at 3.83.
    constexpr double kDoppler_Hz = 150;
    constexpr std::size_t kKeep = 64;
    const auto zero =
        static_cast<std::size_t>(2.405 / (2 * test::kPi * kDoppler_Hz) * kMultiplexRate_Hz / kKeep);
    const auto lowest =
        static_cast<std::size_t>(3.832 / (2 * test::kPi * kDoppler_Hz) * kMultiplexRate_Hz / kKeep);
    std::complex<double> atZero = 0, atLowest = 0;
    double power = 0;
    for (std::uint64_t seed = 1; seed <= 40; ++seed) {
        PathSettings settings;
        settings.doppler_Hz = kDoppler_Hz;
        settings.seed = seed;
        const Samples gain = Through(settings, 100, kKeep);
        for (std::size_t i = 0; i + lowest < gain.size(); ++i) {
            const std::complex<double> here(gain[i]);
            power += std::norm(here);
            atZero += here * std::conj(std::complex<double>(gain[i + zero]));
            atLowest += here * std::conj(std::complex<double>(gain[i + lowest]));
        }
    }
    EXPECT_NEAR(atZero.real() / power, 0, 0.05);
    EXPECT_NEAR(atLowest.real() / power, -0.403, 0.05);
}

TEST(TransmitterPath, AnEchoMakesACombOfItsDelay) {
    PathSettings settings;
    settings.echo = 0.6;
    settings.echoDelay_s = 12 / kMultiplexRate_Hz;
    for (const double frequency_Hz : {0.0, 16000.0, 32000.0, 40000.0}) {
        CPath path(settings);
        Samples samples(2048);
        for (std::size_t i = 0; i < samples.size(); ++i) {
            samples[i] = std::complex<float>(
                std::polar(1.0, 2 * test::kPi * frequency_Hz * static_cast<double>(i) / kMultiplexRate_Hz));
        }
        path.Pass(samples.data(), 1000);
        path.Pass(samples.data() + 1000, 1048);
        const auto expected =
            std::abs(1.0 + 0.6 * std::polar(1.0, -2 * test::kPi * frequency_Hz * settings.echoDelay_s));
        for (std::size_t i = 12; i < samples.size(); ++i) {
            ASSERT_NEAR(std::abs(samples[i]), expected, 1e-5) << frequency_Hz << " Hz, sample " << i;
        }
    }
}

TEST(TransmitterPath, AnEchoThatMovesTurnsItsPhase) {
    PathSettings settings;
    settings.echo = 0.5;
    settings.echoDoppler_Hz = 100;
    const Samples samples = Through(settings, 15);
    // Half a turn later what was added is taken away.
    EXPECT_NEAR(std::abs(samples[0]), 1.5, 1e-4);
    EXPECT_NEAR(std::abs(samples[3840]), 0.5, 1e-4);
    EXPECT_NEAR(std::abs(samples[7680]), 1.5, 1e-4);
}

}  // namespace
