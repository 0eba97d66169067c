// band.ini: what is understood, and what is said about what is not.
#include "handset/fmdevice/band/band_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Read {
    fm::Band band;
    std::vector<std::string> faults;
    const fm::Station& At(std::uint32_t channel) const { return band.stations.at(channel); }
};

Read ReadText(const std::string& text) {
    Read read;
    read.band = fm::ReadBand("band.ini", text, &read.faults);
    return read;
}

TEST(BandFile, EveryKeyOfAStationIsRead) {
    const Read read = ReadText(
        "[band]\nwrap=0\n[9850]\nlevel=45\nstereo=1\nps=KORA ONE\npty=News\npt=Morning\nrt=Good morning\n"
        "af=101.1 103.4\nct=1\ntp=1\nta=1\nprogramme=tone:440\n");
    EXPECT_THAT(read.faults, IsEmpty());
    EXPECT_FALSE(read.band.wrap);
    const fm::Station& station = read.At(9850);
    EXPECT_EQ(station.level, 45);
    EXPECT_TRUE(station.stereo);
    EXPECT_THAT(station.rds.serviceNames, ElementsAre("KORA ONE"));
    EXPECT_EQ(station.rds.programmeType, 1);
    EXPECT_EQ(station.rds.programText, "Morning");
    EXPECT_THAT(station.rds.radioTexts, ElementsAre("Good morning"));
    EXPECT_THAT(station.rds.alternatives_10kHz, ElementsAre(10110u, 10340u));
    EXPECT_TRUE(station.rds.clockTime);
    EXPECT_TRUE(station.rds.trafficProgramme);
    EXPECT_TRUE(station.rds.trafficAnnouncement);
    EXPECT_EQ(station.programme.kind, fm::ProgrammeKind::kTone);
}

TEST(BandFile, WhatIsNotSaidHasItsDefault) {
    const Read read = ReadText("[9850]\n");
    EXPECT_TRUE(read.band.wrap);
    EXPECT_EQ(read.At(9850).level, 40);
    EXPECT_FALSE(read.At(9850).stereo);
    EXPECT_FALSE(read.At(9850).rds.Sent());
    EXPECT_EQ(read.At(9850).programme.kind, fm::ProgrammeKind::kSilence);
}

TEST(BandFile, CommentsBlanksByteOrderMarkAndLineEndsOfWindowsDoNotMatter) {
    const Read read =
        ReadText("\xEF\xBB\xBF; a band\r\n[BAND]\r\n  Wrap = 0   ; no wrap\r\n\r\n[ 9850 ]\r\nPS= A;B \r\n");
    EXPECT_THAT(read.faults, IsEmpty());
    EXPECT_FALSE(read.band.wrap);
    EXPECT_THAT(read.At(9850).rds.serviceNames, ElementsAre("A;B"));
}

TEST(BandFile, AFaultNamesFileLineKeyAndValue) {
    const Read read = ReadText("[9850]\nps=ONE\nlevel=abc\nlevel=101\n");
    EXPECT_THAT(read.faults, ElementsAre("band.ini:3: \"level\" wants a number from 0 to 100, not \"abc\"",
                                         "band.ini:4: \"level\" wants a number from 0 to 100, not \"101\""));
    EXPECT_EQ(read.At(9850).level, 40);
    EXPECT_THAT(read.At(9850).rds.serviceNames, ElementsAre("ONE"));
}

TEST(BandFile, EachKindOfFaultHasItsLine) {
    const Read read = ReadText(
        "level=1\n[9850]\nlevle=1\nnonsense\nstereo=2\npty=Gardening\naf=98.55\naf=109.0\nprogramme=song\n"
        "[band]\nwarp=1\n[870]\nlevel=9\n[9850\nrt=\xFF\n[9850]\nps=a\tb\nps=\x01\n");
    EXPECT_THAT(
        read.faults,
        ElementsAre(
            "band.ini:1: \"level\" stands before the first section",
            "band.ini:3: \"levle\" is no key of a station",
            "band.ini:4: \"nonsense\" is neither a section nor a key with a value",
            "band.ini:5: \"stereo\" wants 0 or 1, not \"2\"",
            "band.ini:6: \"pty\" wants a programme type, such as News, or a number from 0 to 31, not "
            "\"Gardening\"",
            "band.ini:7: \"af\" wants at most 25 frequencies from 87.5 to 108.0, with one decimal, between "
            "blanks, not \"98.55\"",
            "band.ini:8: \"af\" wants at most 25 frequencies from 87.5 to 108.0, with one decimal, between "
            "blanks, not \"109.0\"",
            "band.ini:9: \"programme\" wants tone:, voice:, noise:, melody: or the path of a WAV file on the "
            "device, not \"song\"",
            "band.ini:11: \"warp\" is no key of the band",
            "band.ini:12: \"[870]\" is neither [band] nor a channel from 8750 to 10800",
            "band.ini:14: \"[9850\" lacks the closing bracket", "band.ini:15: the line is not valid UTF-8",
            "band.ini:16: \"[9850]\" was there before; its keys are added to the first",
            "band.ini:18: the line has a control character in it"));
    EXPECT_EQ(read.band.stations.size(), 1u);
}

