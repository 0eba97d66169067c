// What the settings dialog shows and what a click on each of its controls stores.
#include "tests/unit/settings/settings_test.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::initializer_list<int> kFormatButtons = {1013, 1014, 1015};
constexpr std::initializer_list<int> kPlaceButtons = {1016, 1022};
constexpr std::initializer_list<int> kCheckBoxes = {1025, 1028, 1070};

class SettingsDialog : public test::SettingsTest {
  protected:
    // The dialog run to its end, with `message` as the first that it gets.
    static INT_PTR ResultOf(UINT message, WPARAM wParam) {
        static UINT ending;
        static WPARAM endingParameter;
        ending = message;
        endingParameter = wParam;
        const DLGPROC procedure = [](HWND opened, UINT arrived, WPARAM first, LPARAM second) -> INT_PTR {
            if (arrived == WM_INITDIALOG) PostMessageW(opened, ending, endingParameter, 0);
            return SettingsProc(opened, arrived, first, second);
        };
        const HMODULE module = GetModuleHandleW(nullptr);
        const HRSRC resource = FindResourceW(module, MAKEINTRESOURCEW(IDD_SETTINGS_PORTRAIT), RT_DIALOG);
        return DialogBoxIndirectParamW(module, static_cast<LPCDLGTEMPLATEW>(LoadResource(module, resource)),
                                       nullptr, procedure, 0);
    }
};

// --- What is shown at the opening -------------------------------------------------------------------------

TEST_F(SettingsDialog, WithNothingStoredNoFormatButTheDefaultPlaceIsCheckedAndAllElseIsClear) {
    Open();
    EXPECT_EQ(CheckedOf(kFormatButtons), "");
    EXPECT_EQ(CheckedOf(kPlaceButtons), "1016");
    EXPECT_EQ(CheckedOf(kCheckBoxes), "");
    EXPECT_EQ(Text(1029), L"");
    EXPECT_FALSE(Enabled(1023));
    EXPECT_FALSE(Enabled(1029));
}

TEST_F(SettingsDialog, OpeningStoresNothing) {
    Open();
    for (const WCHAR* value :
         {kRecordAudioType, kSaveFileType, kEnableMute, kEnableRDSPSPTY, kEnableAFAutoSwitch}) {
        EXPECT_EQ(Stored(value), "(missing)");
    }
    EXPECT_EQ(StoredText(kDefineFileName), L"(missing)");
    EXPECT_THAT(device.Calls(), IsEmpty());
}

TEST_F(SettingsDialog, EachStoredFormatChecksItsButton) {
    const char* const buttons[] = {"1015", "1014", "1013"};
    for (DWORD type = 0; type < 3; ++type) {
        WriteSetting(kRecordAudioType, type);
        Open();
        EXPECT_EQ(CheckedOf(kFormatButtons), buttons[type]);
        DestroyWindow(dialog);
        dialog = nullptr;
    }
}

TEST_F(SettingsDialog, AnUnknownStoredFormatChecksNoButtonAndStaysUntilOneIsClicked) {
    WriteSetting(kRecordAudioType, 5);
    Open();
    EXPECT_EQ(CheckedOf(kFormatButtons), "");
    Click(1028);
    EXPECT_EQ(Stored(kRecordAudioType), "5");
    Click(1014);
    EXPECT_EQ(Stored(kRecordAudioType), "1");
}

TEST_F(SettingsDialog, AnyStoredPlaceButZeroIsTheUsersOwnFile) {
    WriteSetting(kSaveFileType, 7);
    StoreText(kDefineFileName, L"\\Storage Card\\Today.");
    Open();
    EXPECT_EQ(CheckedOf(kPlaceButtons), "1022");
    EXPECT_EQ(Text(1029), L"\\Storage Card\\Today.");
    EXPECT_TRUE(Enabled(1023));
    EXPECT_TRUE(Enabled(1029));
}

