// What the automatic scan shows while it walks the band.
#include "tuner/auto_scan.h"

#include "shell/settings_key.h"
#include "skin/skin_paint.h"
#include "tests/support/own_device.h"
#include "tests/unit/tuner/tuner_test.h"

static std::vector<int> g_levels;
void RealDrawScanProgress(CSkin& skin, int level) __asm__("__real__Z16DrawScanProgressR5CSkini");
void NotedDrawScanProgress(CSkin& skin, int level) __asm__("__wrap__Z16DrawScanProgressR5CSkini");
void NotedDrawScanProgress(CSkin& skin, int level) {
    g_levels.push_back(level);
    RealDrawScanProgress(skin, level);
}

namespace {

using test::WaitFor;
using testing::ElementsAreArray;

bool g_finished = false;
WNDPROC g_windowProc = nullptr;

LRESULT CALLBACK NoteEnd(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_AUTOSCAN_FINISHED) g_finished = true;
    return CallWindowProcW(g_windowProc, window, message, wParam, lParam);
}

// Presses OK in the scan's boxes.
void AnswerBoxes() {
    for (const WCHAR* caption : {L"Stored channels", L"FM"}) {
        const HWND box = FindWindowW(L"#32770", caption);
        if (box != nullptr && IsWindowVisible(box)) PostMessageW(box, WM_COMMAND, IDOK, 0);
    }
}

class AutoScanScreen : public TunerTest {
  protected:
    const test::OwnDevice ownDevice{L"Software\\Kora Scan Test"};

    AutoScanScreen() {
        WriteSelectedGroup(L"Mine");
        g_finished = false;
        g_levels.clear();
        g_windowProc = reinterpret_cast<WNDPROC>(
            SetWindowLongW(window, GWL_WNDPROC, reinterpret_cast<LONG_PTR>(&NoteEnd)));
        // Three short walks, each ended by a wrap.
        for (int walk = 0; walk < 3; ++walk)
            device.stations.insert(device.stations.end(), {8760, 9850, 10790, 8760});
    }
    void Scan() {
        StartAutoScan(*state, window);
        ASSERT_TRUE(WaitFor([] {
            AnswerBoxes();
            return g_finished;
        }));
        EnableWindow(window, TRUE);
    }
};

TEST_F(AutoScanScreen, TheProgressIsTheTenthOfTheBandThatWasWalked) {
    Scan();
    const std::vector<int> walk = {0, 0, 5, 9, 10};
    std::vector<int> expected;
    for (int i = 0; i < 3; ++i) expected.insert(expected.end(), walk.begin(), walk.end());
    EXPECT_THAT(g_levels, ElementsAreArray(expected));
}

TEST_F(AutoScanScreen, TheStationsLabelsAreClearedAndEachStationFoundIsShown) {
    ForgetShown();
    Scan();
    const std::vector<ShownText> walk = {
        {218, L"0%"},           {TEXT_STEREO, L""},     {TEXT_PROGRAM_TYPE, L""}, {TEXT_PROGRAM_TEXT, L""},
        {TEXT_RADIO_TEXT, L""}, {TEXT_RDS, L""},        {TEXT_SERVICE_NAME, L""}, {222, L"Searching..."},
        {211, L"87.6 MHz"},     {218, L"0%"},           {222, L"Searching..."},   {211, L"98.5 MHz"},
        {218, L"50%"},          {222, L"Searching..."}, {211, L"107.9 MHz"},      {218, L"90%"},
        {218, L"100%"},
    };
    std::vector<ShownText> expected = {{222, L""}};  // cleared by the command
    for (int i = 0; i < 3; ++i) expected.insert(expected.end(), walk.begin(), walk.end());
    EXPECT_THAT(Shown(), ElementsAreArray(expected));
}

TEST_F(AutoScanScreen, ATunerThatRefusesTheBottomOfTheBandIsTracedAndTheWalkGoesOn) {
    device.results["SetChannel"] = E_FAIL;
    const std::string trace = test::TraceOf([this] { Scan(); });
    EXPECT_THAT(trace,
                testing::HasSubstr("FM: *** CFMDevice_SetChannel Error.\nFM: Scanning Channel: 8750\n"));
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
