// When two bookings are in each other's way, against a reading of the rule minute by minute.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "schedule/booking_rule.h"

namespace {

constexpr int kMinutesOfDay = 24 * 60;
constexpr int kGrid_min = 15;

std::wstring Time(int minute) {
    wchar_t text[16];
    std::swprintf(text, 16, L"%02d : %02d", minute / 60, minute % 60);
    return text;
}

// The minutes that a listed span takes, both ends among them; one that does not end after its start runs on
// over midnight.
std::vector<bool> MinutesTaken(int start, int end) {
    std::vector<bool> taken(kMinutesOfDay + 1, false);
    for (int minute = 0; minute <= kMinutesOfDay; ++minute) {
        taken[static_cast<std::size_t>(minute)] =
            start < end ? minute >= start && minute <= end : minute >= start || minute <= end;
    }
    return taken;
}

TEST(Conflict, AgreesWithAReadingMinuteByMinuteForEveryPairOnAGridOfAQuarterOfAnHour) {
    long conflicts = 0, pairs = 0;
    for (int listedStart = 0; listedStart < kMinutesOfDay; listedStart += kGrid_min) {
        for (int listedEnd = 0; listedEnd < kMinutesOfDay; listedEnd += kGrid_min) {
            const auto taken = MinutesTaken(listedStart, listedEnd);
            for (int start = 0; start < kMinutesOfDay; start += kGrid_min) {
                for (int end = 0; end < kMinutesOfDay; end += kGrid_min) {
                    // Only the two ends of the new booking are looked at: what lies between them is not, but
                    // for midnight, which two that turn over it share.
                    const bool expected = taken[static_cast<std::size_t>(start)] ||
                                          taken[static_cast<std::size_t>(end)] ||
                                          (start >= end && listedStart >= listedEnd);
                    const bool found = IsConflict({start, end}, {listedStart, listedEnd});
                    ASSERT_EQ(found, expected)
                        << start << "-" << end << " over " << listedStart << "-" << listedEnd;
                    conflicts += found;
                    ++pairs;
                }
            }
        }
    }
    EXPECT_EQ(pairs, 96L * 96 * 96 * 96);
    EXPECT_GT(conflicts, pairs / 4);
    EXPECT_LT(conflicts, pairs);
}

TEST(Conflict, WhatTheTextsSayLeadsToTheSameAnswerAsTheMinutes) {
    for (int start = 0; start < kMinutesOfDay; start += kGrid_min) {
        for (int end = 0; end < kMinutesOfDay; end += kGrid_min) {
            std::int32_t duration = -1;
            const bool accepted = BookingDuration(Time(start).c_str(), Time(end).c_str(), &duration);
            ASSERT_EQ(accepted, end >= start) << start << "-" << end;
            if (!accepted) continue;
            ASSERT_EQ(duration, end - start);
            const BookedSpan span = SpanOf(Time(start).c_str(), duration);
            ASSERT_EQ(span.nStart_min, start);
            ASSERT_EQ(span.nEnd_min, end);
        }
    }
}

// What a span that turns over midnight would meet, could one be booked.
TEST(Conflict, ATurnedNewBookingMeetsATurnedOneAlwaysAndAnotherWithAnEndInIt) {
    EXPECT_TRUE(IsConflict({1380, 60}, {1200, 600}));
    EXPECT_TRUE(IsConflict({600, 600}, {900, 900}));
    EXPECT_TRUE(IsConflict({1380, 60}, {30, 90}));
    EXPECT_TRUE(IsConflict({1380, 60}, {1320, 1400}));
    EXPECT_FALSE(IsConflict({1380, 60}, {120, 180}));
    // It contains this one strictly, past midnight.
    EXPECT_FALSE(IsConflict({1380, 60}, {10, 20}));
}

TEST(Conflict, TouchingEndsAreOneAndAStrictlyContainedBookingIsNone) {
    EXPECT_TRUE(IsConflict({600, 660}, {660, 720}));
    EXPECT_TRUE(IsConflict({720, 780}, {660, 720}));
    EXPECT_FALSE(IsConflict({540, 780}, {600, 660}));
    EXPECT_FALSE(IsConflict({600, 659}, {660, 720}));
    EXPECT_TRUE(IsConflict({600, 660}, {540, 780}));
    EXPECT_TRUE(IsConflict({600, 780}, {600, 660}));
}

}  // namespace