TEST_F(SettingsDialog, TheFileNameIsShownEvenWhileTheMusicFolderIsChosen) {
    StoreText(kDefineFileName, L"\\Today.");
    Open();
    EXPECT_EQ(Text(1029), L"\\Today.");
    EXPECT_FALSE(Enabled(1029));
}

TEST_F(SettingsDialog, EachStoredSwitchChecksItsBox) {
    const std::pair<const WCHAR*, const char*> rows[] = {
        {kEnableMute, "1025"}, {kEnableRDSPSPTY, "1028"}, {kEnableAFAutoSwitch, "1070"}};
    for (const auto& [value, box] : rows) {
        WriteSetting(value, 2);
        Open();
        EXPECT_EQ(CheckedOf(kCheckBoxes), box);
        DestroyWindow(dialog);
        dialog = nullptr;
        WriteSetting(value, 0);
    }
}

TEST_F(SettingsDialog, WithoutItsSoftKeysTheDialogShowsNoSettings) {
    WriteSetting(kRecordAudioType, 2);
    WriteSetting(kSaveFileType, 1);
    WriteSetting(kEnableMute, 1);
    // The menu of the soft keys is not in that module.
    g_app.hInstance = GetModuleHandleW(L"COREDLL.dll");
    Open();
    EXPECT_EQ(CheckedOf(kFormatButtons), "");
    EXPECT_EQ(CheckedOf(kPlaceButtons), "");
    EXPECT_EQ(CheckedOf(kCheckBoxes), "");
    EXPECT_FALSE(Enabled(1023));
}

TEST_F(SettingsDialog, TheLandscapeTemplateShowsTheSame) {
    WriteSetting(kRecordAudioType, 1);
    WriteSetting(kSaveFileType, 1);
    WriteSetting(kEnableAFAutoSwitch, 1);
    Open(IDD_SETTINGS_LANDSCAPE);
    EXPECT_EQ(CheckedOf(kFormatButtons), "1014");
    EXPECT_EQ(CheckedOf(kPlaceButtons), "1022");
    EXPECT_EQ(CheckedOf(kCheckBoxes), "1070");
}

// --- What a click stores ----------------------------------------------------------------------------------

TEST_F(SettingsDialog, EachFormatButtonUnchecksTheOthersAndStoresItsFormatAtOnce) {
    Open();
    const std::pair<int, const char*> rows[] = {{1013, "2"}, {1014, "1"}, {1015, "0"}, {1013, "2"}};
    for (const auto& [button, stored] : rows) {
        Click(button);
        EXPECT_EQ(CheckedOf(kFormatButtons), std::to_string(button));
        EXPECT_EQ(Stored(kRecordAudioType), stored);
    }
}

// As other programs send it: no button has unchecked its neighbour then.
TEST_F(SettingsDialog, TheMusicFoldersCommandAloneUnchecksTheUsersOwnFile) {
    WriteSetting(kSaveFileType, 1);
    Open();
    ASSERT_EQ(CheckedOf(kPlaceButtons), "1022");
    SendMessageW(dialog, WM_COMMAND, MAKEWPARAM(1016, BN_CLICKED),
                 reinterpret_cast<LPARAM>(GetDlgItem(dialog, 1016)));
    EXPECT_EQ(CheckedOf(kPlaceButtons), "");
    EXPECT_EQ(Stored(kSaveFileType), "0");
}

TEST_F(SettingsDialog, TheUsersOwnFileEnablesItsNameAndTheMusicFolderDisablesIt) {
    Open();
    Click(1022);
    EXPECT_EQ(CheckedOf(kPlaceButtons), "1022");
    EXPECT_TRUE(Enabled(1023));
    EXPECT_TRUE(Enabled(1029));
    EXPECT_EQ(Stored(kSaveFileType), "1");
    Click(1016);
    EXPECT_EQ(CheckedOf(kPlaceButtons), "1016");
    EXPECT_FALSE(Enabled(1023));
    EXPECT_FALSE(Enabled(1029));
    EXPECT_EQ(Stored(kSaveFileType), "0");
}

