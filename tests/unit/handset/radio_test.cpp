// The running radio from outside: start, stop, keys, soft keys and the stylus.
#include "handset/controls/device_registry.h"
#include "handset/controls/radio_windows.h"
#include "handset/controls/telephone.h"
#include "handset/state/power_manager.h"
#include "handset/state/process_start.h"
#include "tests/unit/handset/stand_in_test.h"

namespace panel {
namespace {

using RadioFromOutside = StandInTest;

TEST_F(RadioFromOutside, StartReturnsWhenTheWindowIsThereAndStopWhenTheProcessIsGone) {
    EXPECT_FALSE(RadioProcess().has_value());
    EXPECT_EQ(Run({L"start"}), kDone);
    EXPECT_TRUE(RadioProcess().has_value());
    EXPECT_EQ(Run({L"stop"}), kDone);
    EXPECT_FALSE(RadioProcess().has_value());
    EXPECT_EQ(Run({L"stop"}), kDone);
}

TEST_F(RadioFromOutside, StopEndsEveryRadioOfItsHandsetAndNoOther) {
    StartStandIn();
    ASSERT_EQ(Run({L"start", L"slow", L"second"}), kDone);
    ASSERT_EQ(RadioProcesses().size(), 2u);
    const std::wstring elsewhere = ProgramsToInstall() + L"\\UI.exe";
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION other = {};
    std::wstring line = L"UI.exe";
    ASSERT_TRUE(handset::StartProcess(elsewhere.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr,
                                      nullptr, &startup, &other));
    CloseHandle(other.hThread);
    const handset::OwnedHandle process(other.hProcess);
    ASSERT_TRUE(WaitUntil([&] { return MainWindowOf(other.dwProcessId) != nullptr; }, kDeadline_ms));
    EXPECT_EQ(Run({L"stop"}), kDone);
    EXPECT_TRUE(RadioProcesses().empty());
    EXPECT_EQ(WaitForSingleObject(process.get(), 0), static_cast<DWORD>(WAIT_TIMEOUT));
    TerminateProcess(process.get(), 1);
    WaitForSingleObject(process.get(), kDeadline_ms);
}

TEST_F(RadioFromOutside, ARadioThatDoesNotCloseIsEndedByForce) {
    ASSERT_EQ(Run({L"start", L"deaf"}), kDone);
    EXPECT_EQ(Run({L"stop", L"--force"}), kDone);
    EXPECT_FALSE(RadioProcess().has_value());
    EXPECT_NE(console_.Said().find(L"was ended"), std::wstring::npos);
    EXPECT_EQ(Run({L"stop", L"--hard"}), kBadUsage);
}

TEST_F(RadioFromOutside, StopSaysWhatHelpsAgainstARadioThatDoesNotClose) {
    ASSERT_EQ(Run({L"start", L"deaf"}), kDone);
    EXPECT_EQ(Run({L"stop"}), kFailed);
    EXPECT_NE(console_.Complained().find(L"\"handset stop --force\""), std::wstring::npos);
    EXPECT_TRUE(RadioProcess().has_value());
}

TEST_F(RadioFromOutside, AStartWaitsUntilTheOneBeforeItHasItsWindow) {
    const RadioStart first = LaunchRadio(L"slow first");
    ASSERT_TRUE(first.process);
    EXPECT_FALSE(LaunchRadio(L"exit 0 hasty", RadioConsole::kOutput, 0).process);
    EXPECT_TRUE(LaunchRadio(L"exit 0 patient").process);
    EXPECT_TRUE(WaitForNote("patient"));
    EXPECT_EQ(Beginnings(),
              "command line [slow first]\nwindow [slow first]\ncommand line [exit 0 patient]\n");
}

TEST_F(RadioFromOutside, StatusTellsARadioOnItsWayFromOneThatShowsItsWindow) {
    const RadioStart radio = LaunchRadio(L"slow one");
    ASSERT_TRUE(radio.process);
    Run({L"status"});
    EXPECT_NE(console_.Said().find(L"Radio         starting, process"), std::wstring::npos);
    ASSERT_TRUE(WaitUntil([] { return !RadioWindows().empty(); }, kDeadline_ms));
    Run({L"status"});
    EXPECT_NE(console_.Said().find(L"Radio         running, process"), std::wstring::npos);
}

TEST_F(RadioFromOutside, StartGivesTheExitCodeOfARadioThatEndsAtOnce) {
    EXPECT_EQ(Run({L"start", L"exit", L"7"}), 7);
    EXPECT_EQ(Run({L"start", L"exit 0"}), 0);
}

TEST_F(RadioFromOutside, TheCommandLineArrivesAsItIs) {
    for (const wchar_t* line : {L"exit 0 -Rec  -Channel 9850 ", L"exit 0 \"quoted\" --help"}) {
        DeleteFileW(Device(L"\\Windows\\UI.exe.log").c_str());
        EXPECT_EQ(Run({L"start", line}), 0);
        EXPECT_EQ(Notes(), "command line [" + Utf8(line) + "]\n");
    }
    DeleteFileW(Device(L"\\Windows\\UI.exe.log").c_str());
    EXPECT_EQ(Run({L"start", L"exit", L"0", L"--help"}), 0);
    EXPECT_EQ(Notes(), "command line [exit 0 --help]\n");
}

TEST_F(RadioFromOutside, AHandsetThatIsNotSetUpSaysSo) {
    DeleteFileW(Device(L"\\Windows\\UI.exe").c_str());
    EXPECT_EQ(Run({L"start"}), kFailed);
    EXPECT_NE(console_.Complained().find(L"\"handset install\""), std::wstring::npos);
}

TEST_F(RadioFromOutside, InstallRefusesWhileTheRadioRuns) {
    StartStandIn();
    EXPECT_EQ(Run({L"install"}), kFailed);
    EXPECT_NE(console_.Complained().find(L"the radio is running"), std::wstring::npos);
    DeleteFileW(Device(L"\\Windows\\band.ini").c_str());
    EXPECT_EQ(Run({L"install", L"--unless-running"}), kDone);
    EXPECT_EQ(GetFileAttributesW(Device(L"\\Windows\\band.ini").c_str()), INVALID_FILE_ATTRIBUTES);
}

TEST_F(RadioFromOutside, KeysReachTheWindowWithTheFocus) {
    StartStandIn();
    EXPECT_EQ(Run({L"key", L"9", L"left"}), kDone);
    EXPECT_TRUE(WaitUntil(
        [this] { return Keys() == "child keydown 57\nchild keyup 57\nchild keydown 37\nchild keyup 37\n"; },
        kDeadline_ms))
        << Notes();
}

TEST_F(RadioFromOutside, KeysReachNobodyWhileTheWindowIsDisabled) {
    StartStandIn();
    EnableWindow(RadioMainWindow(), FALSE);
    EXPECT_EQ(Run({L"key", L"9"}), kFailed);
    EXPECT_NE(console_.Complained().find(L"no window of the radio takes keys"), std::wstring::npos);
    EnableWindow(RadioMainWindow(), TRUE);
    EXPECT_EQ(Run({L"key", L"8"}), kDone);
    EXPECT_TRUE(WaitForNote("keydown 56\n")) << Notes();
    EXPECT_EQ(Notes().find("keydown 57"), std::string::npos);
}

TEST_F(RadioFromOutside, SoftKeysReachTheMenuBarOfTheWindowInFront) {
    StartStandIn();
    EXPECT_EQ(Run({L"softkey", L"right"}), kDone);
    EXPECT_TRUE(WaitForNote("softkey 1\n")) << Notes();
    EXPECT_EQ(Run({L"key", L"soft1"}), kDone);
    EXPECT_TRUE(WaitForNote("softkey 0\n")) << Notes();
}

TEST_F(RadioFromOutside, TheStylusReachesTheInnermostWindowInItsOwnPixels) {
    StartStandIn();
    EXPECT_EQ(Run({L"tap", L"100", L"200", L"0"}), kDone);
    EXPECT_TRUE(WaitForNote("main down 100 174\nmain up 100 174\n")) << Notes();
    EXPECT_EQ(Run({L"tap", L"120", L"300", L"0"}), kDone);
    EXPECT_TRUE(WaitForNote("child down 120 6\nchild up 120 6\n")) << Notes();
}

TEST_F(RadioFromOutside, WithoutARadioKeysAndStylusSayThatItDoesNotRun) {
    for (const Arguments& words :
         {Arguments{L"key", L"1"}, Arguments{L"softkey", L"left"}, Arguments{L"tap", L"1", L"1"}}) {
        EXPECT_EQ(Run(words), kFailed);
        EXPECT_NE(console_.Complained().find(L"the radio does not run"), std::wstring::npos);
    }
}

TEST_F(RadioFromOutside, BluetoothBitsArePostedToTheRadio) {
    StartStandIn();
    EXPECT_EQ(Run({L"bluetooth", L"0x19"}), kDone);
    EXPECT_TRUE(WaitForNote("bluetooth 25\n")) << Notes();
}

TEST_F(RadioFromOutside, ATurnOfTheScreenIsToldToTheRadiosWindows) {
    StartStandIn();
    EXPECT_EQ(Run({L"orientation", L"landscape"}), kDone);
    EXPECT_NE(Notes().find("turned\n"), std::string::npos) << Notes();
}

TEST_F(RadioFromOutside, TheCallKeysAnswerAndEndACallAndElseReachARadioThatAskedForAllKeys) {
    StartStandIn();
    Run({L"call", L"incoming"});
    EXPECT_EQ(Run({L"key", L"call"}), kDone);
    EXPECT_EQ(PhoneStatus(), kPhoneTalking);
    EXPECT_EQ(Run({L"key", L"end"}), kDone);
    EXPECT_EQ(PhoneStatus(), 0u);
    EXPECT_EQ(Notes().find("keydown"), std::string::npos);
    EXPECT_EQ(Run({L"key", L"end"}), kDone);
    handset::WantAllKeys(true);
    EXPECT_EQ(Run({L"key", L"call"}), kDone);
    EXPECT_TRUE(WaitForNote("keydown 114\n")) << Notes();
    EXPECT_EQ(Notes().find("keydown 115\n"), std::string::npos);
}

TEST_F(RadioFromOutside, WithADarkDisplayOnlyKeysArriveAndOnlyAtARadioThatAskedForAllOfThem) {
    StartStandIn();
    Run({L"power", L"unattended"});
    for (const Arguments& words : {Arguments{L"key", L"9"}, Arguments{L"key", L"soft1"},
                                   Arguments{L"softkey", L"left"}, Arguments{L"tap", L"100", L"200", L"0"}}) {
        EXPECT_EQ(Run(words), kFailed) << words[0];
        EXPECT_NE(console_.Complained().find(L"the display is dark"), std::wstring::npos);
    }
    handset::WantAllKeys(true);
    EXPECT_EQ(Run({L"tap", L"100", L"200", L"0"}), kFailed);
    EXPECT_EQ(Run({L"key", L"8", L"soft2"}), kDone);
    EXPECT_TRUE(WaitForNote("keydown 56\nchild keyup 56\nchild keydown 113\n")) << Notes();
    for (const char* never : {"keydown 57", "softkey", "main down"})
        EXPECT_EQ(Notes().find(never), std::string::npos) << never;
    Run({L"power", L"on"});
    handset::WantAllKeys(false);
    EXPECT_EQ(Run({L"key", L"7"}), kDone);
    EXPECT_TRUE(WaitForNote("keydown 55\n")) << Notes();
}

}  // namespace
}  // namespace panel
