// Times, channels and command lines of a booking, and texts that are none.
#include "schedule/booking_rule.h"

#include <gtest/gtest.h>

#include <cwchar>
#include <string>

namespace {

std::wstring Argument(const wchar_t* channel) {
    return ChannelArgumentOf(channel).sz;
}

TEST(BookingTimes, HoursAreAtTheBeginningAndMinutesAtTheSixthCharacter) {
    EXPECT_EQ(MinuteOfDay(L"00 : 00"), 0);
    EXPECT_EQ(MinuteOfDay(L"09 : 05"), 9 * 60 + 5);
    EXPECT_EQ(MinuteOfDay(L"23 : 59"), 23 * 60 + 59);
}

TEST(BookingTimes, ANonsenseTextIsANumberAllTheSame) {
    EXPECT_EQ(MinuteOfDay(L""), 0);
    EXPECT_EQ(MinuteOfDay(L"noon"), 0);
    EXPECT_EQ(MinuteOfDay(L"7"), 7 * 60);
    EXPECT_EQ(MinuteOfDay(L"12345"), 12345 * 60);
    EXPECT_EQ(MinuteOfDay(L"999999999999999"), INT32_MAX);
    EXPECT_EQ(MinuteOfDay(L"-99999999999999"), INT32_MIN);
}

TEST(BookingTimes, AnEndThatIsEarlierIsRefusedAndTheMinutesAreBorrowed) {
    std::int32_t duration = 0;
    EXPECT_TRUE(BookingDuration(L"10 : 30", L"11 : 15", &duration));
    EXPECT_EQ(duration, 45);
    EXPECT_TRUE(BookingDuration(L"00 : 00", L"23 : 59", &duration));
    EXPECT_EQ(duration, 1439);
    EXPECT_FALSE(BookingDuration(L"11 : 00", L"10 : 59", &duration));
    EXPECT_FALSE(BookingDuration(L"10 : 30", L"10 : 15", &duration));
    EXPECT_FALSE(BookingDuration(L"23 : 59", L"00 : 00", &duration));
}

TEST(BookingTimes, ASpanThatReachesBeyondMidnightEndsOnTheNextDay) {
    EXPECT_EQ(SpanOf(L"23 : 00", 60).nEnd_min, 1440);
    EXPECT_EQ(SpanOf(L"23 : 00", 61).nEnd_min, 1);
}

TEST(ChannelArguments, AreTheDigitsAroundThePointAndA0) {
    EXPECT_EQ(Argument(L"87.5"), L"8750");
    EXPECT_EQ(Argument(L"108.0"), L"10800");
    EXPECT_EQ(Argument(L"98"), L"980");
    EXPECT_EQ(Argument(L"98.25"), L"98250");
    EXPECT_EQ(Argument(L".5"), L"50");
    EXPECT_EQ(Argument(L""), L"0");
    EXPECT_EQ(Argument(L"98.5.7"), L"9850");
}

TEST(ChannelArguments, HaveAtMostNineCharacters) {
    EXPECT_EQ(Argument(L"12345678.9"), L"123456789");
    EXPECT_EQ(Argument(L"12345678"), L"123456780");
    EXPECT_EQ(Argument(L"123456789012345"), L"123456789");
}

TEST(CommandLines, SayChannelAndDurationAndAreReadBackAsTheyWereMeant) {
    EXPECT_EQ(std::wstring(CommandLineOf(L"87.5", 60).sz), L"-Rec -Channel 8750 -Duration 60");
    EXPECT_EQ(std::wstring(CommandLineOf(L"108.0", 1439).sz), L"-Rec -Channel 10800 -Duration 1439");
    EXPECT_EQ(std::wstring(CommandLineOf(L"123456789012345", INT32_MAX).sz),
              L"-Rec -Channel 123456789 -Duration 2147483647");
}

}  // namespace
