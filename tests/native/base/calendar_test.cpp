// The days of the calendar against days whose numbers and weekdays are known, and against each other.
#include "handset/base/calendar.h"

#include <gtest/gtest.h>

#include <tuple>

namespace handset {
namespace {

struct Known {
    std::int64_t day;
    Date date;
    int weekday;
};

TEST(Calendar, KnowsDaysOfFourCenturies) {
    for (const Known& known :
         {Known{-134774, {1601, 1, 1}, 1}, Known{-40587, {1858, 11, 17}, 3}, Known{-24107, {1904, 1, 1}, 5},
          Known{0, {1970, 1, 1}, 4}, Known{11016, {2000, 2, 29}, 2}, Known{20780, {2026, 11, 23}, 1},
          Known{47540, {2100, 2, 28}, 0}, Known{47541, {2100, 3, 1}, 1}}) {
        SCOPED_TRACE(known.day);
        EXPECT_EQ(DayOf(known.date), known.day);
        const Date date = DateOf(known.day);
        EXPECT_EQ(std::tie(date.year, date.month, date.day),
                  std::tie(known.date.year, known.date.month, known.date.day));
        EXPECT_EQ(WeekdayOf(known.day), known.weekday);
    }
}

TEST(Calendar, EveryDayUpToTheEndOf9999IsOfItsOwnDate) {
    constexpr std::int64_t kLast = 2932896;
    std::int64_t months = 0;
    for (std::int64_t day = kFirstDayOfFileTimes; day <= kLast; ++day) {
        const Date date = DateOf(day);
        if (date.day == 1) ++months;
        ASSERT_TRUE(Exists(date)) << day;
        ASSERT_EQ(DayOf(date), day);
    }
    EXPECT_EQ(months, (9999 - 1601 + 1) * 12);
}

TEST(Calendar, DatesThatNoMonthHasDoNotExist) {
    EXPECT_TRUE(Exists({2000, 2, 29}));
    EXPECT_TRUE(Exists({2024, 2, 29}));
    for (const Date& date : {Date{2023, 2, 29}, Date{2100, 2, 29}, Date{2026, 4, 31}, Date{2026, 0, 1},
                             Date{2026, 13, 1}, Date{2026, 1, 0}, Date{2026, 1, 32}}) {
        EXPECT_FALSE(Exists(date)) << date.year << '-' << date.month << '-' << date.day;
    }
}

}  // namespace
}  // namespace handset