TEST_F(SettingsDialog, TheUsersOwnFileShowsTheNameThatIsStoredByNow) {
    Open();
    StoreText(kDefineFileName, L"\\Later.");
    Click(1022);
    EXPECT_EQ(Text(1029), L"\\Later.");
}

TEST_F(SettingsDialog, TheUsersOwnFileStoresNothingUnlessItsButtonIsChecked) {
    Open();
    Notify(1022);
    EXPECT_EQ(CheckedOf(kPlaceButtons), "");
    EXPECT_EQ(Stored(kSaveFileType), "(missing)");
    EXPECT_FALSE(Enabled(1023));
}

TEST_F(SettingsDialog, EachCheckBoxStoresOneAndThenZero) {
    Open();
    const std::pair<int, const WCHAR*> rows[] = {
        {1025, kEnableMute}, {1028, kEnableRDSPSPTY}, {1070, kEnableAFAutoSwitch}};
    for (const auto& [box, value] : rows) {
        Click(box);
        EXPECT_EQ(Stored(value), "1") << box;
        Click(box);
        EXPECT_EQ(Stored(value), "0") << box;
    }
}

TEST_F(SettingsDialog, SwitchingTheWeakSignalMuteOffUnmutesRestoresTheVolumeAndClearsTheFlag) {
    WriteSetting(kEnableMute, 1);
    g_app.bLowSignalMute = 1;
    g_app.dwSavedVolume = 70;
    device.volume = 0;
    Open();
    Click(1025);
    EXPECT_THAT(device.Calls(), ElementsAre("SetMute 0", "SetVolume 70"));
    EXPECT_EQ(g_app.bLowSignalMute, 0);
    EXPECT_EQ(Stored(kEnableMute), "0");
}

TEST_F(SettingsDialog, SwitchingItOffWithoutAnyMuteSilencesTheRadio) {
    WriteSetting(kEnableMute, 1);
    device.volume = 50;
    Open();
    Click(1025);
    EXPECT_EQ(device.volume, 0u);
}

TEST_F(SettingsDialog, SwitchingItOnTouchesNoSound) {
    Open();
    Click(1025);
    EXPECT_THAT(device.Calls(), IsEmpty());
}

TEST_F(SettingsDialog, AnythingElseIsIgnored) {
    Open();
    for (const int id : {0, 2, 1029, 1100, 0x8008, 0x800B}) {
        EXPECT_EQ(SettingsProc(dialog, WM_COMMAND, static_cast<WPARAM>(id), 0), FALSE) << id;
    }
    EXPECT_EQ(SettingsProc(dialog, WM_TIMER, 1, 0), FALSE);
    EXPECT_TRUE(IsWindow(dialog));
    EXPECT_EQ(Stored(kRecordAudioType), "(missing)");
}

// --- How it ends ------------------------------------------------------------------------------------------

TEST_F(SettingsDialog, OkAndDoneEndItWithZeroCancelWithItsCommandAndClosingWithSixteen) {
    EXPECT_EQ(ResultOf(WM_COMMAND, IDOK), 0);
    EXPECT_EQ(ResultOf(WM_COMMAND, 0x800A), 0);
    EXPECT_EQ(ResultOf(WM_COMMAND, 0x8009), 32777);
    EXPECT_EQ(ResultOf(WM_CLOSE, 0), 16);
}

TEST_F(SettingsDialog, OnlyTheMessagesThatEndItAndTheOpeningAreAnswered) {
    Open();
    EXPECT_EQ(SettingsProc(dialog, WM_COMMAND, 1028, 0), FALSE);
    EXPECT_EQ(SettingsProc(dialog, WM_SIZE, 0, 0), FALSE);
    EXPECT_EQ(SettingsProc(dialog, WM_COMMAND, IDOK, 0), TRUE);
    EXPECT_EQ(SettingsProc(dialog, WM_CLOSE, 0, 0), TRUE);
}

}  // namespace