TEST(BandFile, ATextThatIsTooLongIsCutByCharactersAndTold) {
    const Read read = ReadText("[9850]\nps=Grüße 123\nrt=" + std::string(65, 'x') + "\n");
    EXPECT_THAT(read.At(9850).rds.serviceNames, ElementsAre("Grüße 12"));
    EXPECT_THAT(read.At(9850).rds.radioTexts, ElementsAre(std::string(64, 'x')));
    EXPECT_THAT(read.faults, ElementsAre("band.ini:2: \"ps\" wants at most 8 characters, not \"Grüße 123\"",
                                         "band.ini:3: \"rt\" wants at most 64 characters, not \"" +
                                             std::string(40, 'x') + "…\""));
}

TEST(BandFile, AProgrammeTypeMayBeANumberOrTheBeginningOfOneName) {
    EXPECT_EQ(ReadText("[9850]\npty=30\n").At(9850).rds.programmeType, 30);
    EXPECT_EQ(ReadText("[9850]\npty=weather\n").At(9850).rds.programmeType, 16);
    EXPECT_EQ(ReadText("[9850]\npty=S\n").faults.size(), 1u);
    EXPECT_EQ(ReadText("[9850]\npty=32\n").faults.size(), 1u);
}

TEST(BandFile, NamesAndTextsMayStandSeveralTimesWithATimeForEach) {
    const Read read = ReadText("[9850]\nps=ONE\nps=TWO\npstime=4\nrt=a\nrt=b\nrt=c\nrt=\nrttime=3600\n");
    EXPECT_THAT(read.faults, IsEmpty());
    EXPECT_THAT(read.At(9850).rds.serviceNames, ElementsAre("ONE", "TWO"));
    EXPECT_THAT(read.At(9850).rds.radioTexts, ElementsAre("a", "b", "c"));
    EXPECT_EQ(read.At(9850).rds.nameTime_s, 4);
    EXPECT_EQ(read.At(9850).rds.textTime_s, 3600);
}

TEST(BandFile, TooManyNamesOrTextsAndNoTimeAreFaults) {
    std::string text = "[9850]\npstime=0\nrttime=3601\n";
    for (int i = 0; i < 9; ++i) text += "ps=x\n";
    for (int i = 0; i < 17; ++i) text += "rt=y\n";
    const Read read = ReadText(text);
    EXPECT_THAT(read.faults,
                ElementsAre("band.ini:2: \"pstime\" wants a number of seconds from 1 to 3600, not \"0\"",
                            "band.ini:3: \"rttime\" wants a number of seconds from 1 to 3600, not \"3601\"",
                            "band.ini:12: \"ps\" wants to stand at most 8 times in a station, not \"x\"",
                            "band.ini:29: \"rt\" wants to stand at most 16 times in a station, not \"y\""));
    EXPECT_EQ(read.At(9850).rds.serviceNames.size(), 8u);
    EXPECT_EQ(read.At(9850).rds.radioTexts.size(), 16u);
    EXPECT_EQ(read.At(9850).rds.nameTime_s, fm::kNameTime_s);
}

TEST(BandFile, ManyFaultsEndWithOneLineThatSaysSo) {
    std::string text = "[9850]\n";
    for (int i = 0; i < 100; ++i) text += "x=1\n";
    const Read read = ReadText(text);
    ASSERT_EQ(read.faults.size(), fm::kMaxBandFaults + 1);
    EXPECT_EQ(read.faults.back(), "band.ini:22: this and further faults are not listed");
}

TEST(BandFile, TheEndsOfTheBandAreInItAndTheirNeighboursAreNot) {
    EXPECT_THAT(ReadText("[8750]\n[10800]\n").faults, IsEmpty());
    EXPECT_EQ(ReadText("[8749]\n[10801]\n[-9850]\n[9850x]\n").faults.size(), 4u);
    EXPECT_THAT(ReadText("[9850]\naf=87.5 108.0\n").faults, IsEmpty());
    EXPECT_EQ(ReadText("[9850]\naf=87.4\naf=108.1\n").faults.size(), 2u);
}

}  // namespace
