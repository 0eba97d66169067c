// What a station's texts become on the air, against groups that were made by hand from the standard.
#include "handset/transmitter/station_texts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "handset/transmitter/letters.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;
using transmitter::CGroupScheduler;
using transmitter::ClockTime;
using transmitter::StationTexts;
using transmitter::TextEnd;
using Words = std::array<std::uint16_t, 4>;

std::vector<Words> Groups(CGroupScheduler& scheduler, int count) {
    std::vector<Words> groups;
    for (int i = 0; i < count; ++i) groups.push_back(scheduler.Next().words);
    return groups;
}

std::vector<Words> Groups(const StationTexts& texts, int count) {
    CGroupScheduler scheduler(texts);
    return Groups(scheduler, count);
}

int TypeOf(const Words& group) {
    return group[1] >> 12;
}

std::vector<Words> OfType(const std::vector<Words>& groups, int type) {
    std::vector<Words> found;
    for (const Words& group : groups) {
        if (TypeOf(group) == type) found.push_back(group);
    }
    return found;
}

StationTexts Station() {
    StationTexts texts;
    texts.pi = 0xD301;
    texts.ps = {"KORA ONE"};
    return texts;
}

TEST(TransmitterTexts, ANameGoesOutInFourGroupsWithItsFlagsAndAlternatives) {
    StationTexts texts = Station();
    texts.pty = 1;
    texts.tp = true;
    texts.alternatives_MHz = {101.1, 103.4};
    // 0A: TP, PTY 1, music; DI bit of stereo in the last segment; two frequencies, 136 and 159, and the
    // filler.
    EXPECT_THAT(Groups(texts, 4),
                ElementsAre(Words{0xD301, 0x0428, 0xE288, 0x4B4F}, Words{0xD301, 0x0429, 0x9FCD, 0x5241},
                            Words{0xD301, 0x042A, 0xE288, 0x204F}, Words{0xD301, 0x042F, 0x9FCD, 0x4E45}));
}

TEST(TransmitterTexts, WithoutAlternativesTheListIsSaidToBeEmpty) {
    EXPECT_EQ(Groups(Station(), 1).front()[2], 0xE0CD);
}

TEST(TransmitterTexts, MethodBNamesTheTunedFrequencyAndThenPairs) {
    StationTexts texts = Station();
    texts.methodB = true;
    texts.tuned_MHz = 98.5;                  // 110
    texts.alternatives_MHz = {101.1, 90.0};  // 136 and 25
    const auto groups = Groups(texts, 3);
    EXPECT_EQ(groups[0][2], 0xE56E) << "five codes, the first of them the tuned frequency";
    EXPECT_EQ(groups[1][2], 0x6E88) << "the lower one first";
    EXPECT_EQ(groups[2][2], 0x196E);
}

TEST(TransmitterTexts, VersionBRepeatsThePi) {
    StationTexts texts = Station();
    texts.versionB = true;
    texts.texts = {"Hi"};
    EXPECT_THAT(Groups(texts, 2),
                ElementsAre(Words{0xD301, 0x0808, 0xD301, 0x4B4F}, Words{0xD301, 0x2800, 0xD301, 0x4869}));
}

TEST(TransmitterTexts, ARadioTextEndsWithAReturnOrBlanksOrNothing) {
    StationTexts texts = Station();
    texts.texts = {"Good morning"};
    const auto text = [&](TextEnd end, int groups) {
        texts.textEnd = end;
        std::string letters;
        const auto found = OfType(Groups(texts, 2 * groups + groups / 2 + 4), 2);
        for (int i = 0; i < groups; ++i) {
            const Words& group = found[static_cast<std::size_t>(i)];
            EXPECT_EQ(group[1], 0x2000 | i);
            for (const std::uint16_t word : {group[2], group[3]}) {
                letters += static_cast<char>(word >> 8);
                letters += static_cast<char>(word & 0xFF);
            }
        }
        return letters;
    };
    EXPECT_EQ(text(TextEnd::kReturn, 4), "Good morning\r   ");
    EXPECT_EQ(text(TextEnd::kNothing, 3), "Good morning");
    EXPECT_EQ(text(TextEnd::kBlanks, 16), "Good morning" + std::string(52, ' '));
}

TEST(TransmitterTexts, ANewTextTurnsItsFlagOver) {
    StationTexts texts = Station();
    texts.texts = {"One", "Two"};
    texts.text_s = 1;
    std::vector<std::pair<int, int>> seen;  // flag, first letter
    for (const Words& group : OfType(Groups(texts, 40), 2)) {
        const std::pair<int, int> now(group[1] >> 4 & 1, group[2] >> 8);
        if (seen.empty() || seen.back() != now) seen.push_back(now);
    }
    ASSERT_GE(seen.size(), 3u);
    EXPECT_EQ(seen[0], (std::pair<int, int>(0, 'O')));
    EXPECT_EQ(seen[1], (std::pair<int, int>(1, 'T')));
    EXPECT_EQ(seen[2], (std::pair<int, int>(0, 'O')));
}

