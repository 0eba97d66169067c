// The automatic scan on the running radio.
#include "tests/support/screen_picture.h"
#include "tests/system/channels_on_radio.h"

namespace {

using test::Radio;
using test::RowCount;
using test::WaitFor;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

// The repeat of a short scan would hide how one looks, and waiting ten seconds for one would be long: at this
// rate a scan of the test's band takes more than ten seconds of the handset.
constexpr wchar_t kFast[] = L"40";

class AutoScan : public test::ThreeChannelsOnRadio {
  protected:
    ~AutoScan() override {
        SetEnvironmentVariableW(L"KORA_CLOCKRATE", nullptr);
        SetEnvironmentVariableW(L"KORA_FAULT", nullptr);
    }

    // Starts a scan and answers its question.
    void Begin(const Radio& radio, int answer = IDOK) {
        radio.Command(IDC_AUTOSCAN);
        const HWND box = radio.WaitForBox(L"Stored channels");
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(Radio::BoxText(box), L"The channels stored in this list will be lost. Continue?");
        EXPECT_FALSE(IsWindowEnabled(radio.Window()));
        EXPECT_FALSE(IsWindowVisible(radio.ListView()));
        Radio::Answer(box, answer);
    }
    // Answers the completion box and waits until the radio has been given back.
    void End(const Radio& radio) {
        HWND box = nullptr;
        ASSERT_TRUE(WaitFor([&] { return (box = radio.Box(L"FM")) != nullptr; }, 60000));
        EXPECT_EQ(Radio::BoxText(box), L"The scan is complete.");
        EXPECT_FALSE(IsWindowEnabled(radio.Window()));
        Radio::Answer(box, IDOK);
        ++m_scans;
        ASSERT_TRUE(
            WaitFor([&] { return Occurrences(handset.Console(), "WM_AUTOSCAN_FINISHED 2\n") == m_scans; }));
        EXPECT_TRUE(IsWindowEnabled(radio.Window()));
    }
    static int Occurrences(const std::string& text, const std::string& part) {
        int count = 0;
        for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
        return count;
    }
    int m_scans = 0;
    static std::string Band(int stations) {
        std::string band = "[band]\nwrap=1\n";
        for (int i = 0; i < stations; ++i) band += "[" + std::to_string(8760 + 100 * i) + "]\nlevel=50\n";
        return band;
    }
};

TEST_F(AutoScan, TheGroupHoldsEveryStationOfTheBandAsANumberedChannel) {
    Radio radio(handset);
    radio.WaitUntilShown();
    Begin(radio);
    End(radio);
    ASSERT_EQ(RowCount(radio.ListView()), 3);
    EXPECT_THAT(Names(radio), ElementsAre(L"FM  1", L"FM  2", L"FM  3"));
    EXPECT_EQ(test::RowText(radio.ListView(), 0, 1), L"87.6 MHz ");
    EXPECT_EQ(test::RowText(radio.ListView(), 2, 1), L"107.9 MHz ");
    EXPECT_THAT(Stored(),
                ElementsAre("G Test", "C Test|FM  1|8760|", "C Test|FM  2|9850|", "C Test|FM  3|10790|"));
    EXPECT_EQ(test::SelectedRow(radio.ListView()), 0);
}

// In a band without a station the first step is all that is seen.
TEST_F(AutoScan, TheFirstStepShowsItsBarAndItsPercentageWhole) {
    struct Way {
        int width, height;
        RECT bar, percentage;
    };
    for (const Way& way : {Way{240, 320, {40, 113, 199, 127}, {20, 130, 220, 165}},
                           Way{320, 240, {65, 55, 224, 69}, {50, 80, 250, 115}}}) {
        SCOPED_TRACE(way.width);
        handset.WriteBand("");
        handset.SetState(L"ScreenWidth", static_cast<std::uint32_t>(way.width));
        handset.SetState(L"ScreenHeight", static_cast<std::uint32_t>(way.height));
        Radio radio(handset);
        radio.WaitUntilShown();
        Begin(radio);
        // The whole of the bar's unlit ticks, and the letters' first row and last.
        constexpr COLORREF kUnlit = RGB(0x44, 0x51, 0x5A), kYellow = RGB(0xFF, 0xFF, 0x6A);
        EXPECT_TRUE(WaitFor([&] {
            return test::PixelsOf(test::SettledPicture(radio, way.bar), kUnlit) > 700 &&
                   test::PixelsOf(test::SettledPicture(radio, way.percentage), kYellow) > 20;
        })) << "unlit: "
            << test::PixelsOf(test::PictureOf(radio, way.bar), kUnlit)
            << ", yellow: " << test::PixelsOf(test::PictureOf(radio, way.percentage), kYellow);
        RECT upper = way.percentage;
        upper.bottom = upper.top + 8;
        EXPECT_GT(test::PixelsOf(test::PictureOf(radio, upper), kYellow), 0u)
            << "the percentage is cut above";
    }
}

TEST_F(AutoScan, TheFoundStationsStandInTheListWithTheirFrequenciesWhole) {
    handset.WriteBand(Band(11));
    Radio radio(handset);
    radio.WaitUntilShown();
    Begin(radio);
    End(radio);
    const LONG style = GetWindowLongW(radio.ListView(), GWL_STYLE);
    EXPECT_EQ(style & (WS_HSCROLL | WS_VSCROLL), WS_VSCROLL);
}

TEST_F(AutoScan, TheTenthStationKeepsBothDigits) {
    handset.WriteBand(Band(11));
    Radio radio(handset);
    radio.WaitUntilShown();
    Begin(radio);
    End(radio);
    ASSERT_EQ(RowCount(radio.ListView()), 11);
    EXPECT_EQ(test::RowText(radio.ListView(), 8, 0), L"FM  9");
    EXPECT_EQ(test::RowText(radio.ListView(), 9, 0), L"FM 10");
    EXPECT_EQ(test::RowText(radio.ListView(), 10, 0), L"FM 11");
}

TEST_F(AutoScan, TheWalkEndsWhereTheSeekWrapsAndTheTraceSaysEachStep) {
    Radio radio(handset);
    radio.WaitUntilShown();
    Begin(radio);
    End(radio);
    EXPECT_THAT(handset.Trace(), HasSubstr("FM: Scanning Channel: 8750\n"));
    EXPECT_THAT(handset.Trace(), HasSubstr("FM: Scanning Channel: 8760\n"));
    EXPECT_THAT(handset.Trace(), HasSubstr("FM: Scanning Channel: 9850\n"));
    EXPECT_THAT(handset.Trace(), HasSubstr("FM: Scanning Channel: 10790\n"));
    EXPECT_THAT(handset.Trace(), HasSubstr("FM: ulastChannel =10790, uCurrentChannel = 8760"
                                           "FM: *** ulastChannel > uCurrentChannel!\n"));
    // The store would refuse the station of the wrap, and the scan would say so.
    EXPECT_THAT(handset.Trace(), Not(HasSubstr("FM: *** CEDB_InsertRecord() Error!")));
    EXPECT_THAT(handset.Trace(), HasSubstr("FM: Start Auto Scan Channels.\n"));
    EXPECT_THAT(handset.Trace(), HasSubstr("FM: End Auto Scan Channels.\n"));
    EXPECT_THAT(handset.Console(), HasSubstr("WM_AUTOSCAN_FINISHED 1\nWM_AUTOSCAN_FINISHED 2\n"));
}

TEST_F(AutoScan, AScanOfLessThanTenSecondsIsMadeThreeTimesFromAnEmptyGroup) {
    Radio radio(handset);
    radio.WaitUntilShown();
    Begin(radio);
    End(radio);
    EXPECT_EQ(Occurrences(handset.Trace(), "FM: Auto Scan Elapsed = "), 3);
    EXPECT_EQ(Count(handset.TunerCalls(), "SetChannel 8750 -> 0"), 3);
    EXPECT_EQ(Stored().size(), 4u);
}

TEST_F(AutoScan, AScanOfMoreThanTenSecondsIsMadeOnce) {
    NEEDS_THE_SIMULATED_BAND("a walk of more than ten seconds for certain, by a faster clock");
    // Every station costs a tenth of a second of seeking: the handset's clock runs faster than the storing.
    SetEnvironmentVariableW(L"KORA_CLOCKRATE", kFast);
    handset.WriteBand(Band(20));
    Radio radio(handset);
    radio.WaitUntilShown();
    Begin(radio);
    End(radio);
    EXPECT_EQ(Occurrences(handset.Trace(), "FM: Auto Scan Elapsed = "), 1);
    EXPECT_EQ(RowCount(radio.ListView()), 20);
}

TEST_F(AutoScan, TheSoundIsMutedWhileTheScanRunsAndComesBack) {
    Radio radio(handset);
    radio.WaitUntilShown();
    const std::size_t before = handset.TunerCalls().size();
    Begin(radio);
    End(radio);
    ASSERT_TRUE(WaitForConsole("WM_AUTOSCAN_FINISHED 2\n"));
    const auto calls = TunerCommands(before);
    ASSERT_FALSE(calls.empty());
    EXPECT_EQ(calls.front(), "SetMute 1 -> 0");
    EXPECT_EQ(calls.back(), "SetMute 0 -> 0");
    EXPECT_TRUE(IsWindowVisible(radio.ListView()));
}

TEST_F(AutoScan, ABandWhoseEverySeekFailsIsWalkedInStepsOf1MHzAndNothingIsStored) {
    SetEnvironmentVariableW(L"KORA_FAULT", L"seek");
    Radio radio(handset);
    radio.WaitUntilShown();
    Begin(radio);
    End(radio);
    EXPECT_THAT(handset.Trace(), HasSubstr("FM: *** CFMDevice_SeekNext Error, Skip to 8850\n"));
    EXPECT_THAT(handset.Trace(), HasSubstr("FM: *** CFMDevice_SeekNext Error, Skip to 10750\n"));
    EXPECT_THAT(handset.Trace(), HasSubstr("FM: *** CFMDevice_SeekNext Error, Skip to 10850\n"));
    EXPECT_THAT(handset.Trace(), Not(HasSubstr("Skip to 10950")));
    EXPECT_THAT(handset.TunerCalls(), Contains("SetChannel 8850 -> 0"));
    EXPECT_EQ(RowCount(radio.ListView()), 0);
    EXPECT_THAT(Stored(), ElementsAre("G Test"));
}

TEST_F(AutoScan, ChannelsThatCannotBeStoredAreToldAndUseUpTheirNumbers) {
    SetEnvironmentVariableW(L"KORA_FAULT", L"database-write");
    Radio radio(handset);
    radio.WaitUntilShown();
    Begin(radio);
    End(radio);
    EXPECT_THAT(
        handset.Trace(),
        HasSubstr("FM: InsertRecord: szChannel = FM 1, szCountryName = Test, uCurrentChannel = 8760\n"));
    EXPECT_THAT(
        handset.Trace(),
        HasSubstr("FM: InsertRecord: szChannel = FM 3, szCountryName = Test, uCurrentChannel = 10790\n"));
    EXPECT_THAT(handset.Trace(), HasSubstr("FM: *** CEDB_InsertRecord() Error!\n"));
    EXPECT_EQ(RowCount(radio.ListView()), 0);
}

TEST_F(AutoScan, CancelLeavesTheStoredChannelsAndGivesEverythingBack) {
    Radio radio(handset);
    radio.WaitUntilShown();
    const auto stored = Stored();
    Begin(radio, IDCANCEL);
    ASSERT_TRUE(WaitForConsole("WM_AUTOSCAN_FINISHED 2\n"));
    EXPECT_TRUE(IsWindowEnabled(radio.Window()));
    EXPECT_TRUE(IsWindowVisible(radio.ListView()));
    EXPECT_EQ(RowCount(radio.ListView()), 3);
    EXPECT_EQ(Stored(), stored);
    EXPECT_EQ(TunerCommands().back(), "SetMute 0 -> 0");
    EXPECT_EQ(Count(handset.TunerCalls(), "SeekNext"), 0);
}

TEST_F(AutoScan, WithoutASelectedGroupTheScanTriesThreeTimesAndStoresNothing) {
    handset.DeleteRegistry(test::kRadioSettings, L"Selected");
    Radio radio(handset);
    radio.WaitUntilShown();
    Begin(radio);
    End(radio);
    EXPECT_EQ(Occurrences(handset.Trace(), "FM: *** Unable to get REGKEY_CURRENT_COUNTRY!\n"), 3);
    EXPECT_EQ(Count(handset.TunerCalls(), "SeekNext"), 0);
    EXPECT_EQ(Stored().size(), 4u);
}

TEST_F(AutoScan, APercentSignInTheGroupsNameIsReadAsAFormat) {
    Select(L"100%% FM");
    Radio radio(handset);
    radio.WaitUntilShown();
    Begin(radio);
    End(radio);
    EXPECT_THAT(Stored(), Contains("C 100% FM|FM  1|8760|"));
}

TEST_F(AutoScan, WhileAScanAsksItsMutexIsThereAndBelongsToNobody) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Command(IDC_AUTOSCAN);
    const HWND box = radio.WaitForBox(L"Stored channels");
    ASSERT_NE(box, nullptr);
    const HANDLE mutex = CreateMutexW(nullptr, FALSE, L"MyMutex");
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ALREADY_EXISTS));
    EXPECT_EQ(WaitForSingleObject(mutex, 0), WAIT_OBJECT_0);
    ReleaseMutex(mutex);
    CloseHandle(mutex);
    Radio::Answer(box, IDCANCEL);
    EXPECT_TRUE(WaitForConsole("WM_AUTOSCAN_FINISHED 2\n"));
}

