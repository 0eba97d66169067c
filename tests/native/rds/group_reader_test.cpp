// Every type of group that is read, from groups made by hand and from groups of real stations.
#include "handset/fmdevice/sdr/rds/group_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "handset/fmdevice/sdr/rds/characters.h"

namespace {

using namespace sdr::rds;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint16_t kPi = 0xD3C2;

class RdsGroups : public testing::Test {
  protected:
    void Send(std::uint16_t a, std::uint16_t b, std::uint16_t c, std::uint16_t d,
              BlockStatus status = BlockStatus::kCertain) {
        Group group;
        const bool versionB = (b & 0x0800) != 0;
        const std::uint16_t words[] = {a, b, c, d};
        const Offset offsets[] = {Offset::kA, Offset::kB, versionB ? Offset::kCPrime : Offset::kC,
                                  Offset::kD};
        for (std::size_t i = 0; i < 4; ++i) {
            group.blocks[i] = {status, offsets[i], words[i], 0.0f};
            now_s_ += 26 / 1187.5;
            reader_.TakeBlock(i, group.blocks[i], now_s_);
        }
        reader_.TakeGroup(group, now_s_);
    }
    void SendText(const std::string& text, bool flag, BlockStatus status = BlockStatus::kCertain) {
        for (std::size_t i = 0; i < text.size() / 4; ++i) {
            Send(kPi, static_cast<std::uint16_t>(0x2000 | (flag ? 0x10 : 0) | i), Letters(text, 4 * i),
                 Letters(text, 4 * i + 2), status);
        }
    }
    void SendName(const std::string& name, BlockStatus status = BlockStatus::kCertain) {
        for (std::size_t i = 0; i < 4; ++i) {
            Send(kPi, static_cast<std::uint16_t>(i), 0xE0CD, Letters(name, 2 * i), status);
        }
    }
    static std::uint16_t Letters(const std::string& text, std::size_t at) {
        return static_cast<std::uint16_t>(static_cast<unsigned char>(text[at]) << 8 |
                                          static_cast<unsigned char>(text[at + 1]));
    }
    const Station& Read() const { return reader_.Current(); }

