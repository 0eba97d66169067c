// Groups that real stations sent, as published with what they say in the tests of the decoder redsea and in
// the logs that these name.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "handset/fmdevice/sdr/rds/group_reader.h"

namespace {

using namespace sdr::rds;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

// Groups of 16 hexadecimal digits, received beyond doubt.
Station Read(const std::vector<std::uint64_t>& groups) {
    CGroupReader reader;
    double now_s = 0.0;
    for (const std::uint64_t bits : groups) {
        Group group;
        for (std::size_t i = 0; i < kGroupBlocks; ++i) {
            group.blocks[i] = {BlockStatus::kCertain, Offset::kA,
                               static_cast<std::uint16_t>(bits >> (48 - 16 * i) & 0xFFFF), 20.0f};
            now_s += 26 / kBitRate_Hz;
            reader.TakeBlock(i, group.blocks[i], now_s);
        }
        reader.TakeGroup(group, now_s);
    }
    return reader.Current();
}

TEST(RdsRealGroups, YleX3mSendsNameSwitchesAndStereo) {
    const Station station =
        Read({0x62040130966B594C, 0x6204013193CD4520, 0x62040132E4725833, 0x62040137966B4D20});
    EXPECT_EQ(station.pi, 0x6204);
    EXPECT_EQ(station.serviceName.whole, "YLE X3M ");
    EXPECT_EQ(station.programmeType, 9);
    EXPECT_EQ(station.trafficProgramme, false);
    EXPECT_EQ(station.trafficAnnouncement, true);
    EXPECT_EQ(station.music, false);
    EXPECT_EQ(station.dynamicType, false);
    EXPECT_EQ(station.compressed, false);
    EXPECT_EQ(station.artificialHead, false);
    EXPECT_EQ(station.stereo, true);
}

TEST(RdsRealGroups, RadioKrkaSendsItsNameInGroup0BAndItsTextIn2B) {
    const Station name =
        Read({0x9423080000002020, 0x9423080100004B52, 0x9423080200004B41, 0x9423080700002020});
    EXPECT_EQ(name.serviceName.whole, "  KRKA  ");
    const Station text =
        Read({0x9423280000005052, 0x942328010000494A, 0x9423280200004554, 0x9423280300004E4F,
              0x9423280400002050, 0x9423280500004F53, 0x9423280600004C55, 0x9423280700005341,
              0x9423280800004E4A, 0x9423280900004520, 0x9423280A00005241, 0x9423280B00004449,
              0x9423280C00004120, 0x9423280D00004B52, 0x9423280E00004B41, 0x9423280F00002020});
    EXPECT_EQ(text.radioText.whole, "PRIJETNO POSLUSANJE RADIA KRKA");
}

TEST(RdsRealGroups, ATypeNameFromPoland) {
    EXPECT_EQ(Read({0x3ABCA7504352492E, 0x3ABCA751434E0D0D}).programTypeName.whole, "CRI.CN  ");
}

TEST(RdsRealGroups, YleYksiTellsCountryLanguageAndFrequenciesByMethodA) {
    const Station labels = Read({0x620110E000E17C54, 0x620110E030277C54});
    EXPECT_EQ(labels.extendedCountry, 0xE1);
    EXPECT_EQ(labels.language, 0x27);
    const Station frequencies =
        Read({0x620100F7E7045349, 0x620100F02217594C, 0x620100F111394520, 0x620100F20A14594B});
    EXPECT_EQ(frequencies.alternatives.method, AlternativesMethod::kA);
    EXPECT_TRUE(frequencies.alternatives.whole);
    EXPECT_THAT(frequencies.alternatives.same_10kHz,
                UnorderedElementsAre(8790, 9090, 8980, 8920, 9320, 8850, 8950));
}

TEST(RdsRealGroups, YleHelsinkiTellsItsFrequenciesByMethodB) {
    const Station station =
        Read({0x64030447F7414920, 0x64030440415F594C, 0x6403044144414520, 0x640304425541484B,
              0x640304471C414920, 0x640304406841594C, 0x640304415E414520, 0x64030442414B484B,
              0x6403044741564920, 0x64030440CB41594C, 0x64030441B7414520, 0x640304424174484B});
    EXPECT_EQ(station.alternatives.method, AlternativesMethod::kB);
    EXPECT_TRUE(station.alternatives.whole);
    EXPECT_THAT(station.alternatives.same_10kHz, UnorderedElementsAre(9400, 9700, 9030, 9500, 9610, 9910));
    EXPECT_THAT(station.alternatives.regional_10kHz,
                UnorderedElementsAre(9430, 9600, 9790, 9690, 10780, 10580));
}

TEST(RdsRealGroups, TextsEndInEachOfTheirWays) {
    EXPECT_EQ(Read({0xC95424F04A41434B, 0xC95424F12039362E, 0xC95424F2390D0000}).radioText.whole,
              "JACK 96.9");
    EXPECT_EQ(Read({0xA95924104641'4E43, 0xA959241159202D20, 0xA9592412426F6C65, 0xA9592413726F2020,
                    0xA959241420202020, 0xA959241520202020, 0xA959241620202020, 0xA959241720202020,
                    0xA959241820202020, 0xA959241920202020, 0xA959241A20202020, 0xA959241B20202020,
                    0xA959241C20202020, 0xA959241D20202020, 0xA959241E20202020, 0xA959241F20202020})
                  .radioText.whole,
              "FANCY - Bolero");
    std::vector<std::uint64_t> groups;
    for (int round = 0; round < 3; ++round) {
        for (const std::uint64_t group : {0xA5402540526F6262u, 0xA540254169652057u, 0xA5402542696C6C69u,
                                          0xA5402543616D7320u, 0xA54025442D204665u, 0xA5402545656C2020u}) {
            groups.push_back(group);
        }
    }
    EXPECT_EQ(Read(groups).radioText.whole, "");
    groups.push_back(0xA5402540526F6262);
    EXPECT_EQ(Read(groups).radioText.whole, "Robbie Williams - Feel");
}

TEST(RdsRealGroups, YleVegaHasALetterThatIsNotAscii) {
    EXPECT_EQ(Read({0x6205244056656761, 0x62052441204B7691, 0x620524426C6C0D20}).radioText.whole,
              "Vega Kväll");
}

TEST(RdsRealGroups, PartsOfTheTextAreNamedByLettersNotByBytes) {
    const Station station = Read(
        {0xD318355800004BD7, 0xD318C5588D200DCF, 0xD31825406A65747A, 0xD318254174206175, 0xD31825426620414E,
         0xD318254354454E4E, 0xD318254445204241, 0xD31825455945524E, 0xD31825463A204368, 0xD318254772697374,
         0xD3182548696E6120, 0xD318254953749972, 0xD318254A6D657220, 0xD318254B2D204569, 0xD318254C6E205465,
         0xD318254D696C2076, 0xD318254E6F6E206D, 0xD318254F69722020, 0xD318C5588D200DCF});
    ASSERT_EQ(station.tags.size(), 2u);
    EXPECT_EQ(station.tags[0].type, 4);
    EXPECT_EQ(station.tags[0].text, "Christina Stürmer");
    EXPECT_EQ(station.tags[1].type, 1);
    EXPECT_EQ(station.tags[1].text, "Ein Teil von mir");
}

TEST(RdsRealGroups, LongNamesAreFilledOrEnded) {
    EXPECT_EQ(Read({0x49B1F18042726565, 0x49B1F1817A652031, 0x49B1F18230302E36, 0x49B1F1832047'6F6C,
                    0x49B1F1846420436F, 0x49B1F18561737400, 0x49B1F18600000000, 0x49B1F18700000000})
                  .longServiceName.whole,
              "Breeze 100.6 Gold Coast");
    EXPECT_EQ(Read({0x6255F5204AC3A452, 0x6255F52156495241, 0x6255F52244494F0D}).longServiceName.whole,
              "JäRVIRADIO");
}

struct RealTime {
    std::uint64_t group;
    int year, month, day, hour, minute, offset_min;
};

TEST(RdsRealGroups, ClocksOfFiveStationsAndADayThatEnds) {
    // UTC; the published times are local.
    const RealTime kTimes[] = {
        {0xD31441C1C3EF5AC4, 2017, 4, 4, 21, 43, 120},  {0xD42A4541C86ED482, 2018, 11, 1, 13, 18, 60},
        {0x456940DDCD923BAE, 2020, 8, 20, 3, 46, -420}, {0x22E14581C1E74280, 2016, 7, 18, 20, 10, 0},
        {0xF201441DD2996004, 2022, 5, 25, 22, 0, 120},  {0xF201441DD29A0004, 2022, 5, 26, 0, 0, 120},
    };
    for (const RealTime& time : kTimes) {
        const Station station = Read({time.group});
        ASSERT_TRUE(station.clock);
        EXPECT_EQ(station.clock->year, time.year);
        EXPECT_EQ(station.clock->month, time.month);
        EXPECT_EQ(station.clock->day, time.day);
        EXPECT_EQ(station.clock->hour, time.hour);
        EXPECT_EQ(station.clock->minute, time.minute);
        EXPECT_EQ(station.clock->offset_min, time.offset_min);
    }
}

TEST(RdsRealGroups, YleXTellsOfYleSuomi) {
    const Station station =
        Read({0x6202E150594C6203, 0x6202E15145536203, 0x6202E152554F6203, 0x6202E1534D496203,
              0x6202E1552C416203, 0x6202E15C00006203, 0x6202E15D48006203, 0x6202E15E7C836203});
    ASSERT_EQ(station.others.size(), 1u);
    const OtherNetwork& other = station.others[0];
    EXPECT_EQ(other.pi, 0x6203);
    EXPECT_EQ(other.serviceName, "YLESUOMI");
    EXPECT_THAT(other.mapped, ElementsAre(MappedFrequency{9190, 9400}));
    EXPECT_EQ(other.linkage, 0);
    EXPECT_EQ(other.trafficProgramme, true);
    EXPECT_EQ(other.trafficAnnouncement, false);
    EXPECT_EQ(other.programmeType, 9);
    EXPECT_EQ(other.itemNumber, 31875);
}

TEST(RdsRealGroups, DeutschlandfunkTellsOfBayern3ByGroup14B) {
    const Station station = Read({0xD220EA90D220D313});
    ASSERT_EQ(station.others.size(), 1u);
    EXPECT_EQ(station.others[0].pi, 0xD313);
    EXPECT_EQ(station.others[0].trafficProgramme, true);
    EXPECT_EQ(station.others[0].trafficAnnouncement, false);
}

TEST(RdsRealGroups, RadioGiocondaTellsFrequenciesOfAnother) {
    const Station station = Read({0x53C5E554E2AD53C6, 0x53C5E554C2CD53C6});
    ASSERT_EQ(station.others.size(), 1u);
    EXPECT_THAT(station.others[0].alternatives.same_10kHz, UnorderedElementsAre(10480, 10690));
}

}  // namespace
