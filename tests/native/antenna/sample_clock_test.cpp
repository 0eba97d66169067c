// Which samples are still of the place before.
#include "handset/fmdevice/antenna/sample_clock.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using fm::CSampleClock;

constexpr double kBytesPerSecond = 2 * 1.92e6;
constexpr std::uint64_t kBuffer = 262144;
constexpr double kBuffer_s = kBuffer / kBytesPerSecond;
// What a stick takes to go elsewhere.
constexpr double kElsewhere_s = 0.03;

TEST(SampleClock, OfABufferThatIsBeingFilledIsOldWhatWasTakenBeforeTheStickGotThere) {
    CSampleClock clock(kBytesPerSecond, 0.0);
    clock.Arrived(kBuffer, 50.0);
    // Right behind its arrival the next one holds nothing yet, 40 ms later 40 ms.
    EXPECT_NEAR(clock.SendElsewhere(50.0), kElsewhere_s, 1e-6);
    CSampleClock later(kBytesPerSecond, 0.0);
    later.Arrived(kBuffer, 50.0);
    EXPECT_NEAR(later.SendElsewhere(50.04), 0.04 + kElsewhere_s, 1e-6);
}

TEST(SampleClock, ABufferThatIsLateSaysNothingWhileAnotherWasNot) {
    CSampleClock clock(kBytesPerSecond, 0.0);
    std::mt19937 random(7);
    double taken_s = 50.0;
    for (int buffer = 0; buffer < 100; ++buffer) {
        taken_s += kBuffer_s;
        const double late_s = buffer % 10 == 0 ? 0.0 : random() % 1000 * 1e-4;
        clock.Arrived(kBuffer, taken_s + late_s);
    }
    EXPECT_NEAR(clock.SendElsewhere(taken_s + 0.02), 0.02 + kElsewhere_s, 1e-6);
}

TEST(SampleClock, HoweverLateAServerSeemsNoMoreIsOldThanTheGapsBetweenArrivalsShow) {
    CSampleClock clock(kBytesPerSecond, 0.0);
    double taken_s = 50.0;
    clock.Arrived(kBuffer, taken_s);
    for (int buffer = 0; buffer < 200; ++buffer) clock.Arrived(kBuffer, (taken_s += kBuffer_s) + 0.25);
    EXPECT_NEAR(clock.SendElsewhere(taken_s + 0.27), 0.02 + 1.3 * kBuffer_s + kElsewhere_s, 1e-6);
    // One that comes in jerks may have more on its way.
    for (int jerk = 0; jerk < 3; ++jerk) clock.Arrived(2 * kBuffer, (taken_s += 2 * kBuffer_s) + 0.25);
    EXPECT_GT(clock.SendElsewhere(taken_s + 0.27), 0.02 + 2 * kBuffer_s + kElsewhere_s);
}

TEST(SampleClock, WhatIsOnItsWayIsOldThoughTheServerLostSomethingBeforeAndNothingCameInJerks) {
    constexpr std::uint64_t kPiece = 4096;
    constexpr double kPiece_s = kPiece / kBytesPerSecond;
    CSampleClock clock(kBytesPerSecond, 0.0);
    double taken_s = 50.0;
    clock.Arrived(kPiece, taken_s);
    // Little by little this is lost for good; what comes after it comes in time.
    for (int piece = 0; piece < 150; ++piece) clock.Arrived(kPiece, taken_s += kPiece_s + 0.002);
    for (int piece = 0; piece < 4000; ++piece) clock.Arrived(kPiece, taken_s += kPiece_s);
    EXPECT_LE(clock.SendElsewhere(taken_s), kElsewhere_s + 0.1);
    // At half the pace, piece by piece, it gets a fifth of a second behind.
    double now_s = taken_s;
    for (int piece = 0; piece < 200; ++piece) {
        taken_s += kPiece_s;
        clock.Arrived(kPiece, now_s += 2.0 * kPiece_s);
    }
    EXPECT_NEAR(clock.SendElsewhere(now_s), now_s - taken_s + kElsewhere_s, 1e-6);
}

TEST(SampleClock, WhatTheServerLostMovesItWithinAMinute) {
    CSampleClock clock(kBytesPerSecond, 0.0);
    clock.Arrived(kBuffer, 50.0);
    double taken_s = 50.3;
    for (int buffer = 0; buffer < 880; ++buffer) clock.Arrived(kBuffer, taken_s += kBuffer_s);
    EXPECT_NEAR(clock.SendElsewhere(taken_s), kElsewhere_s, 1e-6);
}

TEST(SampleClock, OrdersThatFollowEachOtherWaitForEachOtherButNotForEver) {
    CSampleClock clock(kBytesPerSecond, 0.0);
    clock.Arrived(kBuffer, 50.0);
    EXPECT_NEAR(clock.SendElsewhere(50.0), kElsewhere_s, 1e-6);
    EXPECT_NEAR(clock.SendElsewhere(50.0), 2 * kElsewhere_s, 1e-6);
    double stale_s = 0.0;
    for (int order = 0; order < 1000; ++order) stale_s = clock.SendElsewhere(50.0);
    EXPECT_NEAR(stale_s, 3 * kElsewhere_s, 1e-6);
}

TEST(SampleClock, AnotherOrderOnTheWayIsWaitedForToo) {
    CSampleClock clock(kBytesPerSecond, 0.0);
    clock.Arrived(kBuffer, 50.0);
    clock.SendOther(50.0);
    EXPECT_NEAR(clock.SendElsewhere(50.0), 2 * kElsewhere_s, 1e-6);
}

TEST(SampleClock, AServerFarAwayIsAllowedForWithinReason) {
    CSampleClock near(kBytesPerSecond, 0.01), far(kBytesPerSecond, 3.0);
    near.Arrived(kBuffer, 50.0);
    far.Arrived(kBuffer, 50.0);
    EXPECT_NEAR(near.SendElsewhere(50.0), kElsewhere_s + 0.01, 1e-6);
    EXPECT_NEAR(far.SendElsewhere(50.0), kElsewhere_s + 0.05, 1e-6);
}

TEST(SampleClock, BeforeAnythingHasComeAndAfterAStandstillItIsBounded) {
    CSampleClock clock(kBytesPerSecond, 0.0);
    EXPECT_NEAR(clock.SendElsewhere(50.0), 0.1, 1e-6);
    clock.Arrived(kBuffer, 50.0);
    EXPECT_LE(clock.SendElsewhere(99.0), 0.3);
    // More than was due: a server that made up for something.
    clock.Arrived(100 * kBuffer, 99.1);
    EXPECT_GE(clock.SendElsewhere(99.1), 0.0);
}

}  // namespace
