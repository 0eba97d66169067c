// What is wrong with a tone is seen, and what two clocks make of it is none.
#include "tests/bench/ether/tone_watch.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace {

using bench::CToneWatch;
using bench::ToneRecord;

constexpr double kRate_Hz = 22050;
constexpr double kTone_Hz = 1000;

// Of a tone at the place that `at` gives each sample, with what is added to it.
ToneRecord Watch(
    double seconds, const std::function<double(int)>& at,
    const std::function<double(int)>& added = [](int) { return 0.0; }) {
    CToneWatch watch(kRate_Hz, kTone_Hz);
    for (int i = 0; i < static_cast<int>(seconds * kRate_Hz); ++i) {
        const double value = 10000 * std::sin(6.283185307179586 * kTone_Hz * at(i) / kRate_Hz) + added(i);
        const std::int16_t sample[] = {static_cast<std::int16_t>(std::lround(value)), 77};
        watch.Add(sample, 1, 2);
    }
    return watch.Record();
}

TEST(ToneWatch, ACleanToneHasNeitherClicksNorBreaks) {
    const ToneRecord record = Watch(10, [](int i) { return i; });
    EXPECT_NEAR(record.seconds, 10, 0.03);
    EXPECT_EQ(record.clicks, 0);
    EXPECT_EQ(record.breaks, 0);
    EXPECT_NEAR(record.most_ppm, 0, 1);
    EXPECT_NEAR(record.least_ppm, 0, 1);
    EXPECT_NEAR(record.amplitude, 10000 / 32768.0, 0.001);
}

TEST(ToneWatch, EveryLostOrDoubledSampleIsABreakWhereverItIs) {
    for (const int shift : {1, -1, 3}) {
        for (const int place : {66150, 66200, 66370, 66590}) {
            const ToneRecord record = Watch(6, [&](int i) { return i < place ? i : i + shift; });
            ASSERT_EQ(record.breaks, 1) << shift << " at " << place;
            EXPECT_NEAR(record.breaksAt.at(0).size, shift, 0.3) << "at " << place;
            EXPECT_NEAR(record.breaksAt.at(0).at_s, place / kRate_Hz, 0.04);
        }
    }
}

TEST(ToneWatch, ClocksThatDisagreeAreNoBreak) {
    for (const double ppm : {-300.0, 300.0}) {
        const ToneRecord record = Watch(10, [&](int i) { return i * (1 + ppm * 1e-6); });
        EXPECT_EQ(record.breaks, 0);
        EXPECT_EQ(record.clicks, 0);
        EXPECT_NEAR(ppm > 0 ? record.most_ppm : record.least_ppm, ppm, 2);
    }
}

TEST(ToneWatch, AClickASilenceAndAnotherToneAreSeen) {
    const auto even = [](int i) { return static_cast<double>(i); };
    const ToneRecord click = Watch(6, even, [](int i) { return i == 70000 ? 3000.0 : 0.0; });
    ASSERT_EQ(click.clicks, 1);
    EXPECT_NEAR(click.clicksAt.at(0).at_s, 70000 / kRate_Hz, 1e-6);
    EXPECT_NEAR(click.clicksAt.at(0).size, 0.3, 0.01);
    EXPECT_GE(Watch(6, even,
                    [&](int i) {
                        return i >= 70000 && i < 70100
                                   ? -10000 * std::sin(6.283185307179586 * kTone_Hz * i / kRate_Hz)
                                   : 0.0;
                    })
                  .clicks,
              1);
    // Windows of it that hold nothing else, too; the tone around it stays measured.
    const ToneRecord hole = Watch(6, [&](int i) { return i >= 66150 && i < 66150 + 3 * 441 ? 0.0 : i; });
    EXPECT_GE(hole.clicks, 3);
    EXPECT_NEAR(hole.amplitude, 10000 / 32768.0, 0.01);
    const ToneRecord another = Watch(6, even, [](int i) { return 1500 * std::sin(i * 0.9); });
    EXPECT_GE(another.clicks, 250);
    EXPECT_EQ(another.clicksAt.size(), bench::kMostFlaws);
    // Noise as weak as that of the air is none.
    EXPECT_EQ(Watch(6, even, [](int i) { return (i * 7919 % 101 - 50) * 2.0; }).clicks, 0);
}

}  // namespace
