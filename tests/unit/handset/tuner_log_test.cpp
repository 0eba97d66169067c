// The tuner log and the band file as the tour reads them.
#include "handset/tour/tuner_log.h"

#include <gtest/gtest.h>

namespace panel {
namespace {

constexpr char kLog[] =
    "Initialize -> 0\n"
    "SetChannel 9850 -> 0\n"
    "GetChannel -> 0: 9850\n"
    "SeekNext -> 0\n"
    "SeekNext -> 0x80004005\n"
    "GetRDSData -> 0: 0 KORA ONE\n"
    "GetChannel -> 0: 10110\n"
    "SetChannel 11000 -> 0x80070057\n"
    "GetChannel -> 0: 87";

TEST(TunerLog, LinesAreTakenApart) {
    const auto calls = ReadTunerLog(kLog);
    ASSERT_EQ(calls.size(), 8u);
    EXPECT_EQ(calls[1].name, "SetChannel");
    EXPECT_EQ(calls[1].arguments, "9850");
    EXPECT_TRUE(calls[1].succeeded);
    EXPECT_EQ(calls[5].out, "0 KORA ONE");
    EXPECT_FALSE(calls[7].succeeded);
}

TEST(TunerLog, OnlySuccessesCount) {
    const auto calls = ReadTunerLog(kLog);
    EXPECT_EQ(CountCalls(calls, "SeekNext"), 1u);
    EXPECT_EQ(CountCalls(calls, "SeekPrev"), 0u);
}

TEST(TunerLog, TheLastNumberIsThatOfTheLastWholeLine) {
    const auto calls = ReadTunerLog(kLog);
    EXPECT_EQ(LastNumber(calls, "GetChannel"), 10110u);
    EXPECT_EQ(LastNumber(calls, "SetChannel"), 9850u);
    EXPECT_FALSE(LastNumber(calls, "GetSignal").has_value());
}

TEST(TunerLog, LinesOfAnotherKindAreLetPass) {
    EXPECT_TRUE(ReadTunerLog("").empty());
    const auto calls = ReadTunerLog("\n\nnothing\nClose -> 0\n->\n");
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].name, "Close");
}

TEST(BandStations, AreReadWithTheirNames) {
    const auto stations = ReadBandStations(
        "; comment\n[band]\nwrap=1\nps=NOT ONE\n[9850]   ; a station\nlevel=45\nps=KORA "
        "ONE\r\n[10110]\nlevel=3\n"
        "[8760]\nps = Z\xC3\x9CRI   ; its name\npty=News\nps");
    ASSERT_EQ(stations.size(), 3u);
    EXPECT_EQ(stations[0].channel, 8760u);
    EXPECT_EQ(stations[0].name, "Z\xC3\x9CRI");
    EXPECT_EQ(stations[1].channel, 9850u);
    EXPECT_EQ(stations[1].name, "KORA ONE");
    EXPECT_EQ(stations[2].channel, 10110u);
    EXPECT_EQ(stations[2].name, "");
}

TEST(BandStations, AreNamedByTheFirstOfTheirNamesAndNotByHowLongEachIsSent) {
    const auto stations = ReadBandStations("[9400]\nps=TALK 94\nps=CALL US\npstime=5\n");
    ASSERT_EQ(stations.size(), 1u);
    EXPECT_EQ(stations[0].name, "TALK 94");
}

}  // namespace
}  // namespace panel
