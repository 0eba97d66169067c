// Keys, stylus, commands and shortcuts while a scan runs: none has any effect, and the radio is in front
// again when the scan is over.
#include "tests/support/window_thread.h"
#include "tests/system/channels_on_radio.h"

namespace {

using test::Radio;
using test::ThreadOf;
using test::WaitFor;
using testing::HasSubstr;
using testing::Not;

constexpr UINT kGetPosition = 0x8005;

class ScanInput : public test::ThreeChannelsOnRadio {
  protected:
    ~ScanInput() override { SetEnvironmentVariableW(L"KORA_FAULT", nullptr); }

    // A band on which the three runs of a scan take some seconds.
    void SetUp() override {
        ThreeChannelsOnRadio::SetUp();
        std::string band = "[band]\nwrap=1\n";
        for (int i = 0; i < 20; ++i) band += "[" + std::to_string(8760 + 100 * i) + "]\nlevel=50\n";
        handset.WriteBand(band);
    }
    void BeginScan(const Radio& radio) {
        m_before = handset.TunerCalls().size();
        radio.Command(IDC_AUTOSCAN);
        const HWND box = radio.WaitForBox(L"Stored channels");
        ASSERT_NE(box, nullptr);
        Radio::Answer(box, IDOK);
        ASSERT_TRUE(WaitForTrace("FM: Scanning Channel: 8760\n"));
    }
    void EndScan(const Radio& radio) const {
        HWND box = nullptr;
        ASSERT_TRUE(
            WaitFor([&] { return (box = radio.Box(L"FM")) != nullptr && IsWindowVisible(box); }, 60000));
        Radio::Answer(box, IDOK);
        ASSERT_TRUE(WaitForConsole("WM_AUTOSCAN_FINISHED 2\n"));
    }
    // What the tuner was told since the scan's question, beside what a scan tells it.
    std::vector<std::string> ForeignCalls() const {
        std::vector<std::string> foreign;
        for (const std::string& call : TunerCommands(m_before)) {
            bool ofTheScan = false;
            for (const char* own : {"SetMute", "SetChannel 8750 ", "SeekNext"})
                ofTheScan = ofTheScan || call.rfind(own, 0) == 0;
            if (!ofTheScan) foreign.push_back(call);
        }
        return foreign;
    }
    // Of a run over the band's 20 stations there are 21.
    int Seeks() const { return Count(TunerCommands(m_before), "SeekNext"); }
    std::size_t m_before = 0;
};

TEST_F(ScanInput, KeysStylusCommandsAndShortcutsHaveNoEffectWhateverWindowTheyReach) {
    Radio radio(handset);
    radio.WaitUntilShown();
    const LRESULT volume = radio.Send(kGetPosition, SKIN_VOLUME);
    BeginScan(radio);
    ASSERT_TRUE(WaitForTrace("FM: Scanning Channel: 9060\n"));
    const std::size_t begun = handset.Trace().size();
    for (const HWND target : {radio.Window(), radio.ListView()}) {
        for (const WPARAM key : {WPARAM{'9'}, WPARAM{'8'}, WPARAM{'5'}, WPARAM{VK_LEFT}, WPARAM{VK_RIGHT},
                                 WPARAM{VK_UP}, WPARAM{VK_DOWN}, WPARAM{VK_RETURN}}) {
            PostMessageW(target, WM_KEYDOWN, key, 1);
            PostMessageW(target, WM_KEYUP, key, 1);
        }
        PostMessageW(target, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(target), MAKELPARAM(60, 120));
        for (const WORD id : {WORD{IDC_AUTOSCAN}, WORD{IDC_CHANNEL_LISTS}, WORD{IDC_SETTINGS},
                              WORD{IDC_INFORMATION}, WORD{IDC_SLEEP_15}, WORD{IDC_SCHEDULE},
                              WORD{IDC_ADD_CURRENT}, WORD{IDC_DIGIT_0 + 9}, static_cast<WORD>(IDC_EXIT)}) {
            PostMessageW(target, WM_COMMAND, id, 0);
            PostMessageW(target, WM_COMMAND, MAKEWPARAM(id, 1), 0);  // as a shortcut sends it
        }
    }
    // Over the whole skin: every key of it, and the slider.
    for (int y = 4; y < 290; y += 12) {
        for (int x = 4; x < 240; x += 16) radio.Tap(x, y);
    }
    ASSERT_TRUE(WaitForTrace("FM: Auto Scan Elapsed = "));
    // A row that is selected is read from the store, which the scan is writing to.
    EXPECT_THAT(handset.Trace().substr(begun), Not(HasSubstr("lpPropRecord->szPropRecord_ChannelName")));
    EndScan(radio);
    EXPECT_THAT(ForeignCalls(), testing::IsEmpty());
    EXPECT_EQ(Seeks() % 21, 0);
    EXPECT_EQ(Count(TunerCommands(m_before), "SetMute"), 2);
    EXPECT_EQ(radio.Send(kGetPosition, SKIN_VOLUME), volume);
    EXPECT_THAT(handset.Trace(), Not(HasSubstr("WM_KEYDOWN")));
    EXPECT_THAT(handset.Trace(), Not(HasSubstr("CLOSE FM")));
    EXPECT_EQ(radio.Box(nullptr), nullptr);
    EXPECT_EQ(test::RowCount(radio.ListView()), 20);
}

TEST_F(ScanInput, AHeldSeekKeyThatTheScanTookTheStylusFromSeeksNoMore) {
    Radio radio(handset);
    radio.WaitUntilShown();
    radio.Press(100, 250);
    ASSERT_TRUE(WaitForCall("SeekPrev -> 0"));
    BeginScan(radio);
    const std::size_t from = handset.TunerCalls().size();
    EndScan(radio);
    EXPECT_TRUE(WaitForRounds(2));
    EXPECT_EQ(Count(TunerCommands(from), "SeekPrev"), 0);
}

TEST_F(ScanInput, TheHandsetsKeysReachNobodyWhileTheWindowIsDisabled) {
    Radio radio(handset);
    radio.WaitUntilShown();
    BeginScan(radio);
    ASSERT_EQ(radio.Box(nullptr), nullptr);
    EXPECT_EQ(test::RunProgram(L"handset.exe", L"key 9"), 1u);
    EndScan(radio);
    EXPECT_EQ(test::RunProgram(L"handset.exe", L"key 9"), 0u);
    EXPECT_TRUE(WaitForTrace("WM_KEYDOWN"));
}

TEST_F(ScanInput, TheRadioIsNotActivatedWhileItScansAndComesToTheFrontWhenItIsOver) {
    Radio radio(handset);
    radio.WaitUntilShown();
    ASSERT_TRUE(WaitFor([&] { return ThreadOf(radio.Window()).hwndFocus == radio.ListView(); }));
    BeginScan(radio);
    EXPECT_EQ(ThreadOf(radio.Window()).hwndActive, nullptr);
    EXPECT_EQ(ThreadOf(radio.Window()).hwndFocus, nullptr);
    const std::size_t scanning = handset.Trace().find("FM: Start Auto Scan Channels.");
    EndScan(radio);
    ASSERT_TRUE(WaitFor([&] { return ThreadOf(radio.Window()).hwndFocus == radio.ListView(); }));
    EXPECT_EQ(ThreadOf(radio.Window()).hwndActive, radio.Window());
    const std::string trace = handset.Trace();
    EXPECT_EQ(trace.substr(scanning, trace.find("FM: End Auto Scan") - scanning).find("WA_ACTIVE"),
              std::string::npos);
    // The monitor runs again.
    EXPECT_TRUE(WaitForRounds(2));
}

TEST_F(ScanInput, AMonitorThatThePlatformRefusesToSuspendRestsDuringTheScanAllTheSame) {
    SetEnvironmentVariableW(L"KORA_FAULT", L"suspend:30");
    Radio radio(handset);
    radio.WaitUntilShown();
    ASSERT_TRUE(WaitForRounds(1));
    BeginScan(radio);
    const std::size_t walk = handset.TunerCalls().size();
    EndScan(radio);
    const auto calls = handset.TunerCalls();
    const auto end = std::find_if(calls.begin() + static_cast<std::ptrdiff_t>(walk), calls.end(),
                                  [](const std::string& call) { return call.rfind("SetMute 0", 0) == 0; });
    const std::vector<std::string> scan(calls.begin() + static_cast<std::ptrdiff_t>(walk), end);
    EXPECT_EQ(Count(scan, "GetSignal"), 0);
    EXPECT_GT(Count(scan, "SeekNext"), 0);
    EXPECT_TRUE(WaitForRounds(2));
}

}  // namespace