TEST_F(AutoScan, AScanIsRefusedWhileAnotherHoldsTheMutex) {
    const HANDLE other = CreateMutexW(nullptr, FALSE, L"MyMutex");
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Command(IDC_AUTOSCAN);
    ASSERT_TRUE(WaitForConsole("WM_AUTOSCAN_FINISHED 2\n"));
    CloseHandle(other);
    EXPECT_EQ(radio.Box(nullptr), nullptr);
    EXPECT_EQ(Count(handset.TunerCalls(), "SeekNext"), 0);
    EXPECT_TRUE(IsWindowEnabled(radio.Window()));
    EXPECT_EQ(RowCount(radio.ListView()), 3);
}

TEST_F(AutoScan, ASecondScanAfterTheFirstWorks) {
    Radio radio(handset);
    radio.WaitUntilShown();
    for (int round = 0; round < 2; ++round) {
        Begin(radio);
        End(radio);
    }
    EXPECT_EQ(RowCount(radio.ListView()), 3);
    EXPECT_EQ(Occurrences(handset.Trace(), "FM: End Auto Scan Channels.\n"), 2);
}

TEST_F(AutoScan, ASelectionThatWasRestingWhenTheScanBeganIsNotTunedIntoIt) {
    handset.WriteBand(Band(20));
    Radio radio(handset);
    radio.WaitUntilShown();
    PostMessageW(radio.ListView(), WM_KEYDOWN, VK_DOWN, 1);
    ASSERT_TRUE(WaitFor([&] { return test::SelectedRow(radio.ListView()) == 0; }));
    const std::size_t before = handset.TunerCalls().size();
    Begin(radio);
    End(radio);
    EXPECT_EQ(RowCount(radio.ListView()), 20);
    const auto calls = TunerCommands(before);
    EXPECT_EQ(Count(calls, "SetChannel"), Count(calls, "SetChannel 8750 -> 0"));
}

