// The handset's clock.
#include "handset/panel/handset_clock.h"

#include "handset/state/handset_state.h"
#include "tests/unit/panel/handset_fixture.h"

namespace panel {
namespace {

using Clock = HandsetTest;

constexpr std::uint64_t kSecond = 10000000;  // in FILETIME units

TEST(HandsetTime, RunsFromTheBaseAtTheRate) {
    const ClockBase base = {1000 * kSecond, 5000 * kSecond, 60};
    EXPECT_EQ(HandsetTimeAt(base, 1000 * kSecond), 5000 * kSecond);
    EXPECT_EQ(HandsetTimeAt(base, 1002 * kSecond), 5120 * kSecond);
}

TEST_F(Clock, WithoutABaseItShowsRealTime) {
    const std::uint64_t before = RealTimeNow();
    const ClockBase clock = CurrentClock();
    EXPECT_EQ(clock.rate, 1u);
    EXPECT_EQ(clock.real, clock.handset);
    EXPECT_GE(clock.real, before);
}

TEST_F(Clock, GoesOnFromTheTimeThatItShowsWhenTheRateChanges) {
    // Ten real seconds ago the handset was an hour ahead and ran at 100.
    const std::uint64_t now = RealTimeNow();
    handset::SetStateQword(L"ClockBaseReal", now - 10 * kSecond);
    handset::SetStateQword(L"ClockBaseHandset", now + 3600 * kSecond);
    handset::SetStateDword(L"ClockRate", 100);
    EXPECT_EQ(Run({L"clock", L"5"}), kDone);
    const std::uint64_t after = RealTimeNow();
    const ClockBase clock = CurrentClock();
    EXPECT_EQ(clock.rate, 5u);
    EXPECT_GE(clock.real, now);
    EXPECT_LE(clock.real, after);
    const std::uint64_t expected = now + 3600 * kSecond + (clock.real - now + 10 * kSecond) * 100;
    EXPECT_EQ(clock.handset, expected);
}

TEST_F(Clock, TheSameRateAgainChangesNoTime) {
    EXPECT_EQ(Run({L"clock", L"3600"}), kDone);
    const ClockBase first = CurrentClock();
    EXPECT_EQ(Run({L"clock", L"3600"}), kDone);
    const ClockBase second = CurrentClock();
    EXPECT_EQ(HandsetTimeAt(first, second.real), second.handset);
}

TEST_F(Clock, ResetGoesBackToRealTime) {
    Run({L"clock", L"3600"});
    EXPECT_EQ(Run({L"clock", L"reset"}), kDone);
    EXPECT_FALSE(handset::StateQword(L"ClockBaseReal").has_value());
    EXPECT_EQ(CurrentClock().rate, 1u);
}

TEST_F(Clock, IsPrintedWithItsRate) {
    Run({L"clock", L"60"});
    EXPECT_EQ(Run({L"clock"}), kDone);
    EXPECT_NE(console_.Said().find(L", 60 handset seconds per real second"), std::wstring::npos);
}

}  // namespace
}  // namespace panel
