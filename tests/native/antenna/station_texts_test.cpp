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
    texts.Retune();
    EXPECT_FALSE(texts.Services().serviceName);
}

// A station with all that it may say, under a code.
sdr::rds::Station Known(std::uint16_t pi) {
    sdr::rds::Station station = Station(20.0);
    station.pi = pi;
    Say(&station.serviceName, "KORA ONE", 19.0);
    Say(&station.radioText, "Good morning", 18.0);
    station.radioTextFlag = false;
    station.alternatives.same_10kHz = {9850, 10110, 10340};
    station.alternatives.whole = true;
    station.programmeType = 1;
    station.trafficProgramme = true;
    return station;
}
// Another frequency, of which nothing has come but the code.
sdr::rds::Station JustTuned(std::uint16_t pi) {
    sdr::rds::Station station = Station(0.3);
    station.pi = pi;
    return station;
}

TEST(StationTexts, OnAnotherFrequencyOfTheSameNetworkAllIsKnownWithTheCode) {
    CStationTexts texts;
    texts.Take(Known(0xD301));
    texts.Retune();
    texts.Take(Station(0.2));
    EXPECT_EQ(Given(&texts), "-");
    EXPECT_TRUE(texts.Services().alternatives_10kHz.empty());
    texts.Take(JustTuned(0xD301));
    EXPECT_EQ(Given(&texts), "KORA ONE");
    EXPECT_EQ(Given(&texts), "Good morning");
    EXPECT_EQ(texts.Services().alternatives_10kHz.size(), 3u);
    EXPECT_EQ(texts.Services().programmeType, 1);
    EXPECT_TRUE(texts.Services().trafficProgramme);
    // What comes then takes its place, a shorter list of alternatives when it is whole.
    sdr::rds::Station later = JustTuned(0xD301);
    later.alternatives.same_10kHz = {9850};
    later.trafficProgramme = false;
    later.trafficAnnouncement = true;
    Say(&later.serviceName, "KORA TWO", 1.0);
    texts.Take(later);
    EXPECT_EQ(Given(&texts), "KORA TWO");
    EXPECT_FALSE(texts.Services().trafficProgramme);
    EXPECT_TRUE(texts.Services().trafficAnnouncement);
    EXPECT_EQ(texts.Services().alternatives_10kHz.size(), 3u);
    later.alternatives.whole = true;
    texts.Take(later);
    EXPECT_EQ(texts.Services().alternatives_10kHz.size(), 1u);
}

TEST(StationTexts, AnotherCodeForgetsAllOfTheStationBeforeForGood) {
    CStationTexts texts;
    texts.Take(Known(0xD301));
    texts.Retune();
    texts.Take(JustTuned(0xD302));
    EXPECT_EQ(Given(&texts), "-");
    EXPECT_FALSE(texts.Services().serviceName);
    EXPECT_FALSE(texts.Services().trafficProgramme);
    texts.Retune();
    texts.Take(JustTuned(0xD301));
    EXPECT_EQ(Given(&texts), "-");
}

TEST(StationTexts, AFrequencyWithoutACodeBetweenTwoOfANetworkForgetsNothingUntilAMinuteHasPassed) {
    CStationTexts texts;
    texts.Take(Known(0xD301));
    texts.Retune();
    texts.Take(Station(59.0));
    texts.Retune();
    texts.Take(JustTuned(0xD301));
    EXPECT_EQ(Given(&texts), "KORA ONE");
    texts.Retune();
    texts.Take(Station(61.0));
    texts.Take(JustTuned(0xD301));
    EXPECT_EQ(Given(&texts), "-");
}

TEST(StationTexts, ARadioTextThatHasChangedMeanwhileIsNotShownAnyMore) {
    CStationTexts texts;
    texts.Take(Known(0xD301));
    texts.Retune();
    sdr::rds::Station station = JustTuned(0xD301);
    station.radioTextFlag = true;
    texts.Take(station);
    EXPECT_EQ(Given(&texts), "KORA ONE");
    EXPECT_EQ(Given(&texts), "KORA ONE");
    EXPECT_FALSE(texts.Services().radioText);
}

TEST(StationTexts, AConnectionThatBrokeIsARetuneToTheSameStation) {
    CStationTexts texts;
    texts.Take(Known(0xD301));
    texts.Take({});
    EXPECT_EQ(Given(&texts), "-");
    texts.Take(JustTuned(0xD301));
    EXPECT_EQ(Given(&texts), "KORA ONE");
}

TEST(StationTexts, AListLongerThanTheRadioCanKeepIsCut) {
    CStationTexts texts;
    sdr::rds::Station station = Station(1.0);
    station.alternatives.same_10kHz.assign(150, 9850);
    texts.Take(station);
    EXPECT_EQ(texts.Services().alternatives_10kHz.size(), 100u);
}

}  // namespace
