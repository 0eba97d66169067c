// Times, channels and command lines of a booking, and texts that are none.
#include "schedule/booking_rule.h"

#include <gtest/gtest.h>

#include <cwchar>
#include <random>
#include <string>
#include <vector>

namespace {

std::wstring Argument(const wchar_t* channel) {
    return ChannelArgumentOf(channel).sz;
}

// A text in memory of exactly its length: a read beyond its end is seen.
class Tight {
  public:
    explicit Tight(const std::wstring& text) : m_text(text.begin(), text.end()) { m_text.push_back(L'\0'); }
    const wchar_t* get() const { return m_text.data(); }

  private:
    std::vector<wchar_t> m_text;
};

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

TEST(BookingTimes, AnyTextOfAnEditedKeyIsReadWithoutHarm) {
    std::mt19937 random(47);
    for (int round = 0; round < 100000; ++round) {
        std::wstring one, other;
        for (std::wstring* text : {&one, &other}) {
            for (std::size_t left = random() % kBookingTextCapacity; left != 0; --left) {
                *text += random() % 3 == 0 ? static_cast<wchar_t>(1 + random() % 0xD7FF)
                                           : L"0123456789-: ."[random() % 14];
            }
        }
        const Tight start(one), end(other);
        std::int32_t duration = 0;
        BookingDuration(start.get(), end.get(), &duration);
        IsConflict(SpanOf(start.get(), duration), {MinuteOfDay(end.get()), MinuteOfDay(start.get())});
        ASSERT_LE(Argument(start.get()).size(), 9U);
    }
}

}  // namespace
