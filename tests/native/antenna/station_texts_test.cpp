// Texts of a station on the air in the turn in which the device gives them.
#include "handset/fmdevice/antenna/station_texts.h"

#include <gtest/gtest.h>

namespace {

using fm::CStationTexts;
using fm::RdsTextKind;

sdr::rds::Station Station(double now_s) {
    sdr::rds::Station station;
    station.now_s = now_s;
    station.lastGroup_s = now_s;
    return station;
}

void Say(sdr::rds::Text* text, const char* whole, double at_s) {
    text->whole = whole;
    text->whole_s = at_s;
}

std::string Given(CStationTexts* texts) {
    const auto text = texts->Give();
    return text ? text->text : "-";
}

TEST(StationTexts, NothingIsGivenBeforeATextIsWhole) {
    CStationTexts texts;
    texts.Take(Station(1.0));
    EXPECT_EQ(Given(&texts), "-");
}

TEST(StationTexts, EachIsGivenOnceInTheOrderOfItsCompletionThenTheLastAgain) {
    CStationTexts texts;
    sdr::rds::Station station = Station(5.0);
    Say(&station.radioText, "Good morning", 4.0);
    Say(&station.serviceName, "KORA ONE", 3.0);
    Say(&station.programTypeName, "Gardens", 4.5);
    texts.Take(station);
    EXPECT_EQ(Given(&texts), "KORA ONE");
    EXPECT_EQ(Given(&texts), "Good morning");
    EXPECT_EQ(texts.Give()->kind, RdsTextKind::kProgramText);
    EXPECT_EQ(Given(&texts), "Gardens");
    texts.Take(station);
    EXPECT_EQ(Given(&texts), "Gardens");
    Say(&station.serviceName, "KORA ONE", 6.0);
    texts.Take(station);
    EXPECT_EQ(Given(&texts), "KORA ONE");
}

TEST(StationTexts, WhileNoGroupsComeNoTextIsGivenAndTheServicesStay) {
    CStationTexts texts;
    sdr::rds::Station station = Station(5.0);
    Say(&station.serviceName, "KORA ONE", 5.0);
    station.alternatives.same_10kHz = {9850, 10110};
    station.programmeType = 1;
    texts.Take(station);
    EXPECT_TRUE(texts.Services().received);
    station.now_s = 8.0;
    texts.Take(station);
    EXPECT_EQ(Given(&texts), "-");
    EXPECT_FALSE(texts.Services().received);
    EXPECT_TRUE(texts.Services().serviceName);
    EXPECT_EQ(texts.Services().alternatives_10kHz.size(), 2u);
    EXPECT_EQ(texts.Services().programmeType, 1);
    texts.Restart();
    EXPECT_FALSE(texts.Services().serviceName);
}

TEST(StationTexts, AListLongerThanTheRadioCanKeepIsCut) {
    CStationTexts texts;
    sdr::rds::Station station = Station(1.0);
    station.alternatives.same_10kHz.assign(150, 9850);
    texts.Take(station);
    EXPECT_EQ(texts.Services().alternatives_10kHz.size(), 100u);
}

}  // namespace
