// The round of RDS texts, and what a weak signal loses.
#include "handset/fmdevice/rds_reader.h"

#include <gtest/gtest.h>

namespace {

using fm::RdsTextKind;

fm::RdsData FullData() {
    fm::RdsData data;
    data.serviceName = "KORA ONE";
    data.radioText = "Good morning";
    data.programText = "Morning";
    return data;
}

TEST(RdsReader, ASlowAskerSeesAllTextsInTurnBeginningWithTheName) {
    fm::CRdsReader reader;
    const RdsTextKind kWanted[] = {RdsTextKind::kServiceName, RdsTextKind::kRadioText,
                                   RdsTextKind::kProgramText, RdsTextKind::kServiceName};
    std::uint64_t now = 5000;
    for (const RdsTextKind kind : kWanted) {
        const auto text = reader.Next(FullData(), now);
        ASSERT_TRUE(text);
        EXPECT_EQ(text->kind, kind);
        now += 700;
    }
}

TEST(RdsReader, AFastAskerIsGivenTheSameTextUntilTheNextHasArrived) {
    fm::CRdsReader reader;
    ASSERT_TRUE(reader.Next(FullData(), 1000));
    EXPECT_EQ(reader.Next(FullData(), 1000 + fm::kTextPace_ms - 1)->kind, RdsTextKind::kServiceName);
    EXPECT_EQ(reader.Next(FullData(), 1000 + fm::kTextPace_ms)->kind, RdsTextKind::kRadioText);
}

TEST(RdsReader, TextsThatAStationDoesNotSendAreLeftOut) {
    fm::RdsData data = FullData();
    data.radioText.clear();
    fm::CRdsReader reader;
    EXPECT_EQ(reader.Next(data, 0)->text, "KORA ONE");
    EXPECT_EQ(reader.Next(data, 1000)->text, "Morning");
    EXPECT_EQ(reader.Next(data, 2000)->text, "KORA ONE");
    EXPECT_FALSE(reader.Next(fm::RdsData(), 3000));
}

TEST(RdsReader, AnotherStationBeginsWithItsName) {
    fm::CRdsReader reader;
    ASSERT_TRUE(reader.Next(FullData(), 0));
    reader.Restart();
    EXPECT_EQ(reader.Next(FullData(), 400)->kind, RdsTextKind::kServiceName);
}

// Seconds in ten minutes in which groups come through.
int GoodSeconds(int level) {
    int good = 0;
    for (std::uint64_t second = 0; second < 600; ++second)
        good += fm::RdsComesThrough(level, second * 1000) ? 1 : 0;
    return good;
}

TEST(RdsReader, AWeakSignalLosesSecondsAndAVeryWeakOneAll) {
    EXPECT_EQ(GoodSeconds(15), 0);
    EXPECT_NEAR(GoodSeconds(16), 300, 60);
    EXPECT_NEAR(GoodSeconds(25), 570, 20);
    EXPECT_EQ(GoodSeconds(26), 600);
    for (int level = 16; level < 26; ++level) EXPECT_LE(GoodSeconds(level), GoodSeconds(level + 1));
}

}  // namespace