TEST_F(AutoScan, ClosingAfterAScanMeetsTheStaleMutexAndEnds) {
    Radio radio(handset);
    radio.WaitUntilShown();
    Begin(radio);
    End(radio);
    PostMessageW(radio.Window(), WM_CLOSE, 0, 0);
    ASSERT_TRUE(radio.WaitUntilGone());
    EXPECT_EQ(radio.ExitCode(), 0u);
    EXPECT_THAT(handset.Console(), HasSubstr("m_hMutex........."));
    EXPECT_THAT(handset.Trace(), HasSubstr("FM: Program Terminated.\n"));
}

TEST_F(AutoScan, ClosingTheWindowDuringAScanEndsTheRadio) {
    handset.WriteBand(Band(20));
    Radio radio(handset);
    radio.WaitUntilShown();
    Begin(radio);
    ASSERT_TRUE(WaitForTrace("FM: Scanning Channel: 8960\n"));
    EXPECT_FALSE(IsWindowEnabled(radio.Window()));
    PostMessageW(radio.Window(), WM_CLOSE, 0, 0);
    ASSERT_TRUE(radio.WaitUntilGone());
    EXPECT_THAT(handset.Console(), HasSubstr("m_hMutex........."));
    // The volume is whole: it opens, and holds what was stored so far.
    EXPECT_THAT(Stored(), Contains("C Test|FM  1|8760|"));
}

}  // namespace
