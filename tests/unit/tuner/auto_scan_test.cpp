// What the automatic scan shows and stores while it walks the band.
#include "tuner/auto_scan.h"

#include <algorithm>

#include "skin/skin_paint.h"
#include "tests/unit/recording/tick_count.h"
#include "tests/unit/tuner/refused_threads.h"
#include "tests/unit/tuner/scan_on_screen.h"

static std::vector<int> g_levels;
void RealDrawScanProgress(CSkin& skin, int level) __asm__("__real__Z16DrawScanProgressR5CSkini");
void NotedDrawScanProgress(CSkin& skin, int level) __asm__("__wrap__Z16DrawScanProgressR5CSkini");
void NotedDrawScanProgress(CSkin& skin, int level) {
    g_levels.push_back(level);
    RealDrawScanProgress(skin, level);
}

namespace {

using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::Not;

class AutoScanScreen : public ScanOnScreen {
  protected:
    AutoScanScreen() {
        g_levels.clear();
        ThreeShortWalks();
    }
    ~AutoScanScreen() override { test::g_tickOffset = 0; }
};

TEST_F(AutoScanScreen, TheProgressIsTheTenthOfTheBandThatWasWalked) {
    Scan();
    // The labels are cleared over the first one, which is painted again.
    const std::vector<int> walk = {0, 0, 0, 5, 9, 10};
    std::vector<int> expected;
    for (int i = 0; i < 3; ++i) expected.insert(expected.end(), walk.begin(), walk.end());
    EXPECT_THAT(g_levels, ElementsAreArray(expected));
}

TEST_F(AutoScanScreen, TheStationsLabelsAreClearedAndEachStationFoundIsShown) {
    ForgetShown();
    Scan();
    const std::vector<ShownText> walk = {
        {218, L"0%"},
        {TEXT_STEREO, L""},
        {TEXT_PROGRAM_TYPE, L""},
        {TEXT_PROGRAM_TEXT, L""},
        {TEXT_RADIO_TEXT, L""},
        {TEXT_RDS, L""},
        {TEXT_SERVICE_NAME, L""},
        {218, L"0%"},
        {222, L"Searching..."},
        {211, L"87.6 MHz"},
        {218, L"0%"},
        {222, L"Searching..."},
        {211, L"98.5 MHz"},
        {218, L"50%"},
        {222, L"Searching..."},
        {211, L"107.9 MHz"},
        {218, L"90%"},
        {218, L"100%"},
    };
    std::vector<ShownText> expected = {{222, L""}};  // cleared by the command
    for (int i = 0; i < 3; ++i) expected.insert(expected.end(), walk.begin(), walk.end());
    EXPECT_THAT(Shown(), ElementsAreArray(expected));
}

TEST_F(AutoScanScreen, TheRadioIsMuteBeforeTheFirstSeek) {
    Scan();
    const auto calls = device.Calls();
    const auto seek = std::find(calls.begin(), calls.end(), "SeekNext");
    const std::vector<std::string> before(calls.begin(), seek);
    ASSERT_NE(seek, calls.end());
    EXPECT_THAT(before, testing::Contains("SetMute 1"));
    EXPECT_THAT(before, Not(testing::Contains("SetMute 0")));
}

TEST_F(AutoScanScreen, ATunerThatRefusesTheBottomOfTheBandIsTracedAndTheWalkGoesOn) {
    device.results["SetChannel"] = E_FAIL;
    const std::string trace = test::TraceOf([this] { Scan(); });
    EXPECT_THAT(trace, HasSubstr("FM: *** CFMDevice_SetChannel Error.\nFM: Scanning Channel: 8750\n"));
    EXPECT_EQ(LastShown(211), L"107.9 MHz");
}

TEST_F(AutoScanScreen, AStationThatIsMetAgainAfterAWrapIsNotStoredASecondTime) {
    const std::string trace = test::TraceOf([this] { Scan(); });
    // The store itself would refuse it, and the scan would say so.
    EXPECT_THAT(trace, Not(HasSubstr("FM: *** CEDB_InsertRecord() Error!")));
    EXPECT_EQ(StoredName(8760), L"FM  1");
    EXPECT_EQ(StoredName(10790), L"FM  3");
}

TEST_F(AutoScanScreen, EachRunStartsFromAnEmptiedGroup) {
    device.stations = {8760, 9850, 10790, 8760, 9850, 8760, 10110, 10790, 8760};
    Scan();
    EXPECT_EQ(StoredName(10110), L"FM  1");
    EXPECT_EQ(StoredName(10790), L"FM  2");
    EXPECT_EQ(StoredName(8760), L"");
    EXPECT_EQ(StoredName(9850), L"");
}

TEST_F(AutoScanScreen, AScanThatTakesLongIsMadeOnce) {
    device.onCall = [](const std::string& call) {
        if (call == "SeekNext") test::g_tickOffset += 4000;
    };
    EXPECT_THAT(test::TraceOf([this] { Scan(); }), HasSubstr("FM: Auto Scan Elapsed = 16"));
    EXPECT_EQ(Asked("SetChannel 8750"), 1);
}

// The count of milliseconds begins anew after 49.7 days.
TEST_F(AutoScanScreen, AScanDuringWhichTheTickCountBeginsAnewTakesNoLongerForThat) {
    test::g_tickOffset = 0 - GetTickCount() - 1000;
    bool wrapped = false;
    device.onCall = [&wrapped](const std::string& call) {
        if (call != "SeekNext" || std::exchange(wrapped, true)) return;
        test::g_tickOffset += 2000;
    };
    EXPECT_THAT(test::TraceOf([this] { Scan(); }), HasSubstr("FM: Auto Scan Elapsed = 2"));
    EXPECT_EQ(Asked("SetChannel 8750"), 3);
}

TEST_F(AutoScanScreen, WithoutAThreadTheWindowIsLeftAloneAndTheStationsNameComesBack) {
    test::g_threadsRefused = true;
    StartAutoScan(*state, window);
    test::g_threadsRefused = false;
    EXPECT_TRUE(IsWindowEnabled(window));
    EXPECT_EQ(LastShown(TEXT_CHANNEL_NAME), L"Unknown");
    EXPECT_FALSE(Finished());
    Scan();
    EXPECT_EQ(LastShown(211), L"107.9 MHz");
}

TEST(ScannedNames, ALeadingZeroIsABlank) {
    WCHAR name[40] = L"";
    FormatScannedName(L"Channel", 1, name, 40);
    EXPECT_STREQ(name, L"Channel  1");
    FormatScannedName(L"Channel", 9, name, 40);
    EXPECT_STREQ(name, L"Channel  9");
    FormatScannedName(L"Channel", 10, name, 40);
    EXPECT_STREQ(name, L"Channel 10");
    FormatScannedName(L"Channel", 100, name, 40);
    EXPECT_STREQ(name, L"Channel 100");
}

}  // namespace
