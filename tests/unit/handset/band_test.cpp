// The band from the command line.
#include <atomic>
#include <thread>

#include "handset/controls/encoding.h"
#include "handset/state/handset_state.h"
#include "tests/unit/handset/handset_fixture.h"

namespace panel {
namespace {

class BandCommand : public HandsetTest {
  protected:
    BandCommand() { CreateDirectoryW(Device(L"\\Windows").c_str(), nullptr); }
    void Write(const std::string& text) { WriteWholeFile(Device(L"\\Windows\\band.ini"), text); }
    std::string Text() { return ReadWholeFile(Device(L"\\Windows\\band.ini")).value_or("none"); }
};

TEST_F(BandCommand, ListsTheStationsAndMarksTheTunedOne) {
    Write("[9850]\nlevel=45\nstereo=1\nps=KORA ONE\n[8760]\nlevel=7\n");
    handset::SetStateDword(L"TunedChannel", 9850);
    EXPECT_EQ(Run({L"band"}), kDone);
    EXPECT_EQ(console_.Said(), L"87.6   7    mono    -         \n98.5   45   stereo  KORA ONE  tuned\n");
}

TEST_F(BandCommand, ChangesAKeyAndLeavesTheRestAsItWasWritten) {
    Write("; mine\n[9850] ; first\n Level = 45\nrt=a\nrt=b\n[9900]\nlevel=1\n");
    EXPECT_EQ(Run({L"band", L"98.5", L"level=12", L"rt=c d"}), kDone);
    EXPECT_EQ(Text(), "; mine\n[9850] ; first\nlevel=12\nrt=c d\n[9900]\nlevel=1\n");
}

TEST_F(BandCommand, AReaderFindsTheOldFileOrTheNewOneWhole) {
    const std::string rest = "\n" + std::string(200000, ';') + "\n";
    Write("[9850]\nlevel=10" + rest);
    std::atomic<bool> over = false;
    int looks = 0;
    int parts = 0;
    std::thread reader([&] {
        do {
            const auto text = ReadWholeFile(Device(L"\\Windows\\band.ini"));
            const bool whole = text && text->size() == 15 + rest.size() && text->substr(15) == rest;
            ++looks;
            parts += whole ? 0 : 1;
            Sleep(1);  // the host lets no file be replaced while it is open
        } while (!over);
    });
    for (int level = 11; level < 60; ++level) {
        EXPECT_EQ(Run({L"band", L"98.5", L"level=" + std::to_wstring(level)}), kDone);
    }
    over = true;
    reader.join();
    EXPECT_GT(looks, 10);
    EXPECT_EQ(parts, 0);
    EXPECT_EQ(Text().substr(0, 16), "[9850]\nlevel=59\n");
    WIN32_FIND_DATAW left = {};
    const HANDLE find = FindFirstFileW(Device(L"\\Windows\\band*").c_str(), &left);
    EXPECT_STREQ(left.cFileName, L"band.ini");
    EXPECT_FALSE(FindNextFileW(find, &left));
    FindClose(find);
}

TEST_F(BandCommand, AddsAKeyOrAStationThatIsMissing) {
    Write("[9850]\nlevel=45");
    EXPECT_EQ(Run({L"band", L"9850", L"stereo=1"}), kDone);
    EXPECT_EQ(Run({L"band", L"101.1", L"level=30", L"ps=NEW"}), kDone);
    EXPECT_EQ(Text(), "[9850]\nstereo=1\nlevel=45\n\n[10110]\nps=NEW\nlevel=30\n");
}

TEST_F(BandCommand, WhatTheFileWouldNotUnderstandIsNotWritten) {
    Write("[9850]\nlevel=45\nnonsense\n");
    EXPECT_EQ(Run({L"band", L"98.5", L"level=150"}), kBadUsage);
    EXPECT_EQ(Run({L"band", L"98.5", L"level=15"}), kDone);
    EXPECT_EQ(Text(), "[9850]\nlevel=15\nnonsense\n");
}

TEST_F(BandCommand, APictureOfTheBandIsWrittenAsAPng) {
    Write("[9850]\nlevel=100\n");
    const std::wstring file = home_ + L"\\band.png";
    EXPECT_EQ(Run({L"band", L"--picture", file}), kDone) << testing::PrintToString(console_.Complained());
    const std::string one = ReadWholeFile(file).value_or("");
    EXPECT_EQ(one.substr(0, 8), "\x89PNG\r\n\x1A\n");
    // Another band is another picture, the same one the same.
    EXPECT_EQ(Run({L"band", L"--picture", file}), kDone);
    EXPECT_EQ(ReadWholeFile(file).value_or(""), one);
    Write("[9850]\nlevel=10\n");
    EXPECT_EQ(Run({L"band", L"--picture", file}), kDone);
    EXPECT_NE(ReadWholeFile(file).value_or(""), one);
}

TEST_F(BandCommand, APictureWithoutAPlaceIsRefused) {
    EXPECT_EQ(Run({L"band", L"--picture"}), kBadUsage);
    EXPECT_EQ(Run({L"band", L"--picture", home_ + L"\\nowhere\\band.png"}), kFailed);
    EXPECT_NE(console_.Complained().find(L"band.png could not be written"), std::wstring::npos);
}

TEST_F(BandCommand, WithoutAFileThereIsNothingToList) {
    EXPECT_EQ(Run({L"band"}), kFailed);
    EXPECT_EQ(Run({L"band", L"98.5", L"level=15"}), kDone);
    EXPECT_EQ(Text(), "\n[9850]\nlevel=15\n");
}

}  // namespace
}  // namespace panel
