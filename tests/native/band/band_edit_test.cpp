// Changes to a band file: what is set is what its reader then sees, and nothing else of the file moves.
#include "handset/fmdevice/band/band_edit.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "handset/fmdevice/band/band_file.h"

namespace {

int LevelOf(const std::string& text, std::uint32_t channel) {
    std::vector<std::string> faults;
    const fm::Band band = fm::ReadBand("band.ini", text, &faults);
    const auto station = band.stations.find(channel);
    return station == band.stations.end() ? -1 : station->second.level;
}

TEST(BandEdit, ReplacesTheKeysLineAndNothingElse) {
    EXPECT_EQ(fm::SetBandKey("; mine\n[9850]\nps=ONE\nlevel=45\n[9860]\nlevel=1\n", 9850, "level", "12"),
              "; mine\n[9850]\nps=ONE\nlevel=12\n[9860]\nlevel=1\n");
}

TEST(BandEdit, AddsTheLineOrTheWholeSectionWhenItIsMissing) {
    EXPECT_EQ(fm::SetBandKey("[9850]\nps=ONE\n", 9850, "level", "12"), "[9850]\nlevel=12\nps=ONE\n");
    EXPECT_EQ(fm::SetBandKey("[9850]\nps=ONE\n", 9860, "level", "12"),
              "[9850]\nps=ONE\n\n[9860]\nlevel=12\n");
}

TEST(BandEdit, OfAKeyThatStandsTwiceOneLineIsLeft) {
    EXPECT_EQ(fm::SetBandKey("[9850]\nrt=a\nRT = b\n", 9850, "rt", "c"), "[9850]\nrt=c\n");
}

// As the reader takes them: blanks, letter case, a comment behind the section, zeros, the file's mark.
TEST(BandEdit, FindsASectionHoweverTheReaderWouldTakeIt) {
    for (const char* heading : {"[9850]", "  [ 9850 ] ; the first\r", "[09850]", "\xEF\xBB\xBF[9850]"}) {
        const std::string text = std::string(heading) + "\nlevel=45\n";
        ASSERT_EQ(LevelOf(text, 9850), 45) << heading;
        EXPECT_EQ(fm::SetBandKey(text, 9850, "level", "12"), std::string(heading) + "\nlevel=12\n");
    }
}

TEST(BandEdit, ALineInAnotherOrABrokenSectionIsNotTheStations) {
    const std::string text = "[9850]\nps=ONE\n[9860\nlevel=45\n";
    const std::string changed = fm::SetBandKey(text, 9850, "level", "12");
    EXPECT_EQ(changed, "[9850]\nlevel=12\nps=ONE\n[9860\nlevel=45\n");
}

TEST(BandEdit, OfAnyFileTheReaderSeesWhatWasSetLast) {
    static const std::string kPieces[] = {"[9850]",    "[9860]", "[band]",       "[",        "level=45",
                                          "LEVEL = 7", "ps=ONE", "\n",           "\r\n",     "\n",
                                          "; level=1", " ;",     "\xEF\xBB\xBF", "[ 9850 ]", "level=99",
                                          "]",         "=",      "wrap=0"};
    std::mt19937 random(20260301);
    for (int file = 0; file < 100'000; ++file) {
        std::string text;
        for (unsigned piece = random() % 12; piece > 0; --piece)
            text += kPieces[random() % std::size(kPieces)];
        const int other = LevelOf(text, 9860);
        const std::string changed = fm::SetBandKey(text, 9850, "level", "12");
        ASSERT_EQ(LevelOf(changed, 9850), 12) << text;
        ASSERT_EQ(LevelOf(changed, 9860), other) << text;
    }
}

}  // namespace