TEST(TransmitterTexts, TheClockTellsEachMinuteAsItBeginsAndGoesOverMidnight) {
    StationTexts texts = Station();
    ClockTime clock;
    clock.mjd = 61365;
    clock.hour = 23;
    clock.minute = 58;
    clock.second = 59;
    clock.halfHours = -3;
    texts.clock = clock;
    const auto groups = Groups(texts, 12 + 686);
    const auto clocks = OfType(groups, 4);
    // 61365 is 1 1101 1111 0110101; its upper two bits are 01, the rest 28597.
    ASSERT_EQ(clocks.size(), 2u);
    EXPECT_EQ(clocks[0], (Words{0xD301, 0x4001, 28597 << 1 | 1, 7 << 12 | 59 << 6 | 0x23}));
    EXPECT_EQ(clocks[1], (Words{0xD301, 0x4001, 28598 << 1 | 0, 0 << 12 | 0 << 6 | 0x23}));
    EXPECT_EQ(TypeOf(groups[12]), 4) << "a second is 11.4 groups";
}

TEST(TransmitterTexts, TagsOfTheTextAreAnnouncedAndSent) {
    StationTexts texts = Station();
    texts.texts = {"Now: Air by Bach"};
    texts.tags = {{1, 5, 2}, {4, 12, 3}};
    const auto groups = Groups(texts, 32);
    EXPECT_THAT(OfType(groups, 3), Contains(Words{0xD301, 0x3016, 0x0000, 0x4BD7}));
    // Item runs; 1 at 5 with two letters more, 4 at 12 with three.
    EXPECT_THAT(OfType(groups, 11),
                Contains(Words{0xD301, 0xB008, 1 << 13 | 5 << 7 | 2 << 1, 4 << 11 | 12 << 5 | 3}));
}

TEST(TransmitterTexts, TheProgrammeTypesNameTheLongNameTheCountryAndOtherNetworksHaveTheirGroups) {
    StationTexts texts = Station();
    texts.ptyName = "Gardens";
    texts.longPs = "Kora für alle";
    texts.extendedCountry = 0xE0;
    texts.others = {{0xD302, "KORA TWO", 10, true, false, {99.9}}};
    const auto groups = Groups(texts, 250);
    EXPECT_THAT(OfType(groups, 10), Contains(Words{0xD301, 0xA000, 0x4761, 0x7264}));
    EXPECT_THAT(OfType(groups, 10), Contains(Words{0xD301, 0xA001, 0x656E, 0x7320}));
    EXPECT_THAT(OfType(groups, 1), Contains(Words{0xD301, 0x1000, 0x00E0, 0x0000}));
    EXPECT_THAT(OfType(groups, 15), Contains(Words{0xD301, 0xF001, 0x2066, 0xC3BC})) << "UTF-8";
    const auto other = OfType(groups, 14);
    EXPECT_THAT(other, Contains(Words{0xD301, 0xE010, 0x4B4F, 0xD302}));
    EXPECT_THAT(other, Contains(Words{0xD301, 0xE01D, 10 << 11, 0xD302}));
    EXPECT_THAT(other, Contains(Words{0xD301, 0xE014, 0xE17C, 0xD302}));
    EXPECT_THAT(OfType(Groups(Station(), 250), 14), testing::IsEmpty());
}

TEST(TransmitterTexts, FrequenciesHaveTheirCodesAndOthersTheFiller) {
    EXPECT_EQ(transmitter::FrequencyCode(87.6), 1);
    EXPECT_EQ(transmitter::FrequencyCode(107.9), 204);
    EXPECT_EQ(transmitter::FrequencyCode(87.5), 205);
    EXPECT_EQ(transmitter::FrequencyCode(108.0), 205);
}

TEST(TransmitterLetters, AsciiAndTheUpperHalfHaveTheCodesOfTheTable) {
    // IEC 62106-4, table 1, by column and row.
    const std::pair<const char*, int> kCodes[] = {
        {"A", 0x41}, {"z", 0x7A}, {"á", 0x80}, {"ß", 0x8D}, {"ä", 0x91}, {"ö", 0x97},
        {"ü", 0x99}, {"ğ", 0x9D}, {"€", 0xA9}, {"$", 0xAB}, {"↓", 0xAF}, {"§", 0xBF},
        {"É", 0xC2}, {"Ž", 0xCD}, {"Ä", 0xD1}, {"Ü", 0xD9}, {"đ", 0xDE}, {"Å", 0xE1},
        {"Ø", 0xE7}, {"å", 0xF1}, {"œ", 0xF3}, {"ŧ", 0xFE}, {"¤", 0x24}, {"¯", 0x7E}};
    for (const auto& [letter, code] : kCodes) {
        const std::string codes = transmitter::ToLetters(letter);
        ASSERT_EQ(codes.size(), 1u) << letter;
        EXPECT_EQ(static_cast<unsigned char>(codes[0]), code) << letter;
    }
}

TEST(TransmitterLetters, WhatTheTableDoesNotHaveIsABlank) {
    EXPECT_EQ(transmitter::ToLetters("a\xE4\xB8\xAD"
                                     "b"),
              "a b");
    EXPECT_EQ(transmitter::ToLetters("a\xFF"
                                     "b"),
              "a b");
    EXPECT_EQ(transmitter::ToLetters("a\xC3"), "a ");
}

}  // namespace