    CGroupReader reader_;
    double now_s_ = 0.0;
};

TEST_F(RdsGroups, ServiceNameProgrammeTypeAndSwitchesStandInGroup0) {
    // TP, PTY 10, TA, music, stereo (its bit comes with the last two letters).
    for (std::uint16_t i = 0; i < 4; ++i) {
        Send(kPi, static_cast<std::uint16_t>(0x0400 | 10 << 5 | 0x18 | (i == 3 ? 4 : 0) | i), 0xE0CD,
             Letters("KORA ONE", 2u * i));
    }
    EXPECT_EQ(Read().pi, kPi);
    EXPECT_EQ(Read().programmeType, 10);
    EXPECT_EQ(Read().trafficProgramme, true);
    EXPECT_EQ(Read().trafficAnnouncement, true);
    EXPECT_EQ(Read().music, true);
    EXPECT_EQ(Read().stereo, true);
    EXPECT_EQ(Read().dynamicType, false);
    EXPECT_EQ(Read().serviceName.whole, "KORA ONE");
    EXPECT_EQ(Read().kinds[0], 4u);
}

TEST_F(RdsGroups, Version0BHasTheNameWithoutFrequencies) {
    for (std::uint16_t i = 0; i < 4; ++i) {
        Send(kPi, static_cast<std::uint16_t>(0x0800 | i), kPi, Letters("KORA TWO", 2u * i));
    }
    EXPECT_EQ(Read().serviceName.whole, "KORA TWO");
    EXPECT_THAT(Read().alternatives.same_10kHz, IsEmpty());
    EXPECT_EQ(Read().kinds[1], 4u);
}

TEST_F(RdsGroups, FrequenciesByMethodAAreAsManyAsAreAnnounced) {
    // 3.2.1.6.3: five frequencies, the last with a filler.
    Send(kPi, 0, 0xE500 | 100, 0x2020);
    Send(kPi, 1, 110 << 8 | 20, 0x2020);
    EXPECT_FALSE(Read().alternatives.whole);
    Send(kPi, 2, 33 << 8 | 204, 0x2020);
    EXPECT_TRUE(Read().alternatives.whole);
    EXPECT_EQ(Read().alternatives.method, AlternativesMethod::kA);
    EXPECT_THAT(Read().alternatives.same_10kHz, ElementsAre(9750, 9850, 8950, 9080, 10790));
}

TEST_F(RdsGroups, ALongWaveFrequencyFollowsItsMark) {
    Send(kPi, 0, 0xE200 | 18, 0x2020);
    Send(kPi, 1, 250 << 8 | 2, 0x2020);
    Send(kPi, 2, 250 << 8 | 17, 0x2020);
    EXPECT_THAT(Read().alternatives.longMedium_kHz, ElementsAre(162, 540));
}

TEST_F(RdsGroups, FrequenciesByMethodBHaveTheTunedOneInEachPairAndRegionalOnesDescending) {
    // The standard's own example (3.2.1.6.4): 89.3 with 99.5, 101.7, 88.8 (the pairs' order says what they
    // are).
    const int tuned = 893 - 875;
    const auto pair = [](int a, int b) { return static_cast<std::uint16_t>(a << 8 | b); };
    Send(kPi, 0, pair(224 + 7, tuned), 0x2020);
    Send(kPi, 1, pair(tuned, 995 - 875), 0x2020);
    Send(kPi, 2, pair(1017 - 875, tuned), 0x2020);
    Send(kPi, 3, pair(888 - 875, tuned), 0x2020);
    EXPECT_EQ(Read().alternatives.method, AlternativesMethod::kB);
    EXPECT_TRUE(Read().alternatives.whole);
    EXPECT_THAT(Read().alternatives.same_10kHz, ElementsAre(8930, 9950, 8880));
    EXPECT_THAT(Read().alternatives.regional_10kHz, ElementsAre(10170));
}

TEST_F(RdsGroups, ADoubtfulFrequencyCountsWhenItComesASecondTime) {
    Send(kPi, 0, 0xE300 | 100, 0x2020, BlockStatus::kReceived);
    EXPECT_THAT(Read().alternatives.same_10kHz, IsEmpty());
    Send(kPi, 0, 0xE300 | 100, 0x2020, BlockStatus::kReceived);
    EXPECT_THAT(Read().alternatives.same_10kHz, ElementsAre(9750));
}

TEST_F(RdsGroups, CountryAndLanguageAreSlowLabels) {
    Send(kPi, 0x1000, 0x00E0, 0);
    Send(kPi, 0x1000, 0x3008, 0);
    EXPECT_EQ(Read().extendedCountry, 0xE0);
    EXPECT_EQ(Read().language, 8);
}

TEST_F(RdsGroups, RadioTextEndsAtItsMark) {
    SendText("Good morning\r   ", false);
    EXPECT_EQ(Read().radioText.whole, "Good morning");
    EXPECT_EQ(Read().radioTextFlag, false);
}

TEST_F(RdsGroups, RadioTextOfFullLengthNeedsNoMark) {
    const std::string text = "This text has as many letters as fit into it, which is just 64..";
    SendText(text, true);
    EXPECT_EQ(Read().radioText.whole, text);
}

TEST_F(RdsGroups, RadioTextThatIsFilledWithBlanksIsShownWithoutThem) {
    SendText("Filled" + std::string(58, ' '), false);
    EXPECT_EQ(Read().radioText.whole, "Filled");
}

TEST_F(RdsGroups, RadioTextOfWholeSegmentsEndsWhereItBeginsAnew) {
    for (int round = 0; round < 4; ++round) SendText("Just 12 long", false);
    EXPECT_EQ(Read().radioText.whole, "Just 12 long");
}

TEST_F(RdsGroups, RadioTextOfGroup2BHasHalfTheLetters) {
    const std::string text = "Half as long and two at a time..";
    for (std::size_t i = 0; i < 16; ++i) {
        Send(kPi, static_cast<std::uint16_t>(0x2800 | i), kPi, Letters(text, 2 * i));
    }
    EXPECT_EQ(Read().radioText.whole, text);
}

TEST_F(RdsGroups, AnotherFlagClearsTheText) {
    SendText("Good morning\r   ", false);
    Send(kPi, 0x2010, Letters("Go", 0), Letters("od", 0));
    EXPECT_EQ(Read().radioText.whole, "");
    EXPECT_EQ(Read().radioText.letters.substr(0, 4), "Good");
    SendText("Good night\r ", true);
    EXPECT_EQ(Read().radioText.whole, "Good night");
}

TEST_F(RdsGroups, TheClockIsUtcWithTheLocalOffset) {
    // 6 November 1985 is day 46375 (annex G); 22:58, one hour and a half ahead.
    constexpr std::uint32_t kDay = 46375;
    constexpr int kHour = 22;
    Send(kPi, static_cast<std::uint16_t>(0x4000 | kDay >> 15),
         static_cast<std::uint16_t>((kDay & 0x7FFF) << 1 | kHour >> 4),
         static_cast<std::uint16_t>((kHour & 15) << 12 | 58 << 6 | 3));
    ASSERT_TRUE(Read().clock);
    EXPECT_EQ(Read().clock->year, 1985);
    EXPECT_EQ(Read().clock->month, 11);
    EXPECT_EQ(Read().clock->day, 6);
    EXPECT_EQ(Read().clock->hour, 22);
    EXPECT_EQ(Read().clock->minute, 58);
    EXPECT_EQ(Read().clock->offset_min, 90);
    EXPECT_NEAR(Read().clock->at_s, 104 / 1187.5, 1e-9);
}

TEST_F(RdsGroups, AClockInDoubtIsBelievedWhenTheNextMinuteAgrees) {
    Send(kPi, 0x4001, 0xC000, 0x0000 | 5 << 6, BlockStatus::kReceived);
    EXPECT_FALSE(Read().clock);
    now_s_ += 60.0 - 104 / 1187.5;
    Send(kPi, 0x4001, 0xC000, 0x0000 | 6 << 6, BlockStatus::kReceived);
    ASSERT_TRUE(Read().clock);
    EXPECT_EQ(Read().clock->minute, 6);
}

TEST(RdsClock, DaysAreThoseOfTheCalendar) {
    ClockTime time;
    DateOfDayNumber(0, &time);
    EXPECT_EQ(time.year * 10000 + time.month * 100 + time.day, 18581117);
    DateOfDayNumber(51544, &time);
    EXPECT_EQ(time.year * 10000 + time.month * 100 + time.day, 20000101);
    DateOfDayNumber(51603, &time);
    EXPECT_EQ(time.year * 10000 + time.month * 100 + time.day, 20000229);
    DateOfDayNumber(88127, &time);
    EXPECT_EQ(time.year * 10000 + time.month * 100 + time.day, 21000228);
    DateOfDayNumber(88128, &time);
    EXPECT_EQ(time.year * 10000 + time.month * 100 + time.day, 21000301);
}

TEST(RdsClock, AnHourOrMinuteThatDoesNotExistIsNoTime) {
    EXPECT_FALSE(ClockTimeOf(1, 0xC001, 8 << 12));
    EXPECT_FALSE(ClockTimeOf(1, 0xC000, 60 << 6));
    EXPECT_FALSE(ClockTimeOf(0, 0, 0));
}

TEST_F(RdsGroups, ProgrammeTypeNameComesInTwoHalves) {
    Send(kPi, 0xA000, Letters("Foot", 0), Letters("Foot", 2));
    EXPECT_EQ(Read().programTypeName.whole, "");
    Send(kPi, 0xA001, Letters("ball", 0), Letters("ball", 2));
    EXPECT_EQ(Read().programTypeName.whole, "Football");
}

TEST_F(RdsGroups, OtherNetworksHaveNameFrequenciesAndTraffic) {
    constexpr std::uint16_t kOther = 0xD3C4;
    for (std::uint16_t i = 0; i < 4; ++i) Send(kPi, 0xE010 | i, Letters("KORA TWO", 2u * i), kOther);
    Send(kPi, 0xE014, 0xE100 | 100, kOther);
    Send(kPi, 0xE015, 10 << 8 | 20, kOther);
    Send(kPi, 0xE01C, 0x1234, kOther);
    Send(kPi, 0xE01D, 15 << 11 | 1, kOther);
    Send(kPi, 0xE01E, 0x4321, kOther);
    ASSERT_EQ(Read().others.size(), 1u);
    const OtherNetwork& other = Read().others[0];
    EXPECT_EQ(other.pi, kOther);
    EXPECT_EQ(other.serviceName, "KORA TWO");
    EXPECT_THAT(other.alternatives.same_10kHz, ElementsAre(9750));
    EXPECT_THAT(other.mapped, ElementsAre(MappedFrequency{8850, 8950}));
    EXPECT_EQ(other.linkage, 0x1234);
    EXPECT_EQ(other.programmeType, 15);
    EXPECT_EQ(other.trafficAnnouncement, true);
    EXPECT_EQ(other.trafficProgramme, true);
    EXPECT_EQ(other.itemNumber, 0x4321);
    // 14B: the announcement is over.
    Send(kPi, 0xE810, kPi, kOther);
    EXPECT_EQ(Read().others[0].trafficAnnouncement, false);
}

TEST_F(RdsGroups, TheLongNameIsUtf8) {
    const std::string name =
        "R\xC3\xA1"
        "dio na \xCE\xA9 \xE2\x82\xAC!\r";
    const std::string filled = name + std::string(32 - name.size(), ' ');
    for (std::uint16_t i = 0; i < 8; ++i) {
        Send(kPi, 0xF000 | i, Letters(filled, 4u * i), Letters(filled, 4u * i + 2));
    }
    EXPECT_EQ(Read().longServiceName.whole, name.substr(0, name.size() - 1));
}

TEST_F(RdsGroups, BytesThatAreNoUtf8AreNoLongName) {
    for (std::uint16_t i = 0; i < 8; ++i) Send(kPi, 0xF000 | i, 0xC3C3, 0x4141);
    EXPECT_EQ(Read().longServiceName.whole, "");
    EXPECT_EQ(Read().longServiceName.letters, "");
}

TEST_F(RdsGroups, FastTuningHasTheSwitches) {
    Send(kPi, 0xF818, kPi, 0xF818);
    EXPECT_EQ(Read().trafficAnnouncement, true);
    EXPECT_EQ(Read().music, true);
}

TEST_F(RdsGroups, RadioTextPlusNamesPartsOfTheText) {
    // Group 11A carries the application.
    Send(kPi, 0x3000 | 11 << 1, 0, kRadioTextPlusId);
    SendText("Now: Kora - Morning song\r   ", false);
    // Artist (4) at 5, 4 letters; title (1) at 12, 12 letters; the item runs.
    const std::uint64_t message = std::uint64_t{1} << 35 | std::uint64_t{4} << 29 | std::uint64_t{5} << 23 |
                                  std::uint64_t{3} << 17 | std::uint64_t{1} << 11 | std::uint64_t{12} << 5 |
                                  11;
    Send(kPi, static_cast<std::uint16_t>(0xB000 | message >> 32), static_cast<std::uint16_t>(message >> 16),
         static_cast<std::uint16_t>(message));
    ASSERT_EQ(Read().tags.size(), 2u);
    EXPECT_EQ(Read().tags[0].type, 4);
    EXPECT_EQ(Read().tags[0].text, "Kora");
    EXPECT_EQ(Read().tags[1].type, 1);
    EXPECT_EQ(Read().tags[1].text, "Morning song");
    EXPECT_TRUE(Read().itemRunning);
    EXPECT_EQ(Read().applications[22], kRadioTextPlusId);
}

TEST_F(RdsGroups, ATagBeyondTheTextIsNone) {
    Send(kPi, 0x3000 | 11 << 1, 0, kRadioTextPlusId);
    SendText("Short\r  ", false);
    const std::uint64_t message = std::uint64_t{4} << 29 | std::uint64_t{2} << 23 | std::uint64_t{4} << 17;
    Send(kPi, static_cast<std::uint16_t>(0xB000 | message >> 32), static_cast<std::uint16_t>(message >> 16),
         0);
    EXPECT_THAT(Read().tags, IsEmpty());
}

TEST_F(RdsGroups, ATagOfTheOldTextNamesNoPartOfTheNewOne) {
    Send(kPi, 0x3000 | 11 << 1, 0, kRadioTextPlusId);
    SendText("Now: Kora - Morning song\r   ", false);
    // Artist (4) at 5, 4 letters.
    const std::uint64_t artist = std::uint64_t{4} << 29 | std::uint64_t{5} << 23 | std::uint64_t{3} << 17;
    const auto send = [this](std::uint64_t message) {
        Send(kPi, static_cast<std::uint16_t>(0xB000 | message >> 32),
             static_cast<std::uint16_t>(message >> 16), static_cast<std::uint16_t>(message));
    };
    send(artist);
    ASSERT_EQ(Read().tags.size(), 1u);
    SendText("Then the news of the day\r   ", true);
    EXPECT_EQ(Read().radioText.whole, "Then the news of the day");
    EXPECT_THAT(Read().tags, IsEmpty());
    // The same places, told anew, are this text's.
    send(artist);
    ASSERT_EQ(Read().tags.size(), 1u);
    EXPECT_EQ(Read().tags[0].text, "the");
}

TEST_F(RdsGroups, WithoutItsAnnouncementTheApplicationIsNotRead) {
    SendText("Now: Kora - Morning song\r   ", false);
    Send(kPi, 0xB000, 0x8000 | 0x0286, 0);
    EXPECT_THAT(Read().tags, IsEmpty());
    // Announced for 12A it is still not read in 11A.
    Send(kPi, 0x3000 | 12 << 1, 0, kRadioTextPlusId);
    Send(kPi, 0xB000, 0x8000 | 0x0286, 0);
    EXPECT_THAT(Read().tags, IsEmpty());
    Send(kPi, 0xC000, 0x8000 | 0x0286, 0);
    EXPECT_EQ(Read().tags.size(), 1u);
}

TEST_F(RdsGroups, EveryTypeOfGroupTellsTrafficProgrammeAndProgrammeType) {
    for (std::uint16_t kind = 0; kind < kGroupKinds; ++kind) {
        reader_.Restart();
        Send(kPi, static_cast<std::uint16_t>(kind << 11 | 0x0400 | 21 << 5), 0x5555, 0xAAAA);
        EXPECT_EQ(Read().programmeType, 21) << kind;
        EXPECT_EQ(Read().trafficProgramme, true) << kind;
        EXPECT_EQ(Read().kinds[kind], 1u) << kind;
    }
}

TEST_F(RdsGroups, TypesThatCarryNoTextShowNone) {
    // All but 0, 2, 10A and 15A.
    for (std::uint16_t kind = 2; kind < kGroupKinds; ++kind) {
        if (kind == 4 || kind == 5 || kind == 20 || kind == 30) continue;
        reader_.Restart();
        for (int i = 0; i < 64; ++i) {
            Send(kPi, static_cast<std::uint16_t>(kind << 11 | (i & 0x1F)), 0x4142, 0x4344);
        }
        for (const Text* text :
             {&Read().serviceName, &Read().radioText, &Read().programTypeName, &Read().longServiceName}) {
            EXPECT_EQ(text->whole, "") << kind;
            EXPECT_EQ(text->letters.find_first_not_of(' '), std::string::npos) << kind;
        }
    }
}

TEST_F(RdsGroups, DecoderIdentificationComesBitByBitTheHighestFirst) {
    for (std::uint16_t one = 0; one < 4; ++one) {
        reader_.Restart();
        for (std::uint16_t i = 0; i < 4; ++i) {
            Send(kPi, static_cast<std::uint16_t>((i == one ? 4 : 0) | i), 0xE0CD, 0x2020);
        }
        EXPECT_EQ(Read().dynamicType, one == 0);
        EXPECT_EQ(Read().compressed, one == 1);
        EXPECT_EQ(Read().artificialHead, one == 2);
        EXPECT_EQ(Read().stereo, one == 3);
    }
}

TEST_F(RdsGroups, OtherLabelsAreNeitherCountryNorLanguage) {
    for (const std::uint16_t variant : {1, 2, 4, 5, 6, 7}) {
        Send(kPi, 0x1000, static_cast<std::uint16_t>(variant << 12 | 0xE0), 0);
    }
    // Version B has no labels: its third block repeats the station's code.
    Send(kPi, 0x1800, 0x00E0, 0);
    EXPECT_FALSE(Read().extendedCountry);
    EXPECT_FALSE(Read().language);
}

TEST_F(RdsGroups, AnotherFlagClearsTheTypeName) {
    Send(kPi, 0xA000, Letters("Foot", 0), Letters("Foot", 2));
    Send(kPi, 0xA001, Letters("ball", 0), Letters("ball", 2));
    ASSERT_EQ(Read().programTypeName.whole, "Football");
    Send(kPi, 0xA011, Letters("ball", 0), Letters("ball", 2));
    EXPECT_EQ(Read().programTypeName.whole, "");
    Send(kPi, 0xA010, Letters("Hand", 0), Letters("Hand", 2));
    Send(kPi, 0xA011, Letters("ball", 0), Letters("ball", 2));
    EXPECT_EQ(Read().programTypeName.whole, "Handball");
}

TEST_F(RdsGroups, AnotherFlagClearsATextOfGroup2BToo) {
    for (std::uint16_t i = 0; i < 3; ++i) Send(kPi, 0x2800 | i, kPi, Letters("Hello\r", 2u * i));
    ASSERT_EQ(Read().radioText.whole, "Hello");
    Send(kPi, 0x2810, kPi, Letters("Go", 0));
    EXPECT_EQ(Read().radioText.whole, "");
    EXPECT_EQ(Read().radioTextFlag, true);
}

TEST_F(RdsGroups, TheCodeInTheThirdBlockOfVersionBIsTheStations) {
    Block third;
    third.status = BlockStatus::kCertain;
    third.information = kPi;
    third.offset = Offset::kC;
    reader_.TakeBlock(2, third, 0.1);
    EXPECT_FALSE(Read().pi);
    third.offset = Offset::kCPrime;
    reader_.TakeBlock(2, third, 0.2);
    EXPECT_EQ(Read().pi, kPi);
}

TEST_F(RdsGroups, OtherNetworksMapFrequenciesInFourVariants) {
    constexpr std::uint16_t kOther = 0xD3C4;
    for (std::uint16_t i = 0; i < 4; ++i) {
        Send(kPi, static_cast<std::uint16_t>(0xE005 + i),
             static_cast<std::uint16_t>((10 + i) << 8 | (20 + i)), kOther);
    }
    // 9 is on medium wave, 10 and 11 are not allocated, 15 is the broadcasters' own.
    for (const std::uint16_t variant : {9, 10, 11, 15}) Send(kPi, 0xE000 | variant, 50 << 8 | 60, kOther);
    ASSERT_EQ(Read().others.size(), 1u);
    EXPECT_THAT(Read().others[0].mapped,
                ElementsAre(MappedFrequency{8850, 8950}, MappedFrequency{8860, 8960},
                            MappedFrequency{8870, 8970}, MappedFrequency{8880, 8980}));
    EXPECT_THAT(Read().others[0].alternatives.same_10kHz, IsEmpty());
    EXPECT_EQ(Read().others[0].trafficProgramme, false);
}

TEST_F(RdsGroups, HalvesOfTwoNamesOfAnotherNetworkAreNotOneName) {
    constexpr std::uint16_t kOther = 0xD3C4;
    const auto pair = [this](std::uint16_t i, const std::string& name) {
        Send(kPi, 0xE000 | i, Letters(name, 2u * i), kOther);
    };
    // The other station changes its name while a group is lost: by its second block, or by its third.
    for (const bool whole : {true, false}) {
        reader_.Restart();
        pair(0, "KORA ONE");
        pair(1, "KORA ONE");
        Group lost;
        for (std::size_t i = 0; i < 4; ++i) lost.blocks[i].status = BlockStatus::kWrong;
        if (!whole) {
            lost.blocks[1] = {BlockStatus::kCertain, Offset::kB, 0xE002, 0.0f};
            lost.blocks[3] = {BlockStatus::kCertain, Offset::kD, kOther, 0.0f};
        }
        reader_.TakeGroup(lost, now_s_);
        pair(2, "TUNED TO");
        pair(3, "TUNED TO");
        ASSERT_EQ(Read().others.size(), 1u);
        EXPECT_EQ(Read().others[0].serviceName, "");
        for (std::uint16_t i = 0; i < 4; ++i) pair(i, "TUNED TO");
        EXPECT_EQ(Read().others[0].serviceName, "TUNED TO");
    }
}

TEST_F(RdsGroups, AnotherNetworkInDoubtCountsWhenItComesASecondTime) {
    Send(kPi, 0xE818, kPi, 0xD3C4, BlockStatus::kReceived);
    EXPECT_THAT(Read().others, IsEmpty());
    Send(kPi, 0xE818, kPi, 0xD3C4, BlockStatus::kReceived);
    ASSERT_EQ(Read().others.size(), 1u);
    EXPECT_EQ(Read().others[0].trafficAnnouncement, true);
}

TEST_F(RdsGroups, ANewStationsCodeIsBelievedWhenItRepeatsAndForgetsTheOld) {
    SendName("KORA ONE");
    Send(0x1234, 0, 0xE0CD, 0x4142);
    EXPECT_EQ(Read().pi, kPi);
    EXPECT_EQ(Read().serviceName.whole, "KORA ONE");
    Send(0x1234, 0, 0xE0CD, 0x4142);
    EXPECT_EQ(Read().pi, 0x1234);
    EXPECT_EQ(Read().serviceName.whole, "");
}

TEST_F(RdsGroups, AGroupUnderAnotherStationsCodeSaysNothing) {
    SendName("KORA ONE");
    Send(0x1234, 0x0400, 0xE0CD, 0x4142);
    EXPECT_EQ(Read().trafficProgramme, false);
    EXPECT_EQ(Read().serviceName.letters, "KORA ONE");
}

TEST_F(RdsGroups, ASingleGroupInDoubtSaysNothing) {
    Send(kPi, 0x0418, 0xE100 | 100, 0x4142, BlockStatus::kReceived);
    EXPECT_FALSE(Read().pi);
    EXPECT_FALSE(Read().programmeType);
    EXPECT_FALSE(Read().trafficAnnouncement);
    EXPECT_EQ(Read().serviceName.letters, "        ");
    EXPECT_THAT(Read().alternatives.same_10kHz, IsEmpty());
}

TEST(RdsCharacters, TheTableIsTheStandards) {
    EXPECT_EQ(LettersOf("Kora"), "Kora");
    EXPECT_EQ(LettersOf("\x24\x5E\x60\x7E"), "¤―‖¯");
    EXPECT_EQ(LettersOf("\x91\x97\x99\x8D\xD1"), "äöüßÄ");
    EXPECT_EQ(LettersOf("\xA9\xAA\xAB"), "€£$");
    EXPECT_EQ(LettersOf("\xE2\xF2\xC2\xDC\xF9"), "ÆæÉšŋ");
    EXPECT_EQ(LettersOf(std::string("\x00\x0A\x7F\xFF", 4)), "    ");
}

}  // namespace
