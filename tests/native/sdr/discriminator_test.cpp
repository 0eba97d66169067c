// The discriminator against carriers of known frequency.
#include "handset/fmdevice/sdr/discriminator.h"

#include <gtest/gtest.h>

#include <cmath>

#include "handset/fmdevice/sdr/mpx_block.h"
#include "tests/native/sdr/tone_fit.h"

namespace {

constexpr double kTwoPi = 6.283185307179586;

TEST(Discriminator, IsLinearOverTheWholeDeviation) {
    for (double frequency_Hz = -120000.0; frequency_Hz <= 120000.0; frequency_Hz += 1500.0) {
        sdr::CDiscriminator discriminator;
        std::vector<float> pairs;
        for (int i = 0; i < 100; ++i) {
            const double phase = kTwoPi * frequency_Hz / sdr::kMpxRate_Hz * i;
            pairs.push_back(static_cast<float>(0.01 * std::cos(phase)));
            pairs.push_back(static_cast<float>(0.01 * std::sin(phase)));
        }
        std::vector<float> multiplex(100);
        discriminator.Process(pairs.data(), 100, multiplex.data());
        ASSERT_NEAR(multiplex[50] * 75000.0 / sdr::CDiscriminator::ResponseAt(0.0), frequency_Hz, 0.1);
    }
}

TEST(Discriminator, ItsDroopIsRepairedUpToSixtyKilohertz) {
    for (double f = 0.0; f <= 60000.0; f += 500.0)
        ASSERT_NEAR(sdr::CDiscriminator::ResponseAt(f), 1.0, 3e-5) << f;
}

TEST(Discriminator, SoundOfEveryPitchHasTheAmplitudeThatItsResponseSays) {
    for (const double tone_Hz : {1000.0, 19000.0, 38000.0, 53000.0, 90000.0}) {
        sdr::CDiscriminator discriminator;
        std::vector<float> pairs;
        constexpr std::size_t kCount = 38400;
        for (std::size_t i = 0; i < kCount; ++i) {
            const double phase =
                30000.0 / tone_Hz * std::sin(kTwoPi * tone_Hz / sdr::kMpxRate_Hz * static_cast<double>(i));
            pairs.push_back(static_cast<float>(std::cos(phase)));
            pairs.push_back(static_cast<float>(std::sin(phase)));
        }
        std::vector<float> multiplex(kCount);
        // In blocks of odd sizes, which must not show.
        for (std::size_t at = 0; at < kCount;) {
            const std::size_t count = std::min<std::size_t>(at % 97 + 1, kCount - at);
            discriminator.Process(pairs.data() + 2 * at, count, multiplex.data() + at);
            at += count;
        }
        const sdr_test::ToneFit fit = sdr_test::FitTone(multiplex, 1, 0, 384, sdr::kMpxRate_Hz, tone_Hz);
        // 384 samples less than a tenth of a second are whole periods of each.
        EXPECT_NEAR(fit.amplitude, 0.4 * sdr::CDiscriminator::ResponseAt(tone_Hz), 1e-5) << tone_Hz;
        EXPECT_GE(fit.Sinad_dB(), 100.0) << tone_Hz;
    }
}

}  // namespace
