// The handset's clock as arithmetic: it goes at its rate, follows the host's in both directions, and stays
// within the calendar whatever is written in its moment.
#include "handset/base/clock_moment.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace handset {
namespace {

constexpr std::uint64_t kSecond = 10000000;
constexpr std::uint64_t kYear9999 = 2650467743999999999;

TEST(ClockMoments, GoOnAtTheirRate) {
    const ClockMoment moment = {1000 * kSecond, 5000 * kSecond, 60};
    EXPECT_EQ(ShownAt(moment, 1000 * kSecond), 5000 * kSecond);
    EXPECT_EQ(ShownAt(moment, 1002 * kSecond), 5120 * kSecond);
}

TEST(ClockMoments, FollowAHostWhoseClockWasSetBack) {
    const ClockMoment moment = {1000 * kSecond, 5000 * kSecond, 60};
    EXPECT_EQ(ShownAt(moment, 998 * kSecond), 4880 * kSecond);
    EXPECT_EQ(ShownAt(moment, 0), 0U);
}

TEST(ClockMoments, RatesAreBroughtIntoTheirRange) {
    EXPECT_EQ(ClampClockRate(0), 1U);
    EXPECT_EQ(ClampClockRate(1), 1U);
    EXPECT_EQ(ClampClockRate(3600), 3600U);
    EXPECT_EQ(ClampClockRate(3601), 3600U);
    EXPECT_EQ(ClampClockRate(0x100000000ULL), 3600U);
    EXPECT_EQ(ShownAt({0, 0, 0}, 7), 7U);
}

TEST(ClockMoments, OfAnyMakeShowATimeOfTheCalendarThatNeverGoesBackwards) {
    std::mt19937_64 random(18);
    const auto any = [&random] { return random() >> (random() % 64); };
    for (int round = 0; round < 300000; ++round) {
        const ClockMoment moment = {any(), any(), static_cast<std::uint32_t>(any())};
        std::uint64_t early = any(), late = any();
        if (early > late) std::swap(early, late);
        ASSERT_LE(ShownAt(moment, early), ShownAt(moment, late));
        ASSERT_LE(ShownAt(moment, late), kYear9999);
    }
}

TEST(ClockMoments, AreReadBackAsTheyWereStored) {
    const ClockMoment moment = {0x0123456789ABCDEF, 0xFEDCBA9876543210, 3600};
    const StoredMoment bytes = Stored(moment);
    EXPECT_EQ(ReadMoment(bytes.data(), bytes.size()), moment);
}

TEST(ClockMoments, OfAnotherLengthAreNone) {
    const std::vector<std::uint8_t> bytes(100, 1);
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        EXPECT_EQ(ReadMoment(bytes.data(), size).has_value(), size == kStoredMoment_bytes) << size;
    }
    EXPECT_FALSE(ReadMoment(nullptr, 0).has_value());
}

}  // namespace
}  // namespace handset
