// How figures are written.
#include "tests/bench/reception/report.h"

#include <gtest/gtest.h>

#include "tests/bench/reception/text_cases.h"

namespace {

using bench::Share;

TEST(BenchReport, AShareWithoutACaseIsBelowOneInTheCount) {
    EXPECT_EQ(Share(0, 1772), "< 0.056 %");
    EXPECT_EQ(Share(0, 490), "< 0.2 %");
    EXPECT_EQ(Share(1.0 / 1772, 1772), "0.06 %");
}

TEST(BenchReport, SmallSharesHaveTwoPlacesAndLargeOnesNone) {
    EXPECT_EQ(Share(0.0414, 1772), "4.14 %");
    EXPECT_EQ(Share(0.0994, 1000), "9.94 %");
    EXPECT_EQ(Share(0.0996, 10000), "10 %");
    EXPECT_EQ(Share(0.37, 1772), "37 %");
    EXPECT_EQ(Share(1, 1772), "100 %");
}

TEST(BenchReport, MedianAndSlowestAreThoseOfTheTimesInTheirOrder) {
    const bench::Times times{{0.1, 0.2, 0.4, 0.5, 3.0}};
    EXPECT_EQ(times.Median(), 0.4);
    EXPECT_EQ(times.Slowest(), 3.0);
}

TEST(BenchReport, ColumnsAreAsWideAsTheirWidestCellAndLettersAreNotBytes) {
    bench::CTable table({"A", "Wide"});
    table.Add({"x", "µ"});
    table.Add({"long", ""});
    testing::internal::CaptureStdout();
    table.Print();
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "| A    | Wide |\n|------|------|\n| x    | µ    |\n| long |      |\n\n");
}

TEST(BenchReport, OneDemandThatIsMissedIsMarkedAndMissesThemAll) {
    testing::internal::CaptureStdout();
    EXPECT_TRUE(bench::PrintDemands({{"a", "<= 1", "1", true}}));
    EXPECT_FALSE(bench::PrintDemands({{"b", "<= 1", "2", false}, {"a", "<= 1", "1", true}}));
    const std::string printed = testing::internal::GetCapturedStdout();
    EXPECT_NE(printed.find("| b         | <= 1   | 2       | MISSED |"), std::string::npos) << printed;
    EXPECT_EQ(printed.find("MISSED"), printed.rfind("MISSED")) << printed;
}

}  // namespace
